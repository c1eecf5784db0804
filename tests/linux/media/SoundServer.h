#pragma once
#include "platform/linux/NativeReference.h"
#include "tests/linux/MainLoop.h"
#include "tests/support/TemporaryFolder.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace vistrel {

/// A program that runs until it is destroyed.
class Program {
public:
    explicit Program(const std::string& command)
        : process_(NativeReference<GSubprocess>::adopt(
              g_subprocess_new(GSubprocessFlags(G_SUBPROCESS_FLAGS_STDOUT_SILENCE |
                                                G_SUBPROCESS_FLAGS_STDERR_SILENCE),
                               nullptr, "/bin/sh", "-c", ("exec " + command).c_str(), nullptr))) {}
    ~Program() {
        g_subprocess_send_signal(process_.get(), SIGTERM);
        g_subprocess_wait(process_.get(), nullptr, nullptr);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

private:
    NativeReference<GSubprocess> process_;
};

/// A sound server with a silent device that silences music during calls; the players use it.
class SoundServer {
public:
    SoundServer() {
        const std::string socket = folder_.path("sound");
        setenv("PULSE_SERVER", ("unix:" + socket).c_str(), 1);
        EXPECT_TRUE(turnUntil([&] { return std::filesystem::exists(socket); }, 10));
    }
    ~SoundServer() { unsetenv("PULSE_SERVER"); }
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

private:
    support::TemporaryFolder folder_;
    Program server_{"env HOME=" + folder_.path() + " XDG_RUNTIME_DIR=" + folder_.path() +
                    " pulseaudio -n --daemonize=no --exit-idle-time=-1 --disable-shm=yes"
                    " -L 'module-native-protocol-unix auth-anonymous=1 socket=" +
                    folder_.path("sound") + "' -L module-null-sink -L module-role-cork"};
};

}
