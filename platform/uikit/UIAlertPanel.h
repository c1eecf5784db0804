#pragma once
#include "platform/uikit/UIView.h"

#include <functional>
#include <string>
#include <vector>

namespace vistrel {
class UIGlossyButton;
class UILabel;
class UIScrollView;
class UITextField;

/// The box of an alert: as tall as its texts and buttons need. Where the screen is too small the
/// message scrolls.
class UIAlertPanel : public UIView {
public:
    struct Content {
        std::string title;
        std::string message;
        std::vector<std::string> buttons; ///< the first cancels
        int rows = 0;                     ///< of buttons; 0: two side by side, more one per row
        /// Between message and buttons. Enter goes from one to the next, then presses the default
        /// button.
        std::vector<std::shared_ptr<UITextField>> fields;
    };

    UIAlertPanel(const Content& content, double maximumHeight, std::function<void(int)> chosen);

    /// Hints that a scrolling message continues below.
    void flashScrollIndicators();
    /// The button with an index of the content.
    const std::shared_ptr<UIGlossyButton>& button(int index) const;

    bool keyPressed(const UIKey& key) override;
    bool takesUnfocusedKeys() const override { return true; }
    bool canBecomeFirstResponder() const override { return true; }
    std::shared_ptr<UIView> focusedPart() override;
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;

private:
    std::shared_ptr<UILabel> addText(const std::string& text, double fontSize, bool bold);
    void makeButtons(const Content& content);
    void addFields();
    double fieldsHeight() const;
    void layOutFields(double top);
    void layOut(double maximumHeight, int rows);
    double layOutMessage(double top, double space);
    void layOutButtons(double top, int rows);
    int rowCount(int rows) const;
    void mark(int index);

    std::function<void(int)> chosen_;
    std::shared_ptr<UILabel> title_;
    std::shared_ptr<UILabel> message_;
    std::shared_ptr<UIScrollView> scroll_;
    std::vector<std::shared_ptr<UIGlossyButton>> buttons_;
    std::vector<std::shared_ptr<UITextField>> fields_;
    int default_ = 0; ///< what Enter presses
};

}
