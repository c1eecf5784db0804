#include "platform/media/AVAudioPlayer.h"
#include "tests/media/MediaTest.h"

namespace vistrel {
namespace {

struct Listener : AVAudioPlayerDelegate {
    void audioPlayerDidFinishPlayingSuccessfully(AVAudioPlayer& player, bool well) override {
        events.emplace_back(well ? "finished" : "finished badly");
        if (onFinish)
            onFinish(player);
    }
    void audioPlayerDecodeErrorDidOccurError(AVAudioPlayer&, const NSError& error) override {
        events.push_back("decode error: " + error.localizedDescription());
    }
    void audioPlayerBeginInterruption(AVAudioPlayer&) override { events.emplace_back("begin"); }
    void audioPlayerEndInterruption(AVAudioPlayer&) override { events.emplace_back("end"); }

    std::function<void(AVAudioPlayer&)> onFinish;
    std::vector<std::string> events;
};

class AVAudioPlayerTest : public MediaTest {
protected:
    std::shared_ptr<AVAudioPlayer> player(double duration = 10) {
        media().at("file:///song.mp3").duration = duration;
        auto made = AVAudioPlayer::withContentsOfURL(NSURL::fileURLWithPath("/song.mp3"), nullptr);
        made->setDelegate(listener_);
        return made;
    }

    std::shared_ptr<Listener> listener_ = std::make_shared<Listener>();
};

TEST_F(AVAudioPlayerTest, AFileThatCannotBeOpenedYieldsNoPlayerAndTheReason) {
    media().at("file:///bad.mp3").failure = "The file contains no sound.";
    std::optional<NSError> error;
    EXPECT_EQ(AVAudioPlayer::withContentsOfURL(NSURL::fileURLWithPath("/bad.mp3"), &error),
              nullptr);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->localizedDescription(), "The file contains no sound.");
    EXPECT_NE(AVAudioPlayer::withContentsOfURL(NSURL::fileURLWithPath("/good.mp3"), &error),
              nullptr);
    EXPECT_FALSE(error);
}

TEST_F(AVAudioPlayerTest, PlaysInRealTimeAndEndsOnceAtPositionZero) {
    auto played = player();
    EXPECT_DOUBLE_EQ(played->duration(), 10);
    EXPECT_TRUE(played->play());
    advance(4);
    EXPECT_NEAR(played->currentTime(), 4, 1e-9);
    played->pause();
    advance(100);
    EXPECT_NEAR(played->currentTime(), 4, 1e-9);
    played->setCurrentTime(9);
    played->play();
    advance(0.9);
    EXPECT_THAT(listener_->events, IsEmpty());
    advance(0.2);
    EXPECT_THAT(listener_->events, ElementsAre("finished"));
    EXPECT_FALSE(played->isPlaying());
    EXPECT_EQ(played->currentTime(), 0);
    listener_->onFinish = [this](AVAudioPlayer& ended) {
        if (listener_->events.size() == 2)
            ended.play();
    };
    played->play();
    advance(12);
    EXPECT_NEAR(played->currentTime(), 2, 1e-6) << "played again by its callback";
    advance(9);
    EXPECT_THAT(listener_->events, ElementsAre("finished", "finished", "finished"));
}

TEST_F(AVAudioPlayerTest, RepeatsAsOftenAsSetAndReportsOneEnd) {
    auto played = player();
    played->setNumberOfLoops(2);
    played->play();
    advance(29);
    EXPECT_TRUE(played->isPlaying());
    EXPECT_THAT(listener_->events, IsEmpty());
    advance(2);
    EXPECT_THAT(listener_->events, ElementsAre("finished"));

    played->setNumberOfLoops(-1);
    played->play();
    advance(1000);
    EXPECT_TRUE(played->isPlaying());
    played->stop();
    advance(1000);
    EXPECT_THAT(listener_->events, ElementsAre("finished"));
}

TEST_F(AVAudioPlayerTest, ADecodeErrorReachesTheDelegate) {
    auto played = player();
    played->play();
    media().player()->fail("broken frame");
    EXPECT_THAT(listener_->events, ElementsAre("decode error: broken frame", "finished badly"));
    EXPECT_FALSE(played->isPlaying());
}

TEST_F(AVAudioPlayerTest, AnInterruptionIsReportedToTheSessionThenTheDelegateAndPauses) {
    static std::vector<std::string>* order;
    order = &listener_->events;
    AudioSessionInitialize(
        [](void* data, std::uint32_t state) {
            EXPECT_EQ(data, order);
            order->push_back("session " + std::to_string(state));
        },
        order);
    auto played = player();
    played->play();
    advance(3);
    media().player()->interrupt(true);
    EXPECT_FALSE(played->isPlaying());
    advance(60);
    media().player()->interrupt(false);
    EXPECT_FALSE(played->isPlaying());
    EXPECT_THAT(listener_->events, ElementsAre("session 1", "begin", "session 0", "end"));
    played->play();
    EXPECT_NEAR(played->currentTime(), 3, 1e-9);

    // The user does not wait for the end, which then nobody reports.
    listener_->events.clear();
    media().player()->interrupt(true);
    played->play();
    EXPECT_TRUE(played->isPlaying());
    media().player()->interrupt(true);
    played->pause();
    EXPECT_THAT(listener_->events, ElementsAre("session 1", "begin", "session 0", "end",
                                               "session 1", "begin", "session 0"));

    listener_->events.clear();
    AudioSessionRemoveInterruptionListener(order);
    media().player()->interrupt(true);
    EXPECT_THAT(listener_->events, ElementsAre("begin"));
}

TEST_F(AVAudioPlayerTest, ThePlayerMayBeDestroyedInItsCallbackAndADeadDelegateIsNotCalled) {
    auto played = player();
    listener_->onFinish = [&](AVAudioPlayer&) {
        played.reset();
    };
    played->play();
    advance(11);
    EXPECT_THAT(listener_->events, ElementsAre("finished"));
    EXPECT_TRUE(media().players().empty());

    auto orphan = player();
    orphan->play();
    listener_.reset();
    advance(11);
    EXPECT_FALSE(orphan->isPlaying());
}

}
}
