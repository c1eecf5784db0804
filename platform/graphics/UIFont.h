#pragma once

namespace vistrel {

/// The system font at a size in points. A cheap value; the metrics behind it are cached.
class UIFont {
public:
    static UIFont systemFontOfSize(double size) { return UIFont(size, false); }
    static UIFont boldSystemFontOfSize(double size) { return UIFont(size, true); }

    double pointSize() const { return size_; }
    bool isBold() const { return bold_; }
    double ascender() const;   ///< points above the base line
    double descender() const;  ///< points below the base line, positive
    double lineHeight() const; ///< ascender + descender
    UIFont fontWithSize(double size) const { return UIFont(size, bold_); }

    friend bool operator==(const UIFont&, const UIFont&) = default;

private:
    UIFont(double size, bool bold)
        : size_(size)
        , bold_(bold) {}
    double size_;
    bool bold_;
};

}
