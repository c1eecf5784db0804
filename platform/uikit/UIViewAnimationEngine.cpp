#include "platform/uikit/UIViewAnimationEngine.h"

#include "platform/foundation/NSRunLoop.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/ImageRenderer.h"
#include "platform/uikit/UIViewAnimationCurves.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vistrel {

namespace {

/// The run loop may come a rounding error early.
constexpr double kClockTolerance = 1e-6;

/// One animated property of a view's state.
struct Property {
    bool (*differs)(const ViewState&, const ViewState&);
    void (*mix)(ViewState& result, const ViewState& from, const ViewState& to, double progress);
};

template <auto Member>
constexpr Property propertyOf() {
    return {[](const ViewState& a, const ViewState& b) { return !(a.*Member == b.*Member); },
            [](ViewState& result, const ViewState& from, const ViewState& to, double progress) {
                result.*Member = interpolate(from.*Member, to.*Member, progress);
            }};
}

constexpr std::array kAnimated = {
    propertyOf<&ViewState::center>(), propertyOf<&ViewState::bounds>(),
    propertyOf<&ViewState::transform>(), propertyOf<&ViewState::alpha>(),
    propertyOf<&ViewState::backgroundColor>()};

}

double UIViewAnimationBlock::progressAt(double now) const {
    if (!committed)
        return 0;
    return duration > 0 ? easedProgress(curve, (now - start) / duration) : 1;
}

UIViewAnimationEngine& UIViewAnimationEngine::shared() {
    // Outlives the last view, which may be a static object.
    static auto& engine = *new UIViewAnimationEngine;
    return engine;
}

UIViewAnimationEngine::UIViewAnimationEngine()
    : frames_([this](double) {
        endDue();
        if (!std::exchange(drewMovement_, false) || running_.empty())
            frames_.stop();
    }) {
    static_assert(kAnimated.size() == kProperties);
}

void UIViewAnimationEngine::reset() {
    tracks_.clear();
    transitions_.clear();
    open_.clear();
    running_.clear();
    disabled_ = 0;
    wakeToken_ = 0;
    frames_.stop();
}

void UIViewAnimationEngine::begin() {
    open_.push_back(std::make_shared<UIViewAnimationBlock>());
}

UIViewAnimationBlock* UIViewAnimationEngine::openBlock() const {
    return open_.empty() ? nullptr : open_.back().get();
}

void UIViewAnimationEngine::commit() {
    if (open_.empty())
        return;
    const auto block = open_.back();
    open_.pop_back();
    block->committed = true;
    block->start = NSRunLoop::now();
    running_.push_back(block);
    if (block->parts == 0) {
        endSoon(block);
        return;
    }
    // The first walk that draws the movement keeps the frames coming.
    drewMovement_ = true;
    const auto moves = [&](const auto& entry) {
        return std::any_of(
                   entry.second.properties.begin(), entry.second.properties.end(),
                   [&](const auto& track) { return track.block == block; }) &&
               entry.first->isOnScreen();
    };
    const auto flips = [&](const auto& entry) {
        return entry.second.block == block && entry.first->isOnScreen();
    };
    if (std::any_of(tracks_.begin(), tracks_.end(), moves) ||
        std::any_of(transitions_.begin(), transitions_.end(), flips))
        frames_.start();
    scheduleWake();
}

void UIViewAnimationEngine::addTransition(UIViewAnimationTransition transition, UIView& view) {
    const bool flips = transition == UIViewAnimationTransition::FlipFromLeft ||
                       transition == UIViewAnimationTransition::FlipFromRight;
    if (!flips || open_.empty() || disabled_ > 0)
        return;
    Transition added;
    added.view = &view;
    added.block = open_.back();
    added.flip.fromLeft = transition == UIViewAnimationTransition::FlipFromLeft;
    added.flip.before = renderViewToBitmap(view, UIImage::screenScale());
    if (const auto old = transitions_.find(&view); old != transitions_.end()) {
        cut(old->second.block);
        transitions_.erase(old);
    }
    ++added.block->parts;
    transitions_.emplace(&view, std::move(added));
}

void UIViewAnimationEngine::stateDidChange(UIView& view, const ViewState& old,
                                           const ViewState& now) {
    const bool animates = !open_.empty() && disabled_ == 0 && open_.back()->duration > 0;
    const auto known = tracks_.find(&view);
    if (!animates && known == tracks_.end())
        return;
    auto& tracks = known != tracks_.end() ? known->second : tracks_[&view];
    tracks.view = &view;
    tracks.to = old;
    const ViewState shown = shownOnTheWay(tracks);
    tracks.to = now;
    for (std::size_t i = 0; i < kProperties; ++i) {
        if (!kAnimated[i].differs(old, now))
            continue;
        auto& track = tracks.properties[i];
        if (animates && track.block == open_.back())
            continue;
        if (track.block)
            cut(track.block);
        if (animates) {
            track.block = open_.back();
            track.from = shown;
            ++track.block->parts;
        }
    }
    const bool moves = std::any_of(tracks.properties.begin(), tracks.properties.end(),
                                   [](const auto& track) { return track.block != nullptr; });
    if (!moves)
        tracks_.erase(&view);
}

