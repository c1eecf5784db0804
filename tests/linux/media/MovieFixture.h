#pragma once
#include "platform/linux/window/ForeignPicture.h"
#include "platform/linux/window/GtkForeignContent.h"
#include "tests/linux/media/PlaybackFixture.h"

#include <gtk/gtk.h>

#include <array>

namespace vistrel {

/// Films and what is drawn of them.
class MovieFixture : public PlaybackFixture {
protected:
    static void SetUpTestSuite() { ASSERT_TRUE(gtk_init_check()) << "no display"; }

    std::shared_ptr<host::MoviePlayback> movie(const std::string& url) {
        auto made = media_->createMoviePlayback(url);
        made->setClient(&client_);
        return made;
    }

    /// Red, green and blue in the middle of what the player shows; 0 to 255.
    static std::array<int, 3> colourShown(host::MoviePlayback& playback) {
        auto* content = dynamic_cast<GtkForeignContent*>(&playback.picture());
        GtkSnapshot* snapshot = gtk_snapshot_new();
        content->picture()->draw(snapshot, {64, 48});
        GskRenderNode* node = gtk_snapshot_free_to_node(snapshot);
        if (!node)
            return {-1, -1, -1};
        cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 1, 1);
        cairo_t* context = cairo_create(surface);
        cairo_translate(context, -32, -24);
        gsk_render_node_draw(node, context);
        const unsigned char* pixel = cairo_image_surface_get_data(surface);
        const std::array<int, 3> colour{pixel[2], pixel[1], pixel[0]};
        cairo_destroy(context);
        cairo_surface_destroy(surface);
        gsk_render_node_unref(node);
        return colour;
    }

    /// Draws, as a screen would, until more than `count` frames have been shown.
    static bool framesPass(host::MoviePlayback& playback, unsigned count) {
        return turnUntil([&] {
            colourShown(playback);
            return playback.framesShown() > count;
        });
    }

    static int strongest(const std::array<int, 3>& colour) {
        return static_cast<int>(std::max_element(colour.begin(), colour.end()) - colour.begin());
    }
};

}
