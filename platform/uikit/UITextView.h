#pragma once
#include "platform/uikit/UIScrollView.h"
#include "platform/uikit/UITextEditor.h"

#include <functional>
#include <string>

namespace vistrel {

/// A multi-line text editor that scrolls and keeps the caret visible.
class UITextView : public UIScrollView {
public:
    explicit UITextView(CGRect frame = {}, const UIFont& font = UIFont::systemFontOfSize(16));

    const std::string& text() const { return editor_.text(); }
    /// The caret goes to the start. The change handler is not called.
    void setText(const std::string& text);
    /// Called on every edit.
    void setTextChangeHandler(std::function<void()> handler) { textChanged_ = std::move(handler); }
    std::string selectedText() const override { return editor_.buffer().selectedText(); }

    void touchesEnded(const UITouch& touch) override;
    bool keyPressed(const UIKey& key) override;
    bool canBecomeFirstResponder() const override { return true; }
    void focusChanged(bool focused) override;
    void setFrame(const CGRect& frame) override;
    void didMoveToWindow() override;
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
    UIAccessibilityElement accessibilityElement() const override;

protected:
    void didScroll() override;

private:
    void relayout();
    void showCaret();

    UITextEditor editor_;
    std::function<void()> textChanged_;
    bool focused_ = false;
};

}
