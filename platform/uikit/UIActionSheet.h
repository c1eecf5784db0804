#pragma once
#include "platform/uikit/UIModalOwner.h"

#include <memory>
#include <string>
#include <vector>

namespace vistrel {
class UIActionSheet;
class UIModalWindow;
class UIView;

class UIActionSheetDelegate {
public:
    virtual ~UIActionSheetDelegate() = default;
    virtual void actionSheetClickedButtonAtIndex(UIActionSheet& actionSheet, int buttonIndex) = 0;
};

/// Numbers are the phone's.
enum class UIActionSheetStyle { Default = 0, BlackOpaque = 1, BlackTranslucent = 2 };

/// Choices that slide up from the lower edge: the destructive one, the others, and cancel last.
class UIActionSheet : public UIModalOwner, public std::enable_shared_from_this<UIActionSheet> {
public:
    /// Empty titles leave that button out. The delegate is not retained.
    static std::shared_ptr<UIActionSheet> withTitle(std::string title,
                                                    std::weak_ptr<UIActionSheetDelegate> delegate,
                                                    std::string cancelButtonTitle,
                                                    std::string destructiveButtonTitle,
                                                    std::vector<std::string> otherButtonTitles);
    ~UIActionSheet() override;

    const std::string& title() const { return title_; }
    std::string buttonTitleAtIndex(int index) const;
    int numberOfButtons() const { return static_cast<int>(buttons_.size()); }
    int cancelButtonIndex() const { return cancelIndex_; }
    int destructiveButtonIndex() const { return destructiveIndex_; }
    void setActionSheetStyle(UIActionSheetStyle style) { style_ = style; }
    void showInView(UIView& view);
    bool isVisible() const { return visible_; }
    void dismissWithClickedButtonIndex(int index, bool animated);
    /// The sheet now on screen; null for none.
    static std::shared_ptr<UIActionSheet> visibleSheet();

private:
    UIActionSheet() = default;
    void buttonTapped(int index);
    void close(bool animated);

    std::string title_;
    std::vector<std::string> buttons_;
    int cancelIndex_ = -1;
    int destructiveIndex_ = -1;
    std::weak_ptr<UIActionSheetDelegate> delegate_;
    UIActionSheetStyle style_ = UIActionSheetStyle::Default;
    bool visible_ = false;
    std::weak_ptr<UIModalWindow> window_; ///< owned by the screen, owns this sheet
};

}
