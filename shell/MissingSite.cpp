#include "shell/MissingSite.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSURL.h"
#include "platform/host/Host.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIApplication.h"
#include "settings/Settings.h"

#include <filesystem>
#include <fstream>
#include <memory>

namespace vistrel {

namespace {

void createSettingsFile(const std::filesystem::path& path) {
    std::error_code error;
    if (std::filesystem::exists(path, error))
        return;
    std::filesystem::create_directories(path.parent_path(), error);
    std::ofstream(path) << "# Settings of Vistrel, read when it starts; see vistrel(1).\n"
                           "[site]\n"
                           "# Scheme and host of the content site.\n"
                           "#base-url=http://films.example\n";
}

/// Opens the settings file in the user's editor, or shows its path.
class SettingsOffer : public UIAlertViewDelegate {
public:
    void alertViewClickedButtonAtIndex(UIAlertView&, int buttonIndex) override {
        if (buttonIndex == 0)
            return;
        const std::string& path = host::current().settingsFile;
        createSettingsFile(path);
        const auto url = NSURL::fileURLWithPath(path);
        if (!UIApplication::sharedApplication().openURL(url))
            UIAlertView::withTitle(NSLocalizedString("Settings"), path, {}, NSLocalizedString("OK"))
                ->show();
    }
};

}

void remindOfMissingSite() {
    const std::string site = settingValue(kContentSiteBaseURL);
    if (!site.empty() && site != kContentSiteBaseURL.defaultValue)
        return;
    static const auto offer = std::make_shared<SettingsOffer>();
    UIAlertView::withTitle(
        NSLocalizedString("No content site"),
        NSLocalizedString("Shows, movies and music come from a site that is not set yet."), offer,
        NSLocalizedString("Later"), {NSLocalizedString("Set Site")})
        ->show();
}

}
