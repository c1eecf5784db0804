#pragma once
#include "platform/host/Media.h"
#include "platform/linux/NativeCallback.h"
#include "platform/linux/media/GstMedia.h"
#include "tests/linux/MainLoop.h"
#include "tests/linux/TestCookieJar.h"
#include "tests/linux/web/ProcessTree.h"

#include <gtest/gtest.h>

#include <chrono>
#include <map>
#include <optional>

namespace vistrel {

using Clock = std::chrono::steady_clock;
inline double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

inline std::string sample(const std::string& name) {
    return support::contentsOf(std::string(SAMPLES_FOLDER) + "/" + name);
}

/// What a player reported.
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

/// The real players with the sample files; device paths are the samples' names.
class PlaybackFixture : public testing::Test {
protected:
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

    bool becomesReady(host::Playback& playback) {
        playback.prepare();
        return turnUntil([&] { return client_.ready == 1; });
    }

    /// Plays it and waits until its position moves; whether it does.
    static bool starts(host::Playback& playback) {
        const double from = playback.currentTime();
        return playback.play() && turnUntil([&] { return playback.currentTime() > from + 0.2; });
    }

    TestCookieJar jar_;
    std::map<std::string, StreamCredential> credentials_; ///< by address
    std::map<std::string, std::string> redirects_;        ///< to the address that answers
    std::vector<std::string> log_;
    std::unique_ptr<GstMedia> media_;
    PlaybackRecorder client_;
};

}
