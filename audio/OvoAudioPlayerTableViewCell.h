#pragma once
#include "audio/OvoTableViewCell.h"

#include <string>

namespace vistrel {

/// One track: number, title and length in three columns, a darker band on every second row, and a
/// triangle at the player's track.
class OvoAudioPlayerTableViewCell : public OvoTableViewCell {
public:
    explicit OvoAudioPlayerTableViewCell(std::string reuseIdentifier);

    // Setting a text or the triangle requests a redraw; setting the band does not, so set it with a
    // text.
    const std::string& title() const { return title_; }
    void setTitle(std::string title);
    /// For example "1.".
    const std::string& number() const { return number_; }
    void setNumber(std::string number);
    /// Minutes and two-digit seconds.
    const std::string& duration() const { return duration_; }
    void setDuration(std::string duration);
    bool isEven() const { return isEven_; }
    void setIsEven(bool isEven) { isEven_ = isEven; }
    bool isSelectedIndex() const { return isSelectedIndex_; }
    void setIsSelectedIndex(bool isSelectedIndex);

    void drawContentView(const CGRect& rect) override;
    std::string accessibilityLabel() const override { return title_; }

private:
    std::string title_;
    std::string number_;
    std::string duration_;
    bool isEven_ = false;
    bool isSelectedIndex_ = false;
};

}
