#pragma once
#include <functional>
#include <optional>
#include <string>

namespace vistrel::host {

class EventLoop;
class Files;
class Network;
class WebEngine;
class Media;
class MediaControls;
class Preferences;
class Desktop;
class Device;
class Display;
class Crypto;

/// Everything that the layer needs from the outside world. Services are never null once installed.
struct Host {
    EventLoop* loop = nullptr;
    Files* files = nullptr;
    Network* network = nullptr;
    WebEngine* webEngine = nullptr;
    Media* media = nullptr;
    Preferences* preferences = nullptr;
    Desktop* desktop = nullptr;
    Device* device = nullptr;
    Display* display = nullptr;
    Crypto* crypto = nullptr;
    /// Null where the desktop has none.
    MediaControls* mediaControls = nullptr;
    /// Writes one line to the device log.
    std::function<void(const std::string& line)> log;
    /// The translation of `key`, or an empty string when there is none.
    std::function<std::string(const std::string& key)> translate;
    /// A value of the settings file, by group and key; nothing when it is not set there.
    std::function<std::optional<std::string>(const std::string& group, const std::string& key)>
        setting;
    /// Machine path of the settings file, which may be missing.
    std::string settingsFile;
    /// Machine directory of the application's resources.
    std::string resourcePath;
};

/// The host that this process runs on. Installed once before anything else is used; tests install
/// theirs.
Host& current();
bool isInstalled();
/// Null removes the installed host.
void install(Host* host);

}
