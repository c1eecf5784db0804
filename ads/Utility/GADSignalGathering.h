#pragma once
#include "platform/foundation/NSURL.h"

#include <memory>
#include <optional>
#include <string>

namespace vistrel {

/// Gathers signals about the device and its use for ad requests and clicks. This class gathers
/// nothing; the library calls it wherever a subclass could contribute.
class GADSignalGathering {
public:
    virtual ~GADSignalGathering() = default;

    static GADSignalGathering& shared();
    /// Null restores the default, which gathers nothing.
    static void setShared(std::shared_ptr<GADSignalGathering> gathering);

    /// The address with the signals of the ad that it names, if there are any.
    NSURL urlWithClickSignals(const NSURL& url);

    /// A text of the form key=value for the next ad request.
    virtual std::optional<std::string> requestSignals();
    /// What to append to a click's address, given the ad's identifier in it.
    virtual std::optional<std::string> clickSignals(const std::string& adIdentifier);
    /// Where and how long an ad page was touched; -1 for values that the page did not give.
    virtual void addTouch(int x, int y, int duration);
    /// The kind of request that the script built, and who asked for it.
    virtual void setRequestTypeSDKVersion(int requestType, const std::string& sdkVersion);
};

}
