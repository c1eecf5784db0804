#pragma once
#include "platform/uikit/UIModalQuestion.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vistrel {
class UIAlertPanel;
class UIAlertView;
class UITextField;

enum class UIAlertViewStyle { Default, PlainTextInput, LoginAndPasswordInput };

class UIAlertViewDelegate {
public:
    virtual ~UIAlertViewDelegate() = default;
    virtual void alertViewClickedButtonAtIndex(UIAlertView& alertView, int buttonIndex) = 0;
};

/// A box over the screen with a title, a message and buttons. Button 0 is the cancel button. Text
/// that does not fit the screen scrolls inside the box. While shown it keeps itself alive; alerts
/// shown over another stack up.
class UIAlertView : public UIModalQuestion {
public:
    /// The delegate is not retained; give a weak pointer (empty for none).
    static std::shared_ptr<UIAlertView> withTitle(std::string title, std::string message,
                                                  std::weak_ptr<UIAlertViewDelegate> delegate,
                                                  std::string cancelButtonTitle,
                                                  std::vector<std::string> otherButtonTitles = {});
    ~UIAlertView() override;

    const std::string& title() const { return title_; }
    const std::string& message() const { return message_; }
    /// Lays the buttons out in that many rows; 0: two side by side, more than two stacked.
    void setNumberOfRows(int rows) { rows_ = rows; }
    /// Before show.
    void setAlertViewStyle(UIAlertViewStyle style);
    /// 0 is the text of PlainTextInput; 0 and 1 are the name and the password of
    /// LoginAndPasswordInput.
    const std::shared_ptr<UITextField>& textFieldAtIndex(int index) const;

    void show();

    /// Alerts now on screen, the lowest first.
    static std::vector<std::shared_ptr<UIAlertView>> visibleAlerts();

private:
    using UIModalQuestion::UIModalQuestion;
    void tellDelegate(int index) override;
    void willClose() override;
    void animateOut(UIModalWindow& window, std::function<void()> done) override;
    std::shared_ptr<UIAlertPanel> makePanel();
    void setShown(bool shown);

    std::string title_;
    std::string message_;
    std::vector<std::shared_ptr<UITextField>> fields_;
    std::weak_ptr<UIAlertViewDelegate> delegate_;
    int rows_ = 0;
};

}
