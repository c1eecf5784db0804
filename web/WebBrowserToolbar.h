#pragma once

#include <functional>
#include <memory>

namespace vistrel {
class UIBarButtonItem;
class UIToolbar;

/// What the browser's buttons do.
struct WebBrowserActions {
    std::function<void()> back;
    std::function<void()> forward;
    std::function<void()> refresh;
    std::function<void()> stop;
    std::function<void()> home;
};

/// The browser's toolbar: back, home, refresh or stop, forward. Back and forward start disabled.
class WebBrowserToolbar {
public:
    explicit WebBrowserToolbar(const WebBrowserActions& actions);

    const std::shared_ptr<UIToolbar>& toolbar() const { return toolbar_; }
    /// Stop takes the place of refresh while a page loads.
    void setLoading(bool isLoading);
    void setHistory(bool canGoBack, bool canGoForward);

private:
    std::shared_ptr<UIToolbar> toolbar_;
    std::shared_ptr<UIBarButtonItem> backButton_;
    std::shared_ptr<UIBarButtonItem> forwardButton_;
    std::shared_ptr<UIBarButtonItem> refreshButton_;
    std::shared_ptr<UIBarButtonItem> stopButton_;
};

}
