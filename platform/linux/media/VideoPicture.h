#pragma once
#include "platform/host/ForeignContent.h"
#include "platform/linux/media/VideoFeed.h"
#include "platform/linux/window/GtkForeignContent.h"

#include <gst/gst.h>

#include <memory>

namespace vistrel {

/// A player's moving picture and the video sink that supplies it.
class VideoPicture : public host::ForeignContent, public GtkForeignContent {
public:
    /// A new sink that plays into this picture. The caller owns the (floating) reference.
    GstElement* makeSink();
    unsigned framesShown() const { return feed_->framesShown(); }
    int width() const { return static_cast<int>(feed_->size().width); }
    int height() const { return static_cast<int>(feed_->size().height); }

    ForeignPicture* picture() override { return feed_.get(); }
    bool isOpaque() const override { return feed_->hasShown(); }

private:
    std::shared_ptr<VideoFeed> feed_ = std::make_shared<VideoFeed>();
};

}
