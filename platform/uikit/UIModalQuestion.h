#pragma once
#include "platform/uikit/UIModalWindow.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vistrel {

/// What alerts and action sheets have in common: buttons in a window over everything, and one
/// answer. The screen owns the window, the window owns the question, so it lives while it is shown.
class UIModalQuestion : public std::enable_shared_from_this<UIModalQuestion> {
public:
    virtual ~UIModalQuestion();

    int numberOfButtons() const { return static_cast<int>(buttons_.size()); }
    /// From the moment it is shown until a button is tapped.
    bool isVisible() const { return visible_; }
    /// Closes as if the button had been tapped, without telling the delegate.
    void dismissWithClickedButtonIndex(int index, bool animated);

protected:
    explicit UIModalQuestion(std::vector<std::string> buttons);

    const std::vector<std::string>& buttons() const { return buttons_; }
    /// The questions of one class that are visible, the lowest first.
    template <typename Question>
    static std::vector<std::shared_ptr<Question>> visibleQuestions();

    /// Becomes visible in a new window, which the caller fills and makes appear.
    std::shared_ptr<UIModalWindow> openWindow(UIModalWindow::Dimming dimming);
    /// Null once it is closed.
    std::shared_ptr<UIModalWindow> window() const { return window_.lock(); }
    /// To be called with the index of the tapped button; only the first call counts.
    std::function<void(int)> answerHandler();

    virtual void tellDelegate(int index) = 0;
    /// The question has given up its window, which is still on the screen.
    virtual void willClose() {}
    /// Moves the window's content out of sight, then calls `done`.
    virtual void animateOut(UIModalWindow& window, std::function<void()> done) = 0;

private:
    static std::vector<std::shared_ptr<UIModalQuestion>> allVisible();
    void answer(int index);
    void close(bool animated);

    std::vector<std::string> buttons_;
    bool visible_ = false;
    std::weak_ptr<UIModalWindow> window_;
};

template <typename Question>
std::vector<std::shared_ptr<Question>> UIModalQuestion::visibleQuestions() {
    std::vector<std::shared_ptr<Question>> found;
    for (const auto& question : allVisible())
        if (auto each = std::dynamic_pointer_cast<Question>(question))
            found.push_back(std::move(each));
    return found;
}

}
