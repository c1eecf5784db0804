#include "ads/GADSettings.h"
#include "ads/Network/GADNetworkUtilities.h"
#include "ads/Object/GADAdHeaders.h"
#include "ads/Object/GADBuildPage.h"
#include "ads/Object/GADObjectPrivate.h"
#include "ads/Object/GADRefreshTimer.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Utility/GADSignalGathering.h"
#include "ads/Utility/GADTextUtilities.h"
#include "ads/Utility/GADTextualDescription.h"
#include "ads/View/GADBannerView.h"
#include "ads/View/GADWebView.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/foundation/Trimmed.h"
#include "platform/foundation/Weakly.h"

#include <algorithm>
#include <iterator>

namespace vistrel {

namespace {

constexpr const char* kScriptStore = "GADObjectPrivate";
constexpr const char* kScriptExpiry = "expireDate";
constexpr double kScriptLifetime = 86400;

/// The address of the request-building script; nothing when no server is configured.
std::optional<NSURL> scriptURL(const std::string& path) {
    const std::string host = gadSettingValue(kGADStaticContentHost);
    return host.empty() ? std::nullopt : NSURL::URLWithString("http://" + host + path);
}

Value::Dictionary rectangle(const CGRect& rect) {
    return {{"x", rect.origin.x},
            {"y", rect.origin.y},
            {"w", rect.size.width},
            {"h", rect.size.height}};
}

/// The request type whose servers number the requests of a sequence.
constexpr const char* kSequencedRequestType = "gwhirl";

}

std::string GADObjectPrivate::jsBuildAdURL() const {
    return "/afma/sdk-core-v40.js";
}

void GADObjectPrivate::ensureSupportFiles() {
    if (!buildAdJS_) {
        setState(GADAdState::FetchingScript);
        const auto url = scriptURL(jsBuildAdURL());
        if (!url) {
            logMissingServer();
            setState(GADAdState::ScriptFailed);
            reportErrorCode(GADErrorCode::NetworkError);
            return;
        }
        buildAdJS_ =
            GADCachedFile::withDelegateURL(weakReference<GADCachedFileDelegate>(this), *url);
    }
    GADStatisticsCore store(kScriptStore);
    const Value* expires = store.dateForKey(kScriptExpiry);
    const double now = NSRunLoop::wallClock();
    if (expires && expires->dateValue() >= now && !buildAdJS_->content().value_or("").empty()) {
        scriptDownloadDidEnd();
        return;
    }
    store.setDateForKey(Value::date(now + kScriptLifetime), kScriptExpiry);
    store.synchronize();
    setState(GADAdState::FetchingScript);
    buildAdJS_->validate();
}

void GADObjectPrivate::scriptDownloadDidEnd() {
    const std::string script = buildAdJS_->content().value_or("");
    if (script.empty()) {
        setState(GADAdState::ScriptFailed);
        reportErrorCode(GADErrorCode::NetworkError);
        return;
    }
    setState(GADAdState::BuildingRequest);
    buildAdURL(script);
}

void GADObjectPrivate::buildAdURL(const std::string& script) {
    sentParameters_ = parametersOfRequest();
    buildPage_ = std::make_unique<GADBuildPage>(script, sentParameters_,
                                                weakly(this, &GADObjectPrivate::scriptDidAnswer));
}

void GADObjectPrivate::scriptDidAnswer(const NSNotification& answer) {
    buildPage_ = nullptr;
    const Value::Dictionary& parameters = answer.userInfo.dictionary();
    if (answer.name == "loadAdURL")
        scriptDidLoadAdURL(parameters);
    else if (answer.name == "invalidRequest")
        scriptDidRefuse(parameters, "<GAD> Invalid Request: ");
    else
        scriptDidRefuse(parameters, "<GAD> Unable to serve: ");
}

Value::Dictionary GADObjectPrivate::parametersOfRequest() const {
    Value::Dictionary parameters = request_->parameters();
    if (!adUnitID_.empty())
        parameters.set("slotname", adUnitID_);
    if (request_->isInterstitialAd()) {
        parameters.set("format", "interstitial_mb");
        return parameters;
    }
    const auto banner = adView();
    const UIView& view = banner ? static_cast<const UIView&>(*banner) : *webView_;
    parameters.set("ad_frame", rectangle(view.frame()));
    parameters.set("ad_bounds", rectangle(view.bounds()));
    return parameters;
}

void GADObjectPrivate::scriptDidLoadAdURL(const Value::Dictionary& answer) {
    if (answer.contains("errors")) {
        fail(GADErrorCode::InvalidRequest);
        return;
    }
    setState(GADAdState::FetchingAd);
    const std::string type = gadTextForKey("type", answer);
    GADSignalGathering::shared().setRequestTypeSDKVersion(
        static_cast<int>(GADRequest::requestTypeFromString(type)), GADRequest::sdkVersion());
    auto url = NSURL::URLWithString(gadTextForKey("url", answer));
    if (const auto spamSignals = request_->spamSignals(); url && !spamSignals.empty())
        url = GADNetworkUtilities::appendQueryParametersToURL(spamSignals, *url);
    if (url && type == kSequencedRequestType)
        url = GADNetworkUtilities::appendQueryKeyValueToURL("seq_num", "1", *url);
    GADStatistics::sharedStatistics().startTimingNamed("prl");
    fetchAd(std::move(url));
}

void GADObjectPrivate::scriptDidRefuse(const Value::Dictionary& answer, const char* logPrefix) {
    Value::Dictionary said;
    for (const auto& [key, value] : answer)
        said.set(gadLogText(key), gadLogText(value.string()));
    NSLog(logPrefix + gadTextualDescription(said));
    fail(GADErrorCode::InvalidRequest);
}

void GADObjectPrivate::fetchAd(std::optional<NSURL> url) {
    if (!url) {
        replaceAdHTML(nullptr);
        adDownloadDidFail(0);
        return;
    }
    replaceAdHTML(GADCachedFile::withDelegateURL(weakReference<GADCachedFileDelegate>(this), *url));
    adHTML_->validate();
}

void GADObjectPrivate::replaceAdHTML(std::shared_ptr<GADCachedFile> file) {
    if (adHTML_) {
        adHTML_->setDelegate({});
        adHTML_->invalidate();
    }
    adHTML_ = std::move(file);
    pendingTrackingURLs_.clear();
    pendingClickURLs_.clear();
}

std::optional<std::string> GADObjectPrivate::adHTMLString() const {
    return adHTML_ ? adHTML_->content() : std::nullopt;
}

std::optional<NSURL> GADObjectPrivate::adHTMLBaseURL() const {
    return adHTML_ ? std::optional(adHTML_->httpDestinationURL()) : std::nullopt;
}

void GADObjectPrivate::readHeaders() {
    const auto headers = GADAdHeaders::fromFields(adHTML_->httpHeaders());
    std::ranges::copy(headers.trackingURLs, std::back_inserter(pendingTrackingURLs_));
    std::ranges::copy(headers.clickURLs, std::back_inserter(pendingClickURLs_));
    if (headers.orientations != GADSupportedOrientations::None)
        supportedOrientations_ = headers.orientations;
    if (headers.interstitialTimeout)
        NSUserDefaults::standardUserDefaults().setFloatForKey(*headers.interstitialTimeout,
                                                              "applicationTimeout");
}

void GADObjectPrivate::showAd() {
    readHeaders();
    const std::string content = adHTMLString().value_or("");
    const std::string_view page = trimmed(content);
    scheduleRefresh();
    if (page.empty()) {
        fail(GADErrorCode::NoFill);
        return;
    }
    setState(GADAdState::LoadingAd);
    webView_->loadHTMLStringBaseURL(std::string(page), adHTML_->httpDestinationURL());
}

void GADObjectPrivate::adDownloadDidFail(int status) {
    constexpr int badRequest = 400;
    if (status == badRequest) {
        NSLog("<GAD> Server rejected ad parameters.  Typically this is because the ad unit ID is "
              "incorrect.");
        fail(GADErrorCode::InvalidRequest);
    } else {
        fail(status < badRequest ? GADErrorCode::NetworkError : GADErrorCode::ServerError);
    }
    scheduleRefresh();
}

void GADObjectPrivate::scheduleRefresh() {
    const auto rate =
        adHTML_ ? GADAdHeaders::fromFields(adHTML_->httpHeaders()).refreshRate : std::nullopt;
    reloadTimer_->schedule(rate.value_or(reloadTimer_->seconds()));
}

void GADObjectPrivate::cachedFileDownloadDidEnd(GADCachedFile& file) {
    const auto hold = shared_from_this();
    if (&file == buildAdJS_.get())
        scriptDownloadDidEnd();
    else if (&file == adHTML_.get())
        showAd();
}

void GADObjectPrivate::cachedFileDownloadDidFail(GADCachedFile& file, const NSError* error) {
    const auto hold = shared_from_this();
    if (&file == buildAdJS_.get())
        scriptDownloadDidEnd(); // with an older copy, if there is one
    else if (&file == adHTML_.get())
        adDownloadDidFail(error ? 0 : file.httpStatusCode());
}

std::optional<NSError> GADObjectPrivate::cachedFileShouldRedirectToURL(GADCachedFile& file,
                                                                       const NSURL&) {
    if (&file == adHTML_.get())
        readHeaders();
    return std::nullopt;
}

}
