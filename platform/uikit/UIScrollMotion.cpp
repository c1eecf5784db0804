#include "platform/uikit/UIScrollMotion.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr double kRubberStiffness = 0.55;
// 0.998 of the velocity is left after each millisecond.
const double kFriction = -1000 * std::log(0.998);
constexpr double kSpring = 12;          // critically damped, radians a second
constexpr double kSlowest = 8;          // coasting ends below this velocity
constexpr double kLeastFlick = 60;      // a release below this velocity stops at once
constexpr double kFastest = 6000;       // fingers report absurd velocities over tiny times
constexpr double kVelocityWindow = 0.1; // seconds of samples that make the release velocity
constexpr double kCoarseStep = 20;      // points; a mouse wheel's step, not a touchpad's
constexpr double kWheelGlide = 0.15;

double rubber(double beyond, double length) {
    return (1 - 1 / (beyond * kRubberStiffness / length + 1)) * length;
}

double unrubber(double shown, double length) {
    const double part = std::min(shown / length, 0.999);
    return (1 / (1 - part) - 1) * length / kRubberStiffness;
}

double easeInOut(double t) {
    return t * t * (3 - 2 * t);
}

}

double UIScrollMotion::clamped(double offset) const {
    return std::clamp(offset, range_.minimum, std::max(range_.minimum, range_.maximum));
}

void UIScrollMotion::setRange(const Range& range) {
    range_ = range;
    range_.maximum = std::max(range_.maximum, range_.minimum);
    range_.viewLength = std::max(range_.viewLength, 1.0);
    if (phase_ == Phase::Rest)
        offset_ = clamped(offset_);
    else if (phase_ == Phase::Returning)
        target_ = clamped(target_);
}

void UIScrollMotion::setOffset(double offset) {
    rest(offset);
}

void UIScrollMotion::rest(double offset) {
    phase_ = Phase::Rest;
    offset_ = offset;
}

double UIScrollMotion::shownForRaw(double raw) const {
    const double inside = clamped(raw);
    if (raw == inside)
        return inside;
    const double beyond = rubber(std::abs(raw - inside), range_.viewLength);
    return raw < inside ? inside - beyond : inside + beyond;
}

double UIScrollMotion::rawForShown(double shown) const {
    const double inside = clamped(shown);
    if (shown == inside)
        return shown;
    const double beyond = unrubber(std::abs(shown - inside), range_.viewLength);
    return shown < inside ? inside - beyond : inside + beyond;
}

void UIScrollMotion::beginDrag(double finger, double time) {
    phase_ = Phase::Dragging;
    rawStart_ = rawForShown(offset_);
    fingerStart_ = finger;
    sampleCount_ = 0;
    dragTo(finger, time);
}

void UIScrollMotion::dragTo(double finger, double time) {
    if (phase_ != Phase::Dragging)
        return;
    if (sampleCount_ == samples_.size()) {
        std::move(samples_.begin() + 1, samples_.end(), samples_.begin());
        --sampleCount_;
    }
    samples_[sampleCount_++] = {time, finger};
    offset_ = shownForRaw(rawStart_ + fingerStart_ - finger);
}

double UIScrollMotion::releaseVelocity(double time) const {
    if (sampleCount_ < 2)
        return 0;
    const Sample& last = samples_[sampleCount_ - 1];
    if (time - last.time > kVelocityWindow)
        return 0;
    const auto* first = std::find_if(
        samples_.begin(), samples_.begin() + sampleCount_ - 1,
        [&](const Sample& sample) { return last.time - sample.time <= kVelocityWindow; });
    const double elapsed = last.time - first->time;
    if (elapsed <= 0)
        return 0;
    return std::clamp((first->finger - last.finger) / elapsed, -kFastest, kFastest);
}

void UIScrollMotion::endDrag(double time) {
    if (phase_ == Phase::Dragging)
        release(releaseVelocity(time), time);
}

void UIScrollMotion::stop(double time) {
    if (phase_ != Phase::Rest)
        release(0, time);
}

