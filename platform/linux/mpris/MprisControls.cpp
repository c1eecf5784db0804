#include "platform/linux/mpris/MprisControls.h"

#include "platform/linux/mpris/MprisInterface.h"
#include "platform/linux/mpris/MprisValues.h"

#include <gio/gio.h>

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {

GDBusInterfaceInfo* interfaceNamed(const char* name) {
    static GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(kMprisDescription, nullptr);
    return g_dbus_node_info_lookup_interface(node, name);
}

GVariant* rootProperty(const std::string& name) {
    if (name == "Identity")
        return g_variant_new_string("Vistrel");
    if (name == "DesktopEntry")
        return g_variant_new_string("org.vistrel.Vistrel");
    if (name == "SupportedUriSchemes" || name == "SupportedMimeTypes")
        return g_variant_new_strv(nullptr, 0);
    return g_variant_new_boolean(FALSE); // CanQuit, CanRaise, HasTrackList
}

}

/// The bus's calls on their way into the object.
struct MprisControls::Calls {
    static void method(GDBusConnection*, const char*, const char*, const char* interface,
                       const char* name, GVariant* arguments, GDBusMethodInvocation* invocation,
                       gpointer self) {
        if (g_str_equal(interface, kMprisPlayer))
            static_cast<MprisControls*>(self)->call(name, arguments);
        g_dbus_method_invocation_return_value(invocation, nullptr);
    }
    static GVariant* get(GDBusConnection*, const char*, const char*, const char* interface,
                         const char* name, GError**, gpointer self) {
        return g_str_equal(interface, kMprisRoot)
                   ? rootProperty(name)
                   : static_cast<MprisControls*>(self)->property(name);
    }
    static gboolean set(GDBusConnection*, const char*, const char*, const char*, const char* name,
                        GVariant* value, GError**, gpointer self) {
        static_cast<MprisControls*>(self)->setProperty(name, value);
        return TRUE;
    }
    static constexpr GDBusInterfaceVTable table{method, get, set, {}};
};

MprisControls::MprisControls(MachineAddress machineAddress, std::string busAddress)
    : machineAddress_(std::move(machineAddress))
    , busAddress_(std::move(busAddress)) {}

MprisControls::~MprisControls() {
    disappear();
    if (connection_)
        g_object_unref(connection_);
}

bool MprisControls::connect() {
    if (std::exchange(tried_, true))
        return connection_ != nullptr;
    if (busAddress_.empty()) {
        connection_ = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
    } else {
        constexpr auto kFlags =
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        connection_ = g_dbus_connection_new_for_address_sync(busAddress_.c_str(), kFlags, nullptr,
                                                             nullptr, nullptr);
    }
    if (connection_)
        g_dbus_connection_set_exit_on_close(connection_, FALSE);
    return connection_ != nullptr;
}

void MprisControls::setClient(host::MediaControlsClient* client) {
    client_ = client;
    nowPlaying_ = {};
    if (client_)
        appear();
    else
        disappear();
}

void MprisControls::appear() {
    if (nameOwner_ != 0 || !connect())
        return;
    const auto offer = [this](const char* interface) {
        return g_dbus_connection_register_object(connection_, kMprisPath, interfaceNamed(interface),
                                                 &Calls::table, this, nullptr, nullptr);
    };
    rootRegistration_ = offer(kMprisRoot);
    playerRegistration_ = offer(kMprisPlayer);
    // A second program that runs at the same time waits in line for the name.
    nameOwner_ =
        g_bus_own_name_on_connection(connection_, kMprisBusName, G_BUS_NAME_OWNER_FLAGS_NONE,
                                     nullptr, nullptr, nullptr, nullptr);
}

void MprisControls::disappear() {
    if (nameOwner_ == 0)
        return;
    g_bus_unown_name(std::exchange(nameOwner_, 0U));
    g_dbus_connection_unregister_object(connection_, std::exchange(rootRegistration_, 0U));
    g_dbus_connection_unregister_object(connection_, std::exchange(playerRegistration_, 0U));
}

void MprisControls::call(const std::string& method, GVariant* arguments) const {
    if (!client_)
        return;
    const bool isPlaying = nowPlaying_.state == host::NowPlaying::State::Playing;
    if (method == "Next")
        client_->mediaNext();
    else if (method == "Previous")
        client_->mediaPrevious();
    else if (method == "Play" || (method == "PlayPause" && !isPlaying))
        client_->mediaPlay();
    else if (method == "Pause" || method == "PlayPause")
        client_->mediaPause();
    else if (method == "Stop")
        client_->mediaStop();
    if (method == "Seek") {
        gint64 offset = 0;
        g_variant_get(arguments, "(x)", &offset);
        seekTo(client_->mediaPosition() + MprisValues::seconds(offset));
    } else if (method == "SetPosition") {
        const char* track = nullptr;
        gint64 position = 0;
        g_variant_get(arguments, "(&ox)", &track, &position);
        // One that was meant for another track, or lies outside of it, is ignored.
        const double seconds = MprisValues::seconds(position);
        if (track == MprisValues::trackPath(nowPlaying_) && seconds >= 0 &&
            seconds <= nowPlaying_.duration)
            client_->mediaSeek(seconds);
    }
}

