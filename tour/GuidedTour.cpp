#include "tour/GuidedTour.h"

#include "platform/foundation/NSRunLoop.h"
#include "platform/host/Display.h"
#include "platform/host/EventLoop.h"
#include "platform/host/Host.h"
#include "tour/AdTour.h"
#include "tour/CatalogueTour.h"
#include "tour/HelpTour.h"
#include "tour/MainJobTour.h"
#include "tour/MusicTour.h"

#include <cstdio>
#include <filesystem>
#include <utility>

namespace vistrel {

namespace {

constexpr double kWatchSeconds = 0.05;
constexpr double kPictureSeconds = 0.017; // out of step with a film's frames
constexpr int kPictureTries = 100;

}

GuidedTour::GuidedTour(std::string directory)
    : directory_(std::move(directory)) {}

void GuidedTour::start() {
    std::error_code error;
    std::filesystem::create_directories(directory_, error);
    if (error) {
        std::fprintf(stderr, "vistrel: cannot make %s: %s\n", directory_.c_str(),
                     error.message().c_str());
        host::current().loop->quit(1);
        return;
    }
    steps_ = mainJobTour();
    for (TourStep& step : musicTour())
        steps_.push_back(std::move(step));
    for (TourStep& step : helpTour())
        steps_.push_back(std::move(step));
    for (TourStep& step : catalogueTour())
        steps_.push_back(std::move(step));
    for (TourStep& step : adTour())
        steps_.push_back(std::move(step));
    tourBegan_ = NSRunLoop::now();
    beginStep();
}

void GuidedTour::beginStep() {
    if (current_ == steps_.size()) {
        std::printf("Tour: %zu steps passed in %.1f s; pictures in %s\n", steps_.size(),
                    NSRunLoop::now() - tourBegan_, directory_.c_str());
        host::current().loop->quit(0);
        return;
    }
    stepBegan_ = NSRunLoop::now();
    pictureTries_ = 0;
    if (steps_[current_].act)
        steps_[current_].act();
    watchStep();
}

void GuidedTour::watchStep() {
    const TourStep& step = steps_[current_];
    if (!step.holds || step.holds())
        NSRunLoop::performAfterDelay(step.settle, [this] { endStep(true); });
    else if (NSRunLoop::now() - stepBegan_ > step.timeout)
        endStep(false);
    else
        NSRunLoop::performAfterDelay(kWatchSeconds, [this] { watchStep(); });
}

void GuidedTour::endStep(bool held) {
    const TourStep& step = steps_[current_];
    const bool saved = host::current().display->saveScreenshot(picturePath());
    // Between a change and the next frame, often while a film plays, there is nothing to save.
    if (!saved && ++pictureTries_ < kPictureTries) {
        NSRunLoop::performAfterDelay(kPictureSeconds, [this, held] { endStep(held); });
        return;
    }
    const std::string figures = held && step.measured ? " (" + step.measured() + ")" : "";
    std::printf("%s %2zu %s: %s%s\n", held ? "ok    " : "FAILED", current_ + 1, step.name.c_str(),
                step.says.c_str(), figures.c_str());
    if (!saved)
        std::printf("       cannot save a picture at %s\n", picturePath().c_str());
    std::fflush(stdout);
    if (!held || !saved) {
        host::current().loop->quit(1);
        return;
    }
    ++current_;
    beginStep();
}

std::string GuidedTour::picturePath() const {
    char number[8];
    std::snprintf(number, sizeof number, "%02zu-", current_ + 1);
    return directory_ + "/" + number + steps_[current_].name + ".png";
}

}