void UIScrollMotion::release(double velocity, double time) {
    const double edge = clamped(offset_);
    if (offset_ == edge) {
        coast(velocity, time);
        return;
    }
    const double beyond = offset_ - edge;
    const bool inward = velocity * beyond < 0;
    if (inward && std::abs(velocity) / kFriction > std::abs(beyond))
        coast(velocity, time);
    else
        returnToEdge(edge, inward ? velocity : velocity * 0.2, time);
}

void UIScrollMotion::coast(double velocity, double time) {
    const double edge = clamped(offset_);
    if (std::abs(velocity) < kLeastFlick) {
        rest(edge);
        return;
    }
    // Rest on a whole point, so that text at rest is sharp: aim there and adjust the velocity to
    // match.
    const double sign = velocity < 0 ? -1 : 1;
    const double way = (std::abs(velocity) - kSlowest) / kFriction;
    target_ = std::round(offset_ + sign * way);
    startVelocity_ = sign * (std::abs(target_ - offset_) * kFriction + kSlowest);
    phase_ = Phase::Coasting;
    startTime_ = time;
    startOffset_ = offset_;
    duration_ = std::log(std::abs(startVelocity_) / kSlowest) / kFriction;
}

void UIScrollMotion::returnToEdge(double edge, double velocity, double time) {
    phase_ = Phase::Returning;
    startTime_ = time;
    startOffset_ = offset_;
    startVelocity_ = velocity;
    target_ = edge;
}

void UIScrollMotion::glideTo(double target, double time, double duration) {
    if (duration <= 0 || target == offset_) {
        rest(target);
        return;
    }
    phase_ = Phase::Gliding;
    startTime_ = time;
    startOffset_ = offset_;
    target_ = target;
    duration_ = duration;
}

bool UIScrollMotion::wheel(double delta, double time) {
    if (phase_ == Phase::Dragging)
        return false;
    const double from = phase_ == Phase::Gliding ? target_ : clamped(offset_);
    const double aim = clamped(from + delta);
    if (aim == from)
        return false;
    if (std::abs(delta) < kCoarseStep)
        rest(aim);
    else
        glideTo(aim, time, kWheelGlide);
    return true;
}

bool UIScrollMotion::advance(double time) {
    switch (phase_) {
    case Phase::Rest:
    case Phase::Dragging:
        return false;
    case Phase::Coasting:
        return advanceCoasting(time);
    case Phase::Returning:
        return advanceReturning(time);
    case Phase::Gliding:
        return advanceGliding(time);
    }
    return false;
}

bool UIScrollMotion::advanceCoasting(double time) {
    const double elapsed = std::clamp(time - startTime_, 0.0, duration_);
    const double reach = startVelocity_ / kFriction;
    offset_ = startOffset_ + reach * (1 - std::exp(-kFriction * elapsed));
    const double edge = startVelocity_ < 0 ? range_.minimum : range_.maximum;
    const bool passed = startVelocity_ < 0 ? offset_ < edge : offset_ > edge;
    if (passed) {
        // From the moment at which the edge was reached, whenever the frames came.
        const double left = 1 - (edge - startOffset_) / reach;
        const double when = startTime_ - std::log(std::max(left, 1e-9)) / kFriction;
        offset_ = edge;
        returnToEdge(edge, startVelocity_ * left, when);
        return advance(time);
    }
    if (elapsed < duration_)
        return true;
    rest(target_);
    return false;
}

bool UIScrollMotion::advanceReturning(double time) {
    const double elapsed = std::max(time - startTime_, 0.0);
    const double beyond = startOffset_ - target_;
    const double slope = startVelocity_ + kSpring * beyond;
    const double decay = std::exp(-kSpring * elapsed);
    const double now = (beyond + slope * elapsed) * decay;
    const double velocity = slope * decay - kSpring * now;
    if (std::abs(now) < 0.5 && std::abs(velocity) < 15) {
        rest(target_);
        return false;
    }
    offset_ = target_ + now;
    return true;
}

bool UIScrollMotion::advanceGliding(double time) {
    const double part = std::clamp((time - startTime_) / duration_, 0.0, 1.0);
    if (part >= 1) {
        rest(target_);
        return false;
    }
    offset_ = startOffset_ + (target_ - startOffset_) * easeInOut(part);
    return true;
}

}
