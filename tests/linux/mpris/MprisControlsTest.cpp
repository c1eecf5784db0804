// The player on a private bus, used as a desktop uses it.
#include "platform/linux/mpris/MprisControls.h"

#include "platform/linux/NativeCallback.h"
#include "platform/linux/mpris/MprisInterface.h"
#include "tests/linux/MainLoop.h"
#include "tests/linux/TestBus.h"

namespace vistrel {
namespace {

class RecordingClient : public host::MediaControlsClient {
public:
    void mediaPlay() override { asked.emplace_back("play"); }
    void mediaPause() override { asked.emplace_back("pause"); }
    void mediaStop() override { asked.emplace_back("stop"); }
    void mediaNext() override { asked.emplace_back("next"); }
    void mediaPrevious() override { asked.emplace_back("previous"); }
    void mediaSeek(double seconds) override {
        asked.push_back("seek " + std::to_string(static_cast<int>(seconds * 1000)));
    }
    void mediaSetVolume(float volume) override {
        asked.push_back("volume " + std::to_string(static_cast<int>(volume * 100)));
    }
    void mediaSetLoop(host::NowPlaying::Loop loop) override {
        asked.push_back("loop " + std::to_string(static_cast<int>(loop)));
    }
    void mediaSetShuffle(bool shuffle) override {
        asked.emplace_back(shuffle ? "shuffle" : "no shuffle");
    }
    double mediaPosition() const override { return 12.5; }

    std::vector<std::string> asked;
};

class MprisControlsTest : public testing::Test {
protected:
    MprisControlsTest() {
        playing_.track = 3;
        playing_.title = "A Song";
        playing_.artist = "A Singer";
        playing_.url = "file:///a/song.mp3";
        playing_.duration = 200;
        playing_.state = host::NowPlaying::State::Playing;
        playing_.canGoNext = playing_.canPlay = true;
        playing_.volume = 0.5F;
    }
    /// The answer as text, or "error".
    std::string ask(const char* destination, const char* path, const char* interface,
                    const char* method, GVariant* arguments) {
        std::string answer;
        callAsync(
            [&](GAsyncResult* result) {
                GVariant* value = g_dbus_connection_call_finish(bus_.connection(), result, nullptr);
                answer = value ? printed(value) : "error";
            },
            g_dbus_connection_call, bus_.connection(), destination, path, interface, method,
            arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, 5000, nullptr);
        EXPECT_TRUE(turnUntil([&] { return !answer.empty(); }, 6));
        return answer;
    }
    std::string call(const char* method, GVariant* arguments = nullptr) {
        return ask(kMprisBusName, kMprisPath, kMprisPlayer, method, arguments);
    }
    std::string properties(const char* interface) {
        return ask(kMprisBusName, kMprisPath, "org.freedesktop.DBus.Properties", "GetAll",
                   g_variant_new("(s)", interface));
    }
    std::string set(const char* name, GVariant* value) {
        return ask(kMprisBusName, kMprisPath, "org.freedesktop.DBus.Properties", "Set",
                   g_variant_new("(ssv)", kMprisPlayer, name, value));
    }
    bool isOnBus() {
        return ask("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "NameHasOwner",
                   g_variant_new("(s)", kMprisBusName)) == "(true,)";
    }
    void appear() {
        controls_->setClient(&client_);
        controls_->setNowPlaying(playing_);
        ASSERT_TRUE(turnUntil([this] { return isOnBus(); }, 6));
    }

