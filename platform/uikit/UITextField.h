#pragma once
#include "platform/uikit/UIControl.h"
#include "platform/uikit/UITextEditor.h"

#include <string>

namespace vistrel {

/// A single-line text field. Sends UIControlEventEditingChanged at every edit, and
/// UIControlEventEditingDidEndOnExit when Enter is pressed.
class UITextField : public UIControl {
public:
    explicit UITextField(CGRect frame = {}, const UIFont& font = UIFont::systemFontOfSize(16));

    const std::string& text() const { return secure_ ? secret_ : editor_.text(); }
    /// No event.
    void setText(const std::string& text);
    void setTextColor(const UIColor& color);
    /// Shown, grey, while there is no text.
    void setPlaceholder(std::string placeholder);
    /// Shows a dot for each character. Such text is edited at its end only and hidden from screen
    /// readers.
    void setSecureTextEntry(bool secure);
    /// A secure field gives nothing away.
    std::string selectedText() const override {
        return secure_ ? std::string() : editor_.buffer().selectedText();
    }

    void touchesBegan(const UITouch& touch) override;
    void touchesMoved(const UITouch& touch) override;
    bool keyPressed(const UIKey& key) override;
    void focusChanged(bool focused) override;
    void setFrame(const CGRect& frame) override;
    void didMoveToWindow() override;
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
    UIAccessibilityElement accessibilityElement() const override;

private:
    void changed();
    bool secretKeyPressed(const UIKey& key);
    CGPoint textOrigin() const;

    UITextEditor editor_;
    UIColor textColor_ = UIColor::blackColor();
    std::string placeholder_;
    double scrolled_ = 0; ///< points of text hidden at the left
    std::string secret_;
    bool secure_ = false;
    bool focused_ = false;
};

}