void MprisControls::setProperty(const std::string& name, GVariant* value) const {
    if (!client_)
        return;
    if (name == "Volume") {
        client_->mediaSetVolume(
            static_cast<float>(std::clamp(g_variant_get_double(value), 0.0, 1.0)));
    } else if (name == "Shuffle") {
        client_->mediaSetShuffle(g_variant_get_boolean(value) != FALSE);
    } else if (name == "LoopStatus") {
        if (const auto loop = MprisValues::loopFrom(g_variant_get_string(value, nullptr)))
            client_->mediaSetLoop(*loop);
    }
}

/// Past the end means the next track, unless there is nothing to seek in.
void MprisControls::seekTo(double seconds) const {
    if (!nowPlaying_.canPlay)
        return;
    if (seconds > nowPlaying_.duration)
        client_->mediaNext();
    else
        client_->mediaSeek(std::max(seconds, 0.0));
}

GVariant* MprisControls::property(const std::string& name) const {
    if (name == "PlaybackStatus")
        return g_variant_new_string(MprisValues::playbackStatus(nowPlaying_));
    if (name == "Metadata")
        return MprisValues::metadata(nowPlaying_, machineAddress_(nowPlaying_.url));
    if (name == "Volume")
        return g_variant_new_double(static_cast<double>(nowPlaying_.volume));
    if (name == "LoopStatus")
        return g_variant_new_string(MprisValues::loopStatus(nowPlaying_.loop));
    if (name == "Shuffle")
        return g_variant_new_boolean(static_cast<gboolean>(nowPlaying_.shuffle));
    if (name == "Position")
        return g_variant_new_int64(
            MprisValues::microseconds(client_ ? client_->mediaPosition() : 0));
    if (name == "Rate" || name == "MinimumRate" || name == "MaximumRate")
        return g_variant_new_double(1);
    if (name == "CanGoNext")
        return g_variant_new_boolean(nowPlaying_.canGoNext);
    if (name == "CanGoPrevious")
        return g_variant_new_boolean(nowPlaying_.canGoPrevious);
    if (name == "CanControl")
        return g_variant_new_boolean(TRUE);
    return g_variant_new_boolean(nowPlaying_.canPlay); // CanPlay, CanPause, CanSeek
}

void MprisControls::setNowPlaying(const host::NowPlaying& nowPlaying) {
    if (nowPlaying == nowPlaying_)
        return;
    const auto before = std::exchange(nowPlaying_, nowPlaying);
    if (nameOwner_ != 0)
        propertiesChanged(before);
}

void MprisControls::propertiesChanged(const host::NowPlaying& before) const {
    GVariantBuilder changed;
    g_variant_builder_init(&changed, G_VARIANT_TYPE_VARDICT);
    const auto add = [&](const char* name, bool differs) {
        if (differs)
            g_variant_builder_add(&changed, "{sv}", name, property(name));
    };
    const auto& now = nowPlaying_;
    add("PlaybackStatus", before.state != now.state);
    add("Metadata", before.track != now.track || before.url != now.url ||
                        before.title != now.title || before.artist != now.artist ||
                        before.album != now.album || before.duration != now.duration ||
                        before.artUrl != now.artUrl);
    add("Volume", before.volume != now.volume);
    add("LoopStatus", before.loop != now.loop);
    add("Shuffle", before.shuffle != now.shuffle);
    add("CanGoNext", before.canGoNext != now.canGoNext);
    add("CanGoPrevious", before.canGoPrevious != now.canGoPrevious);
    for (const char* name : {"CanPlay", "CanPause", "CanSeek"})
        add(name, before.canPlay != now.canPlay);
    emit("org.freedesktop.DBus.Properties", "PropertiesChanged",
         g_variant_new("(sa{sv}as)", kMprisPlayer, &changed, nullptr));
}

void MprisControls::positionJumped(double seconds) {
    if (nameOwner_ != 0)
        emit(kMprisPlayer, "Seeked", g_variant_new("(x)", MprisValues::microseconds(seconds)));
}

void MprisControls::emit(const char* interface, const char* signal, GVariant* arguments) const {
    g_dbus_connection_emit_signal(connection_, nullptr, kMprisPath, interface, signal, arguments,
                                  nullptr);
}

}