const ViewState* UIViewAnimationEngine::shownState(const UIView& view) {
    if (tracks_.empty())
        return nullptr;
    const auto found = tracks_.find(&view);
    if (found == tracks_.end())
        return nullptr;
    auto& tracks = found->second;
    tracks.shown = shownOnTheWay(tracks);
    return &tracks.shown;
}

ViewState UIViewAnimationEngine::shownOnTheWay(const Tracks& tracks) {
    const double now = NSRunLoop::now();
    ViewState shown = tracks.to;
    for (std::size_t i = 0; i < kProperties; ++i) {
        const auto& track = tracks.properties[i];
        if (track.block)
            kAnimated[i].mix(shown, track.from, tracks.to, track.block->progressAt(now));
    }
    return shown;
}

void UIViewAnimationEngine::cut(Block& block) {
    const auto wasPart = std::exchange(block, nullptr);
    wasPart->wasCut = true;
    if (--wasPart->parts == 0 && wasPart->committed)
        endSoon(wasPart);
}

void UIViewAnimationEngine::endSoon(const Block& block) {
    std::erase(running_, block);
    if (block->didStop)
        NSRunLoop::performAfterDelay(0, [block] { block->didStop(!block->wasCut); });
}

void UIViewAnimationEngine::cutView(const UIView& view) {
    if (const auto found = tracks_.find(&view); found != tracks_.end()) {
        for (auto& track : found->second.properties)
            if (track.block)
                cut(track.block);
        tracks_.erase(found);
    }
    if (const auto found = transitions_.find(&view); found != transitions_.end()) {
        cut(found->second.block);
        transitions_.erase(found);
    }
}

void UIViewAnimationEngine::endAnimationsUnder(const UIView& view) {
    if (tracks_.empty() && transitions_.empty())
        return;
    cutView(view);
    for (const auto& child : view.subviews())
        endAnimationsUnder(*child);
}

void UIViewAnimationEngine::forget(const UIView& view) {
    if (!tracks_.empty() || !transitions_.empty())
        cutView(view);
}

void UIViewAnimationEngine::release(const Block& block) {
    for (auto entry = tracks_.begin(); entry != tracks_.end();) {
        auto& tracks = entry->second;
        bool moves = false;
        bool ended = false;
        for (auto& track : tracks.properties) {
            if (track.block == block) {
                track.block = nullptr;
                ended = true;
            }
            moves = moves || track.block != nullptr;
        }
        if (ended)
            tracks.view->setNeedsComposition();
        entry = moves ? std::next(entry) : tracks_.erase(entry);
    }
    for (auto entry = transitions_.begin(); entry != transitions_.end();) {
        const bool ended = entry->second.block == block;
        if (ended)
            entry->second.view->setNeedsComposition();
        entry = ended ? transitions_.erase(entry) : std::next(entry);
    }
}

void UIViewAnimationEngine::endDue() {
    const double now = NSRunLoop::now() + kClockTolerance;
    std::vector<Block> due;
    std::copy_if(running_.begin(), running_.end(), std::back_inserter(due),
                 [&](const auto& block) { return block->end() <= now; });
    for (const auto& block : due) {
        std::erase(running_, block);
        release(block);
    }
    scheduleWake();
    for (const auto& block : due)
        if (block->didStop)
            block->didStop(!block->wasCut);
}

void UIViewAnimationEngine::scheduleWake() {
    if (wakeToken_ != 0)
        NSRunLoop::cancelPerform(std::exchange(wakeToken_, 0));
    const auto next =
        std::min_element(running_.begin(), running_.end(),
                         [](const auto& a, const auto& b) { return a->end() < b->end(); });
    if (next == running_.end())
        return;
    const double delay = std::max(0.0, (*next)->end() - NSRunLoop::now());
    wakeToken_ = NSRunLoop::performAfterDelay(delay, [this] {
        wakeToken_ = 0;
        endDue();
    });
}

UIViewAnimationEngine::Flip* UIViewAnimationEngine::flipOf(const UIView& view) {
    const auto found = transitions_.find(&view);
    if (found == transitions_.end())
        return nullptr;
    auto& flip = found->second.flip;
    flip.progress = found->second.block->progressAt(NSRunLoop::now());
    return &flip;
}

void UIViewAnimationEngine::movingViewWasDrawn() {
    drewMovement_ = true;
    frames_.start();
}

}
