#pragma once
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace vistrel {
class UIView;

/// The views that enter and leave a bar in one change. Each enters from `distance` beyond its
/// place, or leaves to that far before it.
class UINavigationBarChange {
public:
    void enter(std::shared_ptr<UIView> view, double distance) {
        entering_.emplace_back(std::move(view), distance);
    }
    void leave(std::shared_ptr<UIView> view, double distance) {
        leaving_.emplace_back(std::move(view), distance);
    }
    /// At once: what leaves is removed.
    void apply() const;
    /// `left` is called for each view that has faded out; it takes no touches until then.
    void animate(double seconds, std::function<void(UIView&)> left) const;

private:
    using Moves = std::vector<std::pair<std::shared_ptr<UIView>, double>>;

    Moves entering_;
    Moves leaving_;
};

}
