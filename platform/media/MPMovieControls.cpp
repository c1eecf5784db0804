#include "platform/media/MPMovieControls.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSTimer.h"
#include "platform/foundation/Weakly.h"
#include "platform/media/MPMovieTransportButton.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UISlider.h"
#include "platform/uikit/UIViewAnimation.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace vistrel {

namespace {

constexpr double kFadeAfter = 4;      ///< seconds without a touch
constexpr double kFadeDuration = 0.3; ///< seconds
constexpr double kTopHeight = 44;
constexpr double kBottomHeight = 52;
constexpr double kBottomWidth = 300;
constexpr double kTimeWidth = 56;

std::shared_ptr<UIView> makeBar() {
    auto bar = std::make_shared<UIView>();
    bar->setOpaque(false);
    bar->setBackgroundColor(UIColor::colorWithWhiteAlpha(0, 0.6F));
    return bar;
}

std::shared_ptr<UILabel> makeTimeLabel(UITextAlignment alignment) {
    auto label = std::make_shared<UILabel>();
    label->setOpaque(false);
    label->setBackgroundColor(UIColor::clearColor());
    label->setTextColor(UIColor::whiteColor());
    label->setFont(UIFont::boldSystemFontOfSize(13));
    label->setTextAlignment(alignment);
    return label;
}

}

std::string MPMovieTimeText(double seconds) {
    const long whole = static_cast<long>(std::max(0.0, seconds));
    char text[32];
    if (whole >= 3600)
        std::snprintf(text, sizeof text, "%ld:%02ld:%02ld", whole / 3600, whole / 60 % 60,
                      whole % 60);
    else
        std::snprintf(text, sizeof text, "%ld:%02ld", whole / 60, whole % 60);
    return text;
}

MPMovieControls::MPMovieControls(CGRect frame, Actions actions)
    : UIView(frame)
    , actions_(std::move(actions)) {
    UIView::setOpaque(false);
    makeTopBar();
    makeBottomBar();
}

std::shared_ptr<MPMovieControls> MPMovieControls::withActions(CGRect frame, Actions actions) {
    std::shared_ptr<MPMovieControls> controls(new MPMovieControls(frame, std::move(actions)));
    controls->connect();
    controls->keepShown();
    return controls;
}

MPMovieControls::~MPMovieControls() {
    if (fadeTimer_)
        fadeTimer_->invalidate();
}

void MPMovieControls::makeTopBar() {
    topBar_ = makeBar();
    doneButton_ = UIButton::buttonWithType(UIButtonType::Custom);
    doneButton_->setTitleForState(NSLocalizedString("Done"), UIControlState::Normal);
    doneButton_->setTitleColorForState(UIColor::whiteColor(), UIControlState::Normal);
    doneButton_->titleLabel().setFont(UIFont::boldSystemFontOfSize(14));
    doneButton_->setBackgroundColor(UIColor::colorWithRedGreenBlueAlpha(0.16F, 0.34F, 0.78F, 0.9F));
    elapsed_ = makeTimeLabel(UITextAlignment::Right);
    remaining_ = makeTimeLabel(UITextAlignment::Left);
    position_ = std::make_shared<UISlider>();
    position_->setAccessibility(
        {UIAccessibilityRole::Slider, NSLocalizedString("Position"), {}, true});
    for (const std::shared_ptr<UIView>& part : std::initializer_list<std::shared_ptr<UIView>>{
             doneButton_, elapsed_, position_, remaining_})
        topBar_->addSubview(part);
    addSubview(topBar_);
}

void MPMovieControls::makeBottomBar() {
    bottomBar_ = makeBar();
    transport_ = std::make_shared<MPMovieTransportButton>();
    volume_ = std::make_shared<UISlider>();
    volume_->setAccessibility({UIAccessibilityRole::Slider, NSLocalizedString("Volume"), {}, true});
    volume_->setValue(1);
    bottomBar_->addSubview(transport_);
    bottomBar_->addSubview(volume_);
    addSubview(bottomBar_);
}

