#pragma once
#include "platform/uikit/UIBarButtonItem.h"

#include <functional>
#include <memory>
#include <string>

namespace vistrel {
class UIView;

/// What the navigation bar shows for one screen.
class UINavigationItem {
public:
    explicit UINavigationItem(std::string title = {});

    const std::string& title() const { return title_; }
    void setTitle(std::string title);
    const std::shared_ptr<UIBarButtonItem>& leftBarButtonItem() const { return left_; }
    void setLeftBarButtonItem(std::shared_ptr<UIBarButtonItem> item, bool animated = false);
    const std::shared_ptr<UIBarButtonItem>& rightBarButtonItem() const { return right_; }
    void setRightBarButtonItem(std::shared_ptr<UIBarButtonItem> item, bool animated = false);

    /// Called on each change; set by the bar that shows the item.
    void setChangeHandler(std::function<void(bool animated)> handler) {
        changed_ = std::move(handler);
    }

private:
    void changed(bool animated) const;

    std::string title_;
    std::shared_ptr<UIBarButtonItem> left_;
    std::shared_ptr<UIBarButtonItem> right_;
    std::function<void(bool)> changed_;
};

}
