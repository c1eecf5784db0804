#pragma once
#include "platform/host/ForeignContent.h"
#include "platform/linux/NativeReference.h"
#include "platform/linux/media/FramePaintable.h"
#include "platform/linux/window/GtkForeignContent.h"

#include <gst/gst.h>

#include <memory>

namespace vistrel {

/// The moving picture of a player: a video sink that hands its frames, at their time, to a
/// paintable on the main loop. When the main loop is late, frames are left out, not queued.
class VideoPicture : public host::ForeignContent, public GtkForeignContent {
public:
    VideoPicture();
    ~VideoPicture() override;
    VideoPicture(const VideoPicture&) = delete;
    VideoPicture& operator=(const VideoPicture&) = delete;

    /// A new sink that plays into this picture. The caller owns the (floating) reference.
    GstElement* makeSink();
    unsigned framesShown() const;
    int width() const;
    int height() const;

    GdkPaintable* paintable() override { return GDK_PAINTABLE(paintable_.get()); }

private:
    struct Feed;
    NativeReference<VistrelFramePaintable> paintable_;
    std::shared_ptr<Feed> feed_;
};

}
