#pragma once
#include "tour/TourStep.h"

#include <string>
#include <vector>

namespace vistrel {

/// Walks through the application's main job on the real screen: one line and one picture per step.
/// Ends the run loop with status 0 when every step held, with 1 at the first that did not.
class GuidedTour {
public:
    /// `directory` is created if missing; pictures of an earlier tour are replaced.
    explicit GuidedTour(std::string directory);
    GuidedTour(const GuidedTour&) = delete;
    GuidedTour& operator=(const GuidedTour&) = delete;

    void start();

private:
    void beginStep();
    void watchStep();
    void endStep(bool held);
    std::string picturePath() const;

    std::string directory_;
    std::vector<TourStep> steps_;
    std::size_t current_ = 0;
    double stepBegan_ = 0;
    int pictureTries_ = 0;
    double tourBegan_ = 0;
};

}
