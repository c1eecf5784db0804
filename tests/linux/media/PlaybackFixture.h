#pragma once
#include "platform/host/Media.h"
#include "platform/linux/NativeCallback.h"
#include "platform/linux/media/GstMedia.h"
#include "platform/linux/window/ForeignPicture.h"
#include "platform/linux/window/GtkForeignContent.h"
#include "tests/linux/MainLoop.h"
#include "tests/linux/TestCookieJar.h"
#include "tests/linux/web/ProcessTree.h"

#include <gtk/gtk.h>

#include <chrono>

namespace vistrel {

using Clock = std::chrono::steady_clock;
inline double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

inline std::string sample(const std::string& name) {
    return support::contentsOf(std::string(SAMPLES_FOLDER) + "/" + name);
}

/// Writes down what a player reports.
struct PlaybackRecorder : host::PlaybackClient {
    void playbackDidBecomeReady() override { told.emplace_back("ready"); }
    void playbackStalled(bool) override {}
    void playbackDidEnd() override { told.emplace_back("ended"); }
    void playbackDidFail(const std::string&) override { told.emplace_back("failed"); }
    void playbackInterrupted(bool begins) override {
        told.emplace_back(begins ? "interrupted" : "interruption over");
    }

    std::vector<std::string> told;
};

/// The real players with the sample files; device paths are the samples' names.
class PlaybackFixture : public testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_TRUE(gtk_init_check()) << "no display"; }

    PlaybackFixture() {
        MediaSetup setup;
        setup.cookieJar = [this] {
            return jar_.get();
        };
        setup.credential = [this](const std::string& url) -> std::optional<StreamCredential> {
            const auto known = credentials_.find(url);
            return known == credentials_.end() ? std::nullopt : std::optional(known->second);
        };
        setup.followRedirects = [this](const std::string& url,
                                       const std::function<void(const std::string&)>& found) {
            callLater([target = redirects_[url], found] { found(target); });
        };
        setup.machinePath = [](const std::string& path) {
            return SAMPLES_FOLDER + path;
        };
        setup.log = [this](const std::string& line) {
            log_.push_back(line);
        };
        media_ = std::make_unique<GstMedia>(setup);
    }

    std::shared_ptr<host::Playback> audio(const std::string& name) {
        auto made = media_->createAudioPlayback("file:///" + name);
        EXPECT_TRUE(made.ok()) << name;
        if (!made)
            return nullptr;
        made.value()->setClient(&client_);
        return std::move(made.value());
    }

    /// Of an address, or a sample's name.
    std::shared_ptr<host::MoviePlayback> movie(const std::string& where) {
        auto made = media_->createMoviePlayback(
            where.find(':') == std::string::npos ? "file:///" + where : where);
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

    enum Colour : std::ptrdiff_t { Red, Green, Blue };
    static Colour strongest(const std::array<int, 3>& colour) {
        return Colour(std::ranges::max_element(colour) - colour.begin());
    }
    static bool shows(host::MoviePlayback& playback, Colour colour, double seconds = 20) {
        return turnUntil([&] { return strongest(colourShown(playback)) == colour; }, seconds);
    }

    /// Whether the player reports that within a while.
    bool hears(const std::string& event, double seconds = 20) {
        return turnUntil([&] { return std::ranges::count(client_.told, event) > 0; }, seconds);
    }
    bool becomesReady(host::Playback& playback) {
        playback.prepare();
        return hears("ready");
    }
    bool playsToItsEnd(host::Playback& playback) {
        playback.play();
        return hears("ended");
    }
    /// Plays it and waits until its position moves; whether it does.
    static bool starts(host::Playback& playback) {
        return playback.play() && passes(playback, playback.currentTime() + 0.2);
    }
    static bool passes(host::Playback& playback, double second) {
        return turnUntil([&] { return playback.currentTime() > second; });
    }

    TestCookieJar jar_;
    std::map<std::string, StreamCredential> credentials_; ///< by address
    std::map<std::string, std::string> redirects_;        ///< to the address that answers
    std::vector<std::string> log_;
    std::unique_ptr<GstMedia> media_;
    PlaybackRecorder client_;
};

}
