#include "platform/linux/main/LinuxHost.h"

#include "platform/foundation/FinalAddress.h"
#include "platform/foundation/NSURLCredentialStorage.h"
#include "platform/linux/files/DeviceRoot.h"
#include "platform/linux/files/StrayFiles.h"

#include <cstdio>
#include <libintl.h>

namespace vistrel {

namespace {

constexpr const char* kTextDomain = "vistrel";
constexpr const char* kPreferencesPath =
    "/var/mobile/Library/Preferences/org.vistrel.Vistrel.plist";

void writeLog(const std::string& line) {
    std::fprintf(stderr, "%s\n", line.c_str());
}

std::string translate(const std::string& key) {
    if (key.empty())
        return {};
    const char* text = dgettext(kTextDomain, key.c_str());
    return text == key.c_str() ? std::string() : std::string(text);
}

/// Where folders cannot be made, the application works on whatever is there.
std::string preparedRoot(const std::string& root) {
    if (const auto made = prepareDeviceRoot(root); !made.ok())
        writeLog("The device's files cannot be kept in " + root + ": " + made.failure().message);
    return root;
}

}

LinuxHost::LinuxHost(const std::string& deviceRoot)
    : paths_(ProgramPaths::find())
    , settings_(paths_.settingsFile)
    , root_(preparedRoot(deviceRoot))
    , files_(root_)
    , network_(loop_, writeLog)
    , preferences_(files_.machinePath(kPreferencesPath))
    , mail_(
          loop_, files_,
          [this](const std::string& group, const std::string& key) {
              return settings_.value(group, key);
          },
          writeLog)
    , desktop_(std::make_shared<GioDesktop>(mail_))
    , webEngine_(webEngineSetup())
    , media_(mediaSetup())
    , mediaControls_([this](const std::string& url) { return machineAddress(url); }) {
    bindtextdomain(kTextDomain, paths_.translations.c_str());
    bind_textdomain_codeset(kTextDomain, "UTF-8");

    host_.loop = &loop_;
    host_.files = &files_;
    host_.network = &network_;
    host_.webEngine = &webEngine_;
    host_.media = &media_;
    host_.mediaControls = &mediaControls_;
    host_.preferences = &preferences_;
    host_.desktop = desktop_.get();
    host_.device = &device_;
    host_.crypto = &crypto_;
    host_.log = writeLog;
    host_.translate = translate;
    host_.setting = [this](const std::string& group, const std::string& key) {
        return settings_.value(group, key);
    };
    host_.settingsFile = paths_.settingsFile;
    host_.resourcePath = paths_.resources;
    host::install(&host_);
    strayFilesRemoval_ =
        std::jthread([root = root_](const std::stop_token& stop) { removeStrayFiles(root, stop); });
    if (!settings_.complaint().empty())
        writeLog(settings_.complaint());
}

LinuxHost::~LinuxHost() {
    host::install(nullptr);
}

std::string LinuxHost::machineAddress(const std::string& url) const {
    const auto parsed = NSURL::URLWithString(url);
    if (!parsed || !parsed->isFileURL())
        return url;
    return NSURL::fileURLWithPath(files_.machinePath(parsed->path())).absoluteString();
}

WebEngineSetup LinuxHost::webEngineSetup() {
    WebEngineSetup setup;
    setup.dataDirectory = files_.machinePath("/var/mobile/Library/WebKit");
    setup.cacheDirectory = files_.machinePath("/var/mobile/Library/Caches/WebKit");
    setup.cookieJar = [this] {
        return network_.cookieJar();
    };
    setup.log = writeLog;
    return setup;
}

MediaSetup LinuxHost::mediaSetup() {
    MediaSetup setup;
    setup.cookieJar = [this] {
        return network_.cookieJar();
    };
    setup.credential = [](const std::string& address) -> std::optional<StreamCredential> {
        const auto url = NSURL::URLWithString(address);
        const auto& storage = NSURLCredentialStorage::sharedCredentialStorage();
        const auto* known = url ? storage.credentialForURL(*url) : nullptr;
        if (!known)
            return std::nullopt;
        return StreamCredential{known->user, known->password};
    };
    setup.followRedirects = [](const std::string& address,
                               const std::function<void(const std::string&)>& found) {
        const auto url = NSURL::URLWithString(address);
        if (!url)
            return found({});
        findFinalAddress(
            *url,
            [found](const std::optional<NSURL>& final) {
                found(final ? final->absoluteString() : std::string());
            });
    };
    setup.machinePath = [this](const std::string& path) {
        return files_.machinePath(path);
    };
    setup.log = writeLog;
    return setup;
}

}
