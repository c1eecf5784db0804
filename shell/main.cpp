#include "ads/GADServer.h"
#include "platform/foundation/NSURL.h"
#include "platform/uikit/UIApplicationDelegate.h"
#include "platform/uikit/UIApplicationMain.h"
#include "settings/Settings.h"
#include "settings/SettingsCheck.h"
#include "shell/CommandLine.h"
#include "shell/MainInterface.h"
#include "shell/MissingSite.h"
#include "shell/Version.h"
#include "tour/GuidedTour.h"

#include <cstdio>
#include <memory>
#include <unistd.h>

using namespace vistrel;

int main(int argc, char* argv[]) {
    // The device's applications request it; a refusal does not matter.
    [[maybe_unused]] const int ignored = setuid(0);

    const CommandLine line =
        CommandLine::parse({argv + 1, static_cast<std::size_t>(argc > 0 ? argc - 1 : 0)});
    switch (line.action) {
    case CommandLine::Action::ShowHelp:
        std::fputs(CommandLine::helpText().c_str(), stdout);
        return 0;
    case CommandLine::Action::ShowVersion:
        std::printf("vistrel %s\n", kVersion);
        return 0;
    case CommandLine::Action::Refuse:
        std::fprintf(stderr, "vistrel: %s; try 'vistrel --help'\n", line.refusal.c_str());
        return 2;
    case CommandLine::Action::Run:
        break;
    }

    if (!line.site.empty())
        overrideSetting(kContentSiteBaseURL, line.site);
    if (const auto adServer = NSURL::URLWithString(line.adServer))
        useGADServer(*adServer);
    if (line.careful)
        overrideSetting(kCarefulManners, "yes");
    UILaunchOptions options;
    options.deviceRoot = line.deviceRoot;
    options.scale = line.scale;
    options.openAddress = line.openAddress;
    options.serveToBrowser = line.serveToBrowser;
    std::unique_ptr<GuidedTour> tour;
    if (!line.tourDirectory.empty()) {
        // The tour creates and deletes files, so it gets a separate device unless one is given.
        if (options.deviceRoot.empty())
            options.deviceRoot = line.tourDirectory + "/device";
        tour = std::make_unique<GuidedTour>(line.tourDirectory);
        options.didLaunch = [&tour] {
            tour->start();
        };
    } else {
        options.didLaunch = remindOfMissingSite;
    }
    return UIApplicationMain(argc, argv, options, [] {
        reportSettingMistakes();
        return makeMainInterface();
    });
}
