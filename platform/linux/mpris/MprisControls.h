#pragma once
#include "platform/host/MediaControls.h"

#include <functional>
#include <string>

using GDBusConnection = struct _GDBusConnection;
using GDBusMethodInvocation = struct _GDBusMethodInvocation;
using GVariant = struct _GVariant;

namespace vistrel {

/// The music or movie player on the session's bus, as the MPRIS interface (version 2.2) describes
/// one. The name is owned only while there is a client. Without a session bus nothing happens.
class MprisControls : public host::MediaControls {
public:
    /// Turns an address of the application into one that other programs can open.
    using MachineAddress = std::function<std::string(const std::string& url)>;

    /// `busAddress` empty: the session's bus.
    explicit MprisControls(MachineAddress machineAddress, std::string busAddress = {});
    ~MprisControls() override;
    MprisControls(const MprisControls&) = delete;
    MprisControls& operator=(const MprisControls&) = delete;

    void setClient(host::MediaControlsClient* client) override;
    void setNowPlaying(const host::NowPlaying& nowPlaying) override;
    void positionJumped(double seconds) override;

private:
    struct Calls;

    void appear();
    void disappear();
    bool connect();
    void emit(const char* interface, const char* signal, GVariant* arguments) const;
    void call(const std::string& method, GVariant* arguments) const;
    void seekTo(double seconds) const;
    GVariant* property(const std::string& name) const;
    void setProperty(const std::string& name, GVariant* value) const;
    void propertiesChanged(const host::NowPlaying& before) const;

    MachineAddress machineAddress_;
    std::string busAddress_;
    GDBusConnection* connection_ = nullptr;
    bool tried_ = false;
    unsigned rootRegistration_ = 0;
    unsigned playerRegistration_ = 0;
    unsigned nameOwner_ = 0;
    host::MediaControlsClient* client_ = nullptr;
    host::NowPlaying nowPlaying_;
};

}
