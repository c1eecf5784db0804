#pragma once
#include <array>
#include <cstddef>

namespace vistrel {

/// One axis of a scrolling view over time: finger, momentum, bounce, animated moves. It has no
/// clock; every step is given the time. The path depends only on the events, not on how often
/// advance is called. Offsets in points, times in seconds, velocities in points per second.
class UIScrollMotion {
public:
    enum class Phase {
        Rest,
        Dragging,  ///< follows the finger, stiffly outside the range
        Coasting,  ///< momentum with friction
        Returning, ///< a spring back to the edge it has passed
        Gliding    ///< an animated move to a given offset
    };
    struct Range {
        double minimum = 0;
        double maximum = 0;
        double viewLength = 1; ///< how much is visible; the rubber band's scale
    };

    const Range& range() const { return range_; }
    /// At rest the offset is brought into the range.
    void setRange(const Range& range);
    double offset() const { return offset_; }
    /// Jumps; ends any motion.
    void setOffset(double offset);
    Phase phase() const { return phase_; }
    bool isMoving() const { return phase_ != Phase::Rest && phase_ != Phase::Dragging; }

    void beginDrag(double finger, double time);
    void dragTo(double finger, double time);
    /// Lets go: coasts, springs back, or rests.
    void endDrag(double time);
    /// Ease-in-ease-out over `duration`.
    void glideTo(double target, double time, double duration);
    /// A wheel step. Coarse steps glide, fine ones move at once; successive steps add up. False
    /// when it cannot move that way.
    bool wheel(double delta, double time);
    /// Ends momentum where it is; outside the range it springs back.
    void stop(double time);
    /// Advances to `time`. False when at rest.
    bool advance(double time);

private:
    struct Sample {
        double time = 0;
        double finger = 0;
    };

    double clamped(double offset) const;
    double shownForRaw(double raw) const;
    double rawForShown(double shown) const;
    double releaseVelocity(double time) const;
    void rest(double offset);
    void coast(double velocity, double time);
    void returnToEdge(double edge, double velocity, double time);
    void release(double velocity, double time);
    bool advanceCoasting(double time);
    bool advanceReturning(double time);
    bool advanceGliding(double time);

    Range range_;
    Phase phase_ = Phase::Rest;
    double offset_ = 0;

    // The current motion: where and how fast it began.
    double startTime_ = 0;
    double startOffset_ = 0;
    double startVelocity_ = 0;
    double target_ = 0; ///< Returning: the edge; Gliding: the aim; Coasting: where it rests
    double duration_ = 0;

    double rawStart_ = 0; ///< offset without the rubber band when the drag began
    double fingerStart_ = 0;
    std::array<Sample, 16> samples_;
    std::size_t sampleCount_ = 0;
};

}
