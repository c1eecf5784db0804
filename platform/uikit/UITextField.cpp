#include "platform/uikit/UITextField.h"

#include "platform/graphics/UIStringDrawing.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIKey.h"
#include "platform/uikit/UITextCaret.h"
#include "platform/uikit/UITouch.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr double kCaretRoom = 3;

bool beginsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

std::string dotsFor(const std::string& text) {
    std::string dots;
    for (const char byte : text)
        if (beginsCharacter(byte))
            dots += "\u2022";
    return dots;
}

}

UITextField::UITextField(CGRect frame, const UIFont& font)
    : UIControl(frame)
    , editor_(UITextEditor::Lines::One, font) {
    UIView::setOpaque(false);
    setClipsToBounds(true);
    UIView::addSubview(editor_.caret());
}

void UITextField::setText(const std::string& text) {
    secret_ = secure_ ? text : std::string();
    editor_.setText(secure_ ? dotsFor(text) : text);
    changed();
}

void UITextField::setSecureTextEntry(bool secure) {
    const std::string kept = text();
    secure_ = secure;
    editor_.caret()->setSecret(secure);
    setText(kept);
}

void UITextField::setTextColor(const UIColor& color) {
    textColor_ = color;
    setNeedsDisplay();
}

void UITextField::setPlaceholder(std::string placeholder) {
    placeholder_ = std::move(placeholder);
    setNeedsDisplay();
}

void UITextField::setFrame(const CGRect& frame) {
    UIControl::setFrame(frame);
    changed();
}

CGPoint UITextField::textOrigin() const {
    return {-scrolled_, std::floor((bounds().size.height - editor_.lines().lineHeight()) / 2)};
}

/// Keeps the caret inside, without a gap at the end of the text.
void UITextField::changed() {
    const double room = std::max(1.0, bounds().size.width - kCaretRoom);
    const double caret = editor_.caretRect().minX();
    const double longest = std::max(0.0, editor_.lines().size().width - room);
    scrolled_ = std::clamp(scrolled_, caret - room, caret);
    scrolled_ = std::floor(std::clamp(scrolled_, 0.0, std::ceil(longest)));
    editor_.caret()->moveTo(editor_.caretRect().offsetBy(textOrigin().x, textOrigin().y));
    setNeedsDisplay();
}

void UITextField::touchesBegan(const UITouch& touch) {
    if (!isEnabled())
        return;
    UIApplication::sharedApplication().events().setFirstResponder(shared_from_this());
    const CGPoint point = touch.locationInView(*this);
    editor_.touched({point.x - textOrigin().x, 0}, UITextBuffer::Extend::No);
    changed();
}

void UITextField::touchesMoved(const UITouch& touch) {
    if (!isEnabled())
        return;
    const CGPoint point = touch.locationInView(*this);
    editor_.touched({point.x - textOrigin().x, 0}, UITextBuffer::Extend::Yes);
    changed();
}

bool UITextField::keyPressed(const UIKey& key) {
    if (!isEnabled())
        return false;
    if (key.code == UIKeyCode::Enter) {
        sendActionsForControlEvents(UIControlEventEditingDidEndOnExit);
        return true;
    }
    if (secure_)
        return secretKeyPressed(key);
    const auto outcome = editor_.keyPressed(key);
    if (outcome == UITextEditor::Outcome::Ignored)
        return false;
    changed();
    if (outcome == UITextEditor::Outcome::Edited)
        sendActionsForControlEvents(UIControlEventEditingChanged);
    return true;
}

bool UITextField::secretKeyPressed(const UIKey& key) {
    std::string secret = secret_;
    if (key.code == UIKeyCode::Backspace) {
        while (!secret.empty() && !beginsCharacter(secret.back()))
            secret.pop_back();
        if (!secret.empty())
            secret.pop_back();
    } else if (!key.text.empty() && !key.control && !key.alt &&
               (key.code == UIKeyCode::Character || key.code == UIKeyCode::Space)) {
        secret += key.text;
    } else {
        return false;
    }
    setText(secret);
    sendActionsForControlEvents(UIControlEventEditingChanged);
    return true;
}

void UITextField::focusChanged(bool focused) {
    focused_ = focused;
    editor_.caret()->setActive(focused && window() != nullptr);
}

void UITextField::didMoveToWindow() {
    focusChanged(focused_);
}

void UITextField::drawRect(const CGRect& rect) {
    if (editor_.text().empty()) {
        UIColor::colorWithWhiteAlpha(0.7F, 1).set();
        drawInRectWithFont(placeholder_, {textOrigin(), rect.size}, editor_.lines().font(),
                           UILineBreakMode::TailTruncation);
        return;
    }
    const double height = editor_.lines().lineHeight();
    editor_.draw(textOrigin(), CGRectMake(0, 0, rect.size.width, height), textColor_);
}

UIAccessibilityElement UITextField::accessibilityElement() const {
    UIAccessibilityElement element = UIView::accessibilityElement();
    element.role = UIAccessibilityRole::Field;
    if (element.label.empty())
        element.label = placeholder_;
    element.value = editor_.text();
    element.enabled = isEnabled();
    return element;
}

}
