#pragma once
#include <functional>
#include <memory>

namespace vistrel {

/// The change from one screen to another: push, pop, present or dismiss. An owner has one, which
/// runs one change at a time. While a change is animated the application ignores touches and keys:
/// a second tap or Enter must not repeat what the first one did.
class UIScreenTransition {
public:
    struct Change {
        bool animated = false;
        double seconds = 0;
        /// Puts the incoming view in its place, or where its slide starts. Not animated.
        std::function<void()> prepare;
        /// Moves the views; inside an animation block, and only when the change is animated.
        std::function<void()> move;
        /// The change is complete: tells the screens and removes the outgoing view.
        std::function<void()> complete;
    };

    UIScreenTransition();
    ~UIScreenTransition();

    bool isRunning() const { return running_ != nullptr; }
    /// Finishes the change in progress first. `announce` sends the screens their will-calls, which
    /// may finish this change and start another one. A change that is not animated is complete on
    /// return.
    void run(Change change, const std::function<void()>& announce);
    /// Completes the running change at once.
    void finish();

private:
    struct Running;

    std::shared_ptr<Running> running_;
};

}
