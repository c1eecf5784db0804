#pragma once
#include "platform/host/Media.h"
#include "platform/linux/media/GstMedia.h"
#include "tests/linux/MainLoop.h"

#include <gtest/gtest.h>
#include <libsoup/soup.h>

#include <memory>
#include <string>
#include <vector>

namespace vistrel {

/// What a player told.
struct PlaybackRecorder : host::PlaybackClient {
    void playbackDidBecomeReady() override { ++ready; }
    void playbackStalled(bool) override {}
    void playbackDidEnd() override { ++ended; }
    void playbackDidFail(const std::string& message) override { failures.push_back(message); }
    void playbackInterrupted(bool begins) override { interruptions.push_back(begins); }

    int ready = 0;
    int ended = 0;
    std::vector<std::string> failures;
    std::vector<bool> interruptions;
};

/// The real players on the sample files; device paths are names of samples.
class PlaybackFixture : public testing::Test {
protected:
    PlaybackFixture() {
        MediaSetup setup;
        setup.cookieJar = [this] {
            return jar_;
        };
        setup.machinePath = [](const std::string& path) {
            return SAMPLES_FOLDER + path;
        };
        setup.log = [this](const std::string& line) {
            log_.push_back(line);
        };
        media_ = std::make_unique<GstMedia>(setup);
    }
    ~PlaybackFixture() override { g_object_unref(jar_); }

    std::shared_ptr<host::Playback> audio(const std::string& name) {
        auto made = media_->createAudioPlayback("file:///" + name);
        EXPECT_TRUE(made.ok()) << name;
        if (!made)
            return nullptr;
        made.value()->setClient(&client_);
        return std::move(made.value());
    }

    SoupCookieJar* jar_ = soup_cookie_jar_new();
    std::vector<std::string> log_;
    std::unique_ptr<GstMedia> media_;
    PlaybackRecorder client_;
};

}
