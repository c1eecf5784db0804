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
/// How far the list moves per frame.
inline constexpr double kStep = 7;

std::string rowName(int row);

/// Measures the cost of frames in which `scrollTo` moves a list by a step. Each byte on the
/// standard input starts a block of frames; prints their processor milliseconds per frame
/// and the longest frame; at end of input it calls `done`.
class FrameMeter {
public:
    FrameMeter(GtkWidget* widget, std::function<void(double offset)> scrollTo,
               std::function<void()> done);

private:
    bool tick();
    void startBlock();
    static void realized(GtkWidget* widget, FrameMeter* meter);
    static gboolean asked(gint input, GIOCondition condition, gpointer meter);
    static gboolean ticked(GtkWidget* widget, GdkFrameClock* clock, gpointer meter);
    static void begin(GdkFrameClock* clock, FrameMeter* meter);
    static void end(GdkFrameClock* clock, FrameMeter* meter);

    GtkWidget* widget_;
    std::function<void(double)> scrollTo_;
    std::function<void()> done_;
    double offset_ = 0;
    int frame_ = 0; ///< of the block
    double processStart_ = 0;
    double frameStart_ = 0;
    double longest_ = 0;
};

/// GTK's list view.
void runListView(const std::string& resources);
/// The minimum: one widget that appends a cached node for each row on screen.
void runCachedNodes(const std::string& resources);

}