void MPMovieControls::connect() {
    const auto whenTouched = [this](void (*act)(MPMovieControls&)) {
        return weakly(
            this,
            [act](MPMovieControls& controls) {
                controls.keepShown();
                act(controls);
            });
    };
    doneButton_->addTarget(whenTouched([](auto& controls) { controls.actions_.done(); }),
                           UIControlEventTouchUpInside);
    transport_->addTarget(whenTouched([](auto& controls) { controls.actions_.togglePlay(); }),
                          UIControlEventTouchUpInside);
    position_->addTarget(whenTouched([](auto& controls) {
                             const bool drags = controls.position_->isTracking();
                             controls.scrubbing_ = drags;
                             const Actions& actions = controls.actions_;
                             (drags ? actions.scrub : actions.seek)(controls.position_->value());
                         }),
                         UIControlEventValueChanged);
    position_->addTarget(weakly(
                             this,
                             [](MPMovieControls& controls) {
                                 if (std::exchange(controls.scrubbing_, false))
                                     controls.actions_.seek(controls.position_->value());
                             }),
                         UIControlEventTouchUpInside | UIControlEventTouchCancel);
    volume_->addTarget(
        whenTouched([](auto& controls) { controls.actions_.setVolume(controls.volume_->value()); }),
        UIControlEventValueChanged);
}

void MPMovieControls::layoutSubviews() {
    const CGSize size = bounds().size;
    topBar_->setFrame(CGRectMake(0, 0, size.width, kTopHeight));
    doneButton_->setFrame(CGRectMake(6, 7, 56, 30));
    elapsed_->setFrame(CGRectMake(68, 0, kTimeWidth, kTopHeight));
    position_->setFrame(
        CGRectMake(68 + kTimeWidth + 8, 10, size.width - 68 - 2 * kTimeWidth - 16 - 8, 23));
    remaining_->setFrame(CGRectMake(size.width - kTimeWidth - 4, 0, kTimeWidth, kTopHeight));
    bottomBar_->setFrame(CGRectMake((size.width - kBottomWidth) / 2,
                                    size.height - kBottomHeight - 12, kBottomWidth, kBottomHeight));
    transport_->setFrame(CGRectMake(8, 4, 44, 44));
    volume_->setFrame(CGRectMake(68, 14, kBottomWidth - 68 - 16, 23));
}

bool MPMovieControls::pointInside(CGPoint point) const {
    const auto contains = [&](const UIView& bar) {
        return bar.frame().contains(point);
    };
    return shown_ && (contains(*topBar_) || contains(*bottomBar_));
}

void MPMovieControls::update(const State& state) {
    state_ = state;
    // A thumb that is being dragged stays under the finger.
    if (!position_->isTracking()) {
        position_->setMaximumValue(static_cast<float>(std::max(state.duration, 0.1)));
        position_->setValue(static_cast<float>(state.elapsed));
    }
    if (!volume_->isTracking())
        volume_->setValue(state.volume);
    elapsed_->setText(MPMovieTimeText(state.elapsed));
    remaining_->setText(
        state.duration > 0
            ? "-" + MPMovieTimeText(static_cast<double>(static_cast<long>(state.duration)) -
                                    static_cast<double>(static_cast<long>(state.elapsed)))
            : "");
    transport_->setPlaying(state.playing);
}

void MPMovieControls::show() {
    keepShown();
    if (std::exchange(shown_, true))
        return;
    UIViewAnimation::beginAnimations();
    UIViewAnimation::setAnimationDuration(kFadeDuration);
    setAlpha(1);
    UIViewAnimation::commitAnimations();
}

void MPMovieControls::hide() {
    if (!std::exchange(shown_, false))
        return;
    UIViewAnimation::beginAnimations();
    UIViewAnimation::setAnimationDuration(kFadeDuration);
    setAlpha(0);
    UIViewAnimation::commitAnimations();
}

void MPMovieControls::keepShown() {
    if (fadeTimer_)
        fadeTimer_->invalidate();
    fadeTimer_ = NSTimer::scheduledTimer(kFadeAfter, NSTimer::Repeats::No,
                                         weakly(this, &MPMovieControls::fadeIfPlaying));
}

void MPMovieControls::fadeIfPlaying() {
    if (state_.playing && !position_->isTracking() && !volume_->isTracking())
        hide();
    else
        keepShown();
}

}
