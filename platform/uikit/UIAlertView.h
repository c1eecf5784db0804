#pragma once
#include "platform/uikit/UIModalOwner.h"

#include <memory>
#include <string>
#include <vector>

namespace vistrel {
class UIAlertPanel;
class UIAlertView;
class UIModalWindow;
class UITextField;

enum class UIAlertViewStyle { Default, LoginAndPasswordInput };

class UIAlertViewDelegate {
public:
    virtual ~UIAlertViewDelegate() = default;
    virtual void alertViewClickedButtonAtIndex(UIAlertView& alertView, int buttonIndex) = 0;
};

/// A box over the screen with a title, a message and buttons. Button 0 is the cancel button. Text
/// that does not fit the screen scrolls inside the box. While shown it keeps itself alive; alerts
/// shown over another stack up.
class UIAlertView : public UIModalOwner, public std::enable_shared_from_this<UIAlertView> {
public:
    /// The delegate is not retained; give a weak pointer (empty for none).
    static std::shared_ptr<UIAlertView> withTitle(std::string title, std::string message,
                                                  std::weak_ptr<UIAlertViewDelegate> delegate,
                                                  std::string cancelButtonTitle,
                                                  std::vector<std::string> otherButtonTitles = {});
    ~UIAlertView() override;

    const std::string& title() const { return title_; }
    const std::string& message() const { return message_; }
    std::string buttonTitleAtIndex(int index) const;
    int numberOfButtons() const { return static_cast<int>(buttons_.size()); }
    /// Lays the buttons out in that many rows; 0: two stand side by side, more one under the other.
    void setNumberOfRows(int rows) { rows_ = rows; }
    int numberOfRows() const { return rows_; }
    /// Before show.
    void setAlertViewStyle(UIAlertViewStyle style);
    /// 0 and 1 are the name and the password of LoginAndPasswordInput.
    const std::shared_ptr<UITextField>& textFieldAtIndex(int index) const;

    void show();
    /// From show until a button is tapped.
    bool isVisible() const { return visible_; }
    /// Closes as if the button had been tapped, without telling the delegate.
    void dismissWithClickedButtonIndex(int index, bool animated);

    /// Alerts now on screen, the lowest first.
    static std::vector<std::shared_ptr<UIAlertView>> visibleAlerts();

private:
    UIAlertView() = default;
    void buttonTapped(int index);
    std::shared_ptr<UIAlertPanel> makePanel();
    void setShown(bool shown);
    void close(bool animated);

    std::string title_;
    std::string message_;
    std::vector<std::string> buttons_;
    std::vector<std::shared_ptr<UITextField>> fields_;
    std::weak_ptr<UIAlertViewDelegate> delegate_;
    int rows_ = 0;
    bool visible_ = false;
    std::weak_ptr<UIModalWindow> window_; ///< owned by the screen, owns this alert
};

}
