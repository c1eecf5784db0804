#pragma once
#include "platform/graphics/UIColor.h"
#include "platform/uikit/UITextBuffer.h"
#include "platform/uikit/UITextLines.h"

#include <memory>
#include <optional>
#include <string>

namespace vistrel {
class UITextCaret;
struct UIKey;

/// Shared by text fields and text views: text, caret, selection, keys, drawing. Coordinates are
/// points from the upper left corner of the text.
class UITextEditor {
public:
    enum class Lines { One, Many };
    enum class Outcome { Ignored, Moved, Edited };

    UITextEditor(Lines lines, const UIFont& font);

    const std::string& text() const { return buffer_.text(); }
    /// In a single line, breaks become spaces.
    void setText(const std::string& text);
    /// The width at which lines wrap; multi-line only.
    void setWidth(double width);
    Outcome keyPressed(const UIKey& key);
    void touched(CGPoint point, UITextBuffer::Extend extend);

    const UITextBuffer& buffer() const { return buffer_; }
    const UITextLines& lines() const { return lines_; }
    CGRect caretRect() const { return lines_.caretRect(buffer_.caret()); }
    const std::shared_ptr<UITextCaret>& caret() const { return caret_; }
    /// Paints the part in `visible` (text coordinates) with the text's corner at `origin`.
    void draw(CGPoint origin, const CGRect& visible, const UIColor& color) const;

private:
    Outcome move(const UIKey& key);
    Outcome edit(const UIKey& key);
    void moveVertically(int lines, UITextBuffer::Extend extend);
    void moveToLineEdge(bool end, const UIKey& key);
    std::string fitted(const std::string& text) const;
    void rebreak();

    Lines mode_;
    UITextBuffer buffer_;
    UITextLines lines_;
    double width_ = 0;
    std::optional<double> column_; ///< where a series of ups and downs began
    std::shared_ptr<UITextCaret> caret_;
};

}
