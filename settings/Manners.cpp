#include "settings/Manners.h"

#include "settings/Settings.h"

namespace vistrel {

Manners Manners::careful() {
    return {.watchesPagesAgain = true,
            .confirmsDownloads = true,
            .refusesErrorAnswers = true,
            .keepsExistingFiles = true,
            .retriesDownloads = true,
            .keepsVolume = true,
            .remembersPositions = true};
}

Manners manners() {
    return settingValue(kCarefulManners) == "yes" ? Manners::careful() : Manners();
}

}
