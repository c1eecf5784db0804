#include "ads/Utility/GADSignalGathering.h"

#include "ads/Network/GADNetworkUtilities.h"

#include <utility>

namespace vistrel {

namespace {
std::shared_ptr<GADSignalGathering>& installed() {
    static std::shared_ptr<GADSignalGathering> gathering = std::make_shared<GADSignalGathering>();
    return gathering;
}
}

GADSignalGathering& GADSignalGathering::shared() {
    return *installed();
}

void GADSignalGathering::setShared(std::shared_ptr<GADSignalGathering> gathering) {
    installed() = gathering ? std::move(gathering) : std::make_shared<GADSignalGathering>();
}

NSURL GADSignalGathering::urlWithClickSignals(const NSURL& url) {
    const auto ad = GADNetworkUtilities::parameterValueForKeyFromURL("ai", url);
    const auto signals = ad && !ad->empty() ? clickSignals(*ad) : std::nullopt;
    if (!signals || signals->empty())
        return url;
    return GADNetworkUtilities::appendQueryKeyValueToURL(*signals, std::nullopt, url).value_or(url);
}

std::optional<std::string> GADSignalGathering::requestSignals() {
    return std::nullopt;
}

std::optional<std::string> GADSignalGathering::clickSignals(const std::string&) {
    return std::nullopt;
}

void GADSignalGathering::addTouch(int, int, int) {}

void GADSignalGathering::setRequestTypeSDKVersion(int, const std::string&) {}

}