    TestBus bus_;
    std::unique_ptr<MprisControls> controls_ = std::make_unique<MprisControls>(
        [](const std::string& url) { return "file:///device" + url.substr(7); }, bus_.address());
    RecordingClient client_;
    host::NowPlaying playing_;
};

TEST_F(MprisControlsTest, ThePlayerIsOnTheBusOnlyWhileItHasAClient) {
    EXPECT_FALSE(isOnBus());
    appear();
    controls_->setClient(nullptr);
    EXPECT_TRUE(turnUntil([this] { return !isOnBus(); }, 6));
    appear();
}

TEST_F(MprisControlsTest, ItsPropertiesCanBeRead) {
    appear();
    EXPECT_EQ(properties(kMprisRoot),
              "({'CanQuit': <false>, 'CanRaise': <false>, 'HasTrackList': <false>, "
              "'Identity': <'Vistrel'>, 'DesktopEntry': <'org.vistrel.Vistrel'>, "
              "'SupportedUriSchemes': <@as []>, 'SupportedMimeTypes': <@as []>},)");
    EXPECT_EQ(properties(kMprisPlayer),
              "({'PlaybackStatus': <'Playing'>, 'LoopStatus': <'None'>, 'Shuffle': <false>, "
              "'Rate': <1.0>, 'MinimumRate': <1.0>, 'MaximumRate': <1.0>, "
              "'Metadata': <{'mpris:trackid': <objectpath '/org/vistrel/Vistrel/track/3'>, "
              "'mpris:length': <int64 200000000>, 'xesam:title': <'A Song'>, "
              "'xesam:url': <'file:///device/a/song.mp3'>, 'xesam:artist': <['A Singer']>}>, "
              "'Volume': <0.5>, 'Position': <int64 12500000>, 'CanGoNext': <true>, "
              "'CanGoPrevious': <false>, 'CanPlay': <true>, 'CanPause': <true>, "
              "'CanSeek': <true>, 'CanControl': <true>},)");

    playing_ = {};
    playing_.title = "bad \xFF bytes";
    playing_.album = "An Album";
    playing_.url = "file:///b";
    playing_.artUrl = "file:///cover.png";
    playing_.loop = host::NowPlaying::Loop::Queue;
    playing_.shuffle = true;
    controls_->setNowPlaying(playing_);
    EXPECT_THAT(properties(kMprisPlayer),
                StartsWith("({'PlaybackStatus': <'Stopped'>, 'LoopStatus': <'Playlist'>, "
                           "'Shuffle': <true>, 'Rate': <1.0>, 'MinimumRate': <1.0>, "
                           "'MaximumRate': <1.0>, 'Metadata': <{"
                           "'mpris:trackid': <objectpath '/org/vistrel/Vistrel/track/0'>, "
                           "'xesam:title': <'bad \xEF\xBF\xBD bytes'>, "
                           "'xesam:album': <'An Album'>, 'xesam:url': <'file:///device/b'>, "
                           "'mpris:artUrl': <'file:///cover.png'>}>, "));
}

TEST_F(MprisControlsTest, EveryMethodAndPropertyReachesThePlayer) {
    appear();
    const char* track = "/org/vistrel/Vistrel/track/3";
    for (const char* method : {"Next", "Previous", "PlayPause", "Play", "Pause", "Stop"})
        call(method);
    for (const gint64 offset : {5'000'000, -60'000'000, 900'000'000})
        call("Seek", g_variant_new("(x)", offset));
    call("SetPosition", g_variant_new("(ox)", track, gint64{70500000}));
    EXPECT_THAT(client_.asked, ElementsAre("next", "previous", "pause", "play", "pause", "stop",
                                           "seek 17500", "seek 0", "next", "seek 70500"));
    client_.asked.clear();
    call("SetPosition", g_variant_new("(ox)", "/org/vistrel/Vistrel/track/2", gint64{1}));
    call("SetPosition", g_variant_new("(ox)", track, gint64{-1}));
    call("SetPosition", g_variant_new("(ox)", track, gint64{200000001}));
    EXPECT_EQ(call("NoSuchThing"), "error");
    playing_.canPlay = false;
    controls_->setNowPlaying(playing_);
    call("Seek", g_variant_new("(x)", gint64{900'000'000}));
    EXPECT_THAT(client_.asked, IsEmpty());

    playing_.state = host::NowPlaying::State::Paused;
    controls_->setNowPlaying(playing_);
    call("PlayPause");
    set("Volume", g_variant_new_double(7));
    for (const char* loop : {"Track", "Playlist", "None", "Sideways"})
        set("LoopStatus", g_variant_new_string(loop));
    set("Shuffle", g_variant_new_boolean(TRUE));
    set("Shuffle", g_variant_new_boolean(FALSE));
    EXPECT_EQ(set("Rate", g_variant_new_double(2)), "error");
    EXPECT_THAT(client_.asked, ElementsAre("play", "volume 100", "loop 1", "loop 2", "loop 0",
                                           "shuffle", "no shuffle"));
}

TEST_F(MprisControlsTest, OnlyChangesAreAnnouncedAndOnlyOnce) {
    appear();
    std::vector<std::string> told;
    const guint subscription = g_dbus_connection_signal_subscribe(
        bus_.connection(), nullptr, nullptr, nullptr, kMprisPath, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, const char*, const char* signal,
           GVariant* arguments, gpointer data) {
            static_cast<std::vector<std::string>*>(data)->push_back(
                signal + printed(g_variant_ref(arguments)));
        },
        &told, nullptr);
    isOnBus(); // the subscription has reached the bus with this answer
    playing_.state = host::NowPlaying::State::Paused;
    controls_->setNowPlaying(playing_);
    controls_->setNowPlaying(playing_);
    controls_->positionJumped(1.5);
    ASSERT_TRUE(turnUntil([&] { return told.size() >= 2; }, 6));
    turnFor(0.05);
    EXPECT_THAT(told, ElementsAre("PropertiesChanged('org.mpris.MediaPlayer2.Player', "
                                  "{'PlaybackStatus': <'Paused'>}, @as [])",
                                  "Seeked(int64 1500000,)"));
    g_dbus_connection_signal_unsubscribe(bus_.connection(), subscription);
}

TEST(MprisWithoutBusTest, NothingHappensWithoutABus) {
    MprisControls controls([](const std::string& url) { return url; },
                           "unix:path=/nonexistent/bus");
    RecordingClient client;
    controls.setClient(&client);
    controls.setNowPlaying({});
    controls.positionJumped(1);
    controls.setClient(nullptr);
    EXPECT_THAT(client.asked, IsEmpty());
}

}
}
