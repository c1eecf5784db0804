#pragma once
#include "platform/uikit/UIModalQuestion.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vistrel {
class UIActionSheet;
class UIView;

class UIActionSheetDelegate {
public:
    virtual ~UIActionSheetDelegate() = default;
    virtual void actionSheetClickedButtonAtIndex(UIActionSheet& actionSheet, int buttonIndex) = 0;
};

/// Numbers are the phone's.
enum class UIActionSheetStyle { Default = 0, BlackOpaque = 1, BlackTranslucent = 2 };

/// Choices that slide up from the lower edge: the destructive one, the others, and cancel last.
class UIActionSheet : public UIModalQuestion {
public:
    /// Empty titles leave that button out. The delegate is not retained.
    static std::shared_ptr<UIActionSheet> withTitle(std::string title,
                                                    std::weak_ptr<UIActionSheetDelegate> delegate,
                                                    std::string cancelButtonTitle,
                                                    std::string destructiveButtonTitle,
                                                    std::vector<std::string> otherButtonTitles);
    ~UIActionSheet() override;

    const std::string& title() const { return title_; }
    int cancelButtonIndex() const { return cancelIndex_; }
    int destructiveButtonIndex() const { return destructiveIndex_; }
    void setActionSheetStyle(UIActionSheetStyle style) { style_ = style; }
    void showInView(UIView& view);
    /// The sheet now on screen; null for none.
    static std::shared_ptr<UIActionSheet> visibleSheet();

private:
    using UIModalQuestion::UIModalQuestion;
    void tellDelegate(int index) override;
    void animateOut(UIModalWindow& window, std::function<void()> done) override;

    std::string title_;
    int cancelIndex_ = -1;
    int destructiveIndex_ = -1;
    std::weak_ptr<UIActionSheetDelegate> delegate_;
    UIActionSheetStyle style_ = UIActionSheetStyle::Default;
};

}
