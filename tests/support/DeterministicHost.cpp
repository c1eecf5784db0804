#include "tests/support/DeterministicHost.h"

namespace vistrel::support {

DeterministicHost::DeterministicHost()
    : files([this] { return loop.wallClock(); })
    , network(loop)
    , webEngine(loop)
    , media(loop)
    , desktop(loop)
    , display(loop) {
    host.loop = &loop;
    host.files = &files;
    host.network = &network;
    host.webEngine = &webEngine;
    host.media = &media;
    host.preferences = &preferences;
    host.desktop = &desktop;
    host.mediaControls = &mediaControls;
    host.device = &device;
    host.display = &display;
    host.crypto = &crypto;
    host.log = [this](const std::string& line) {
        logLines.push_back(line);
    };
    host.translate = [this](const std::string& key) {
        const auto found = translations.find(key);
        return found == translations.end() ? std::string() : found->second;
    };
    host.setting = [this](const std::string& group,
                          const std::string& key) -> std::optional<std::string> {
        const auto found = settings.find(group + "/" + key);
        if (found == settings.end())
            return std::nullopt;
        return found->second;
    };
    host::install(&host);
}

DeterministicHost::~DeterministicHost() {
    loop.clear();
    host::install(nullptr);
}

}
