#pragma once
#include <gtk/gtk.h>

#include <functional>
#include <string>

namespace bench {

/// What each contender shows: this many files, a row of this height each.
inline constexpr int kRows = 10000;
inline constexpr int kRowHeight = 60;
inline constexpr int kWidth = 320;
inline constexpr int kHeight = 480;
/// How far the list moves from frame to frame.
inline constexpr double kStep = 7;

std::string rowName(int row);

/// Moves a list by a step each frame through `scrollTo` and measures what the frames cost. Prints
/// the processor milliseconds a frame and the longest frame of all, then calls `done`.
class FrameMeter {
public:
    FrameMeter(GtkWidget* widget, std::function<void(double offset)> scrollTo,
               std::function<void()> done);

private:
    bool tick();
    static void realized(GtkWidget* widget, FrameMeter* meter);
    static gboolean ticked(GtkWidget* widget, GdkFrameClock* clock, gpointer meter);
    static void begin(GdkFrameClock* clock, FrameMeter* meter);
    static void end(GdkFrameClock* clock, FrameMeter* meter);

    std::function<void(double)> scrollTo_;
    std::function<void()> done_;
    int frame_ = 0;
    double processStart_ = 0;
    double frameStart_ = 0;
    double longest_ = 0;
};

/// The toolkit's own list.
void runListView(const std::string& resources);
/// The least that can be done: one widget that appends a cached node for each row on screen.
void runCachedNodes(const std::string& resources);

}
