#pragma once
#include <gtk/gtk.h>

namespace vistrel {

/// Keeps the memory alive that the software renderer hands finished frames to an X server in. The
/// drawing library allocates it for a frame and returns it to the system with the last frame that
/// lies in it; for a film, the fresh pages of each frame cost more than everything else that is
/// done to draw it. Does nothing where frames go to the screen in another way.
class UploadMemory {
public:
    UploadMemory() = default;
    ~UploadMemory();
    UploadMemory(const UploadMemory&) = delete;
    UploadMemory& operator=(const UploadMemory&) = delete;

    /// Makes what is kept large enough for whole frames of the realized widget's window.
    void keepFor(GtkWidget* widget);

private:
    void keep(cairo_surface_t* piece);

    cairo_surface_t* piece_ = nullptr; ///< while it lives, so does the memory around it
    int pixels_ = 0;                   ///< of the largest window
};

}
