#pragma once

namespace vistrel {

/// A window's size in the toolkit's units, which is kept between starts.
struct WindowSize {
    int width;
    int height;

    /// For a window that opens: `scale` units for each point, or, when that is 0, what the user
    /// left, or what suits the monitor. Never larger than the monitor.
    static WindowSize initial(double scale);
    /// The device pixels for each point in a window that opens like that.
    static double initialPixelsPerPoint(double scale);
    /// The toolkit's units for each point.
    double unitsPerPoint() const;
    /// Keeps it for the next start.
    void remember() const;

    friend bool operator==(const WindowSize&, const WindowSize&) = default;
};

}
