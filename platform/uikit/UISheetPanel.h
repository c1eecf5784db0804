#pragma once
#include "platform/uikit/UIActionSheet.h"
#include "platform/uikit/UIView.h"

#include <functional>
#include <string>
#include <vector>

namespace vistrel {
class UIGlossyButton;

/// The panel of an action sheet: title and stacked buttons, the cancel button apart.
class UISheetPanel : public UIView {
public:
    struct Content {
        std::string title;
        std::vector<std::string> buttons;
        int cancelIndex = -1;
        int destructiveIndex = -1;
        UIActionSheetStyle style = UIActionSheetStyle::Default;
    };

    UISheetPanel(const Content& content, double width, std::function<void(int)> chosen);

    const std::shared_ptr<UIGlossyButton>& button(int index) const;

    bool keyPressed(const UIKey& key) override;
    bool takesUnfocusedKeys() const override { return true; }
    bool canBecomeFirstResponder() const override { return true; }
    std::shared_ptr<UIView> focusedPart() override;
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;

private:
    double addTitle(const std::string& title, double width);
    double addButton(const Content& content, int index, double y, double width);
    void mark(int index);

    std::function<void(int)> chosen_;
    UIActionSheetStyle style_;
    int cancelIndex_;
    int marked_ = -1;
    std::vector<std::shared_ptr<UIGlossyButton>> buttons_;
};

}
