#include "ads/Network/GADNetworkChecker.h"
#include "ads/Request/GADRequestPrivate.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Utility/GADDeviceEnvironment.h"
#include "ads/json/GAD_ZelJSON.h"
#include "bench/Bench.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/host/Host.h"
#include "platform/linux/crypto/LibraryCrypto.h"
#include "platform/linux/loop/GLibEventLoop.h"
#include "platform/linux/network/CurlNetwork.h"
#include "platform/linux/preferences/PlistPreferences.h"

#include <cstdio>
#include <filesystem>

namespace vistrel {
namespace {
/// A device whose properties cost nothing.
class FixedDevice : public GADDeviceEnvironment {
public:
    std::string model() override { return "iPhone"; }
    std::string machine() override { return "iPhone3,1"; }
    std::string systemVersion() override { return "4.3.5"; }
    std::string uniqueIdentifier() override { return "0123456789abcdef0123456789abcdef01234567"; }
    std::vector<std::string> languages() override { return {"en-GB"}; }
    bool canOpenURL(const std::string& url) override { return url.starts_with("kindle"); }
    std::optional<std::string> audioRoute() override { return "Speaker"; }
    std::string bundleVersion() override { return "1.0"; }
    std::string bundleIdentifier() override { return "org.vistrel.Vistrel"; }
    std::optional<GADInterfaceIdiom> userInterfaceIdiom() override {
        return GADInterfaceIdiom::Phone;
    }
    std::optional<float> screenScale() override { return 2.0F; }
    GADScreenFrames screenFrames() override { return {}; }
    GADInterfaceOrientation statusBarOrientation() override {
        return GADInterfaceOrientation::Portrait;
    }
};

/// What the library needs from this machine.
class Machine {
public:
    Machine() {
        host_.loop = &loop_;
        host_.network = &network_;
        host_.preferences = &preferences_;
        host_.crypto = &crypto_;
        host_.log = [](const std::string&) {
        };
        host::install(&host_);
        GADDeviceEnvironment::install(std::make_shared<FixedDevice>());
    }
    ~Machine() {
        GADStatistics::releaseSharedStatistics();
        GADNetworkChecker::releaseSharedChecker();
        NSUserDefaults::resetStandardUserDefaults();
        host::install(nullptr);
        std::filesystem::remove(path_);
    }
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    void turn() { loop_.runDueWork(); }

private:
    std::string path_ = std::filesystem::temp_directory_path() / "vistrel-bench-ad-request.plist";
    GLibEventLoop loop_;
    CurlNetwork network_{loop_};
    PlistPreferences preferences_{path_};
    LibraryCrypto crypto_;
    host::Host host_;
};

/// With every hint set, and events counted since the last report.
std::shared_ptr<GADRequestPrivate> fullRequest() {
    auto request = std::static_pointer_cast<GADRequestPrivate>(GADRequest::request());
    request->setTestDevices(std::make_shared<GADRequest::Strings>(
        GADRequest::Strings{"0123456789abcdef0123456789abcdef01234567"}));
    request->setAdditionalParameters(std::make_shared<Value::Dictionary>(
        Value::Dictionary{{"color_bg", "AAAAFF"}, {"color_link", "000080"}, {"q", "cinema"}}));
    request->setGender(GADGender::Female);
    request->setBirthdayWithMonthDayYear(3, 7, 1981);
    request->setKeywords(std::make_shared<GADRequest::Strings>(
        GADRequest::Strings{"movies", "television", "music", "downloads"}));
    request->setLocationWithLatitudeLongitudeAccuracy(51.5F, -0.12F, 30);
    request->setCounter(12);
    return request;
}

void countSomething() {
    GADStatistics& statistics = GADStatistics::sharedStatistics();
    statistics.incrementClickCount();
    statistics.incrementPageNavigationCount();
    statistics.setBreakOutToSafari();
    for (const std::string& name : GADStatistics::allTimingNames())
        statistics.startTimingNamed(name);
}

/// Microseconds for the parameters and their text, best of several rounds.
bool measure() {
    constexpr double mostMicroseconds = 20;
    Machine machine;
    (void)GADNetworkChecker::sharedChecker();
    machine.turn();
    const auto request = fullRequest();
    const GAD_ZelJSON json;
    std::size_t bytes = 0;
    auto build = [&] {
        countSomething();
        auto text = json.stringWithObject(Value(request->parameters())).text;
        bytes = text->size();
        bench::keep(text);
    };
    auto prepare = [&] {
        countSomething();
    };
    const double microseconds = bench::bestSeconds(build) * 1e6;
    const double preparation = bench::bestSeconds(prepare) * 1e6;
    const bool holds = microseconds < mostMicroseconds;
    std::printf("ad-request: %.2f us for %zu bytes of text, of which %.2f us to count clicks and "
                "timings, bound %.0f us %s\n",
                microseconds, bytes, preparation, mostMicroseconds, holds ? "ok" : "short");
    return holds;
}
}
}

int main() {
    return vistrel::measure() ? 0 : 1;
}
