#pragma once
#include <memory>
#include <string>
#include <vector>

namespace vistrel {
class UIActionSheet;
class UIView;
class UIWindow;

class UIActionSheetDelegate {
public:
    virtual ~UIActionSheetDelegate() = default;
    virtual void actionSheetClickedButtonAtIndex(UIActionSheet& actionSheet, int buttonIndex) = 0;
};

/// Numbers are the phone's.
enum class UIActionSheetStyle { Default = 0, BlackOpaque = 1, BlackTranslucent = 2 };

/// Choices that slide up from the lower edge: the destructive one, the others, and cancel last.
class UIActionSheet : public std::enable_shared_from_this<UIActionSheet> {
public:
    /// Empty titles leave that button out. The delegate is not retained.
    static std::shared_ptr<UIActionSheet> withTitle(std::string title,
                                                    std::weak_ptr<UIActionSheetDelegate> delegate,
                                                    std::string cancelButtonTitle,
                                                    std::string destructiveButtonTitle,
                                                    std::vector<std::string> otherButtonTitles);
    ~UIActionSheet();

    const std::string& title() const { return title_; }
    std::string buttonTitleAtIndex(int index) const;
    int cancelButtonIndex() const { return cancelIndex_; }
    void setActionSheetStyle(UIActionSheetStyle style) { style_ = style; }
    void showInView(UIView& view);
    bool isVisible() const { return window_ != nullptr; }
    void dismissWithClickedButtonIndex(int index, bool animated);
    /// The sheet now on screen; null for none.
    static std::shared_ptr<UIActionSheet> visibleSheet();

private:
    UIActionSheet() = default;
    void buttonTapped(int index);

    std::string title_;
    std::vector<std::string> buttons_;
    int cancelIndex_ = -1;
    int destructiveIndex_ = -1;
    std::weak_ptr<UIActionSheetDelegate> delegate_;
    UIActionSheetStyle style_ = UIActionSheetStyle::Default;
    std::shared_ptr<UIWindow> window_;
};

}
