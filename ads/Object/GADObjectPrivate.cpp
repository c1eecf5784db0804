#include "ads/Object/GADObjectPrivate.h"

#include "ads/Delegate/GADBannerWebViewDelegate.h"
#include "ads/Delegate/GADDelegateManager.h"
#include "ads/Network/GADTrackers.h"
#include "ads/Notification/GADNotificationCenter.h"
#include "ads/Object/GADBuildPage.h"
#include "ads/Object/GADRefreshTimer.h"
#include "ads/Opener/GADOpener.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Timing/GADTiming.h"
#include "ads/View/GADBannerView.h"
#include "ads/View/GADWebView.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/Weakly.h"
#include "platform/uikit/UIApplication.h"

namespace vistrel {

namespace {

bool applicationHasFinishedLaunching = false;
bool hasLoggedMissingServer = false;

/// Runs before main, because an ad object may be created long after launch.
[[maybe_unused]] const bool watchesLaunch = [] {
    NSNotificationCenter::defaultCenter().addObserver(
        &applicationHasFinishedLaunching, UIApplicationDidFinishLaunchingNotification, nullptr,
        [](const NSNotification&) { applicationHasFinishedLaunching = true; });
    return true;
}();

bool applicationTakesLoads() {
    return !applicationHasFinishedLaunching ||
           UIApplication::sharedApplication().applicationState() == UIApplicationState::Active;
}

}

void GADObjectPrivate::resetProcessState() {
    applicationHasFinishedLaunching = false;
    hasLoggedMissingServer = false;
}

GADObjectPrivate::GADObjectPrivate()
    : delegateManager_(std::make_shared<GADDelegateManager>())
    , trackers_(std::make_shared<GADTrackers>()) {}

std::shared_ptr<GADObjectPrivate> GADObjectPrivate::withFrame(CGRect frame) {
    std::shared_ptr<GADObjectPrivate> made(new GADObjectPrivate);
    made->setUp(frame, nullptr);
    return made;
}

std::shared_ptr<GADObjectPrivate> GADObjectPrivate::withView(GADBannerView& view) {
    std::shared_ptr<GADObjectPrivate> made(new GADObjectPrivate);
    made->setUp(view.bounds(), std::static_pointer_cast<GADBannerView>(view.shared_from_this()));
    return made;
}

void GADObjectPrivate::setUp(CGRect bounds, const std::shared_ptr<GADBannerView>& adView) {
    adView_ = adView;
    webViewDelegate_ = std::make_shared<GADBannerWebViewDelegate>();
    const auto self = weakReference<GADObjectPrivate>(this);
    webViewDelegate_->setPrivate(self);
    webViewDelegate_->opener().setAdController(self);
    webView_ = GADWebView::withFrame(bounds);
    webView_->setScalesPageToFit(false);
    webView_->setMediaPlaybackRequiresUserAction(true);
    webView_->setHidden(true);
    webView_->setDelegate(webViewDelegate_);
    if (adView)
        adView->addSubview(webView_);
    reloadTimer_ = std::make_unique<GADRefreshTimer>(weakly(this, &GADObjectPrivate::refresh));
}

GADObjectPrivate::~GADObjectPrivate() {
    cancelPendingActions();
    webView_->empty();
    for (const auto& file : {buildAdJS_, adHTML_})
        if (file)
            file->cancel();
}

void GADObjectPrivate::cancelPendingActions() {
    reloadTimer_->invalidate();
}

bool GADObjectPrivate::isMakingRequest() const {
    return state_ == GADAdState::FetchingScript || state_ == GADAdState::BuildingRequest ||
           state_ == GADAdState::FetchingAd || state_ == GADAdState::LoadingAd;
}

void GADObjectPrivate::setState(GADAdState state) {
    if (state == state_)
        return;
    state_ = state;
    if (state != GADAdState::Shown)
        return;
    webView_->forgetTouch();
    timeLastLoaded_ = GADTiming::counter();
}

void GADObjectPrivate::fail(GADErrorCode code) {
    setState(GADAdState::Failed);
    reportErrorCode(code, sentParameters_);
}

void GADObjectPrivate::reportErrorCode(GADErrorCode code, const Value::Dictionary& parameters) {
    delegateManager_->didFailToReceiveAdWithError(GADRequestError(code, parameters));
}

void GADObjectPrivate::loadRequest(const GADRequest* request) {
    const auto* given = dynamic_cast<const GADRequestPrivate*>(request);
    loadPrivateRequest(given ? std::make_shared<GADRequestPrivate>(*given)
                             : std::make_shared<GADRequestPrivate>(),
                       AutoRefresh::No);
}

void GADObjectPrivate::loadInterstitialRequest(const GADRequest* request) {
    const auto* given = dynamic_cast<const GADRequestPrivate*>(request);
    auto copy =
        given ? std::make_shared<GADRequestPrivate>(*given) : std::make_shared<GADRequestPrivate>();
    copy->setInterstitialAd(true);
    loadPrivateRequest(std::move(copy), AutoRefresh::No);
}

void GADObjectPrivate::loadPrivateRequest(std::shared_ptr<GADRequestPrivate> request,
                                          AutoRefresh autoRefresh) {
    if (isMakingRequest() || !applicationTakesLoads())
        return;
    const auto hold = shared_from_this();
    if (!GADRequest::deviceAtLeastMinimumOSMajorVersionMinorVersion(kGADMinimumOSMajorVersion,
                                                                    kGADMinimumOSMinorVersion)) {
        fail(GADErrorCode::OSVersionTooLow);
        return;
    }
    hasAutoRefreshed_ = autoRefresh == AutoRefresh::Yes;
    request_ = std::move(request);
    sentParameters_.clear();
    GADStatistics& statistics = GADStatistics::sharedStatistics();
    if (!statistics.timingNamed("ptime"))
        statistics.startTimingNamed("ptime");
    request_->setCounter(statistics.incrementAdRequestCount());
    setState(GADAdState::BuildingRequest);
    ensureSupportFiles();
}

void GADObjectPrivate::refresh() {
    const auto hold = shared_from_this();
    if (state_ == GADAdState::LoadingAd) {
        webView_->stopLoading();
        fail(GADErrorCode::NetworkError);
    }
    if (isMakingRequest())
        reloadTimer_->schedule(reloadTimer_->seconds());
    else
        loadPrivateRequest(request_, AutoRefresh::Yes);
}

void GADObjectPrivate::logMissingServer() const {
    if (!std::exchange(hasLoggedMissingServer, true))
        NSLog("<GAD> No ad server is configured.");
}

void GADObjectPrivate::webViewDidFinishLoad() {
    if (state_ != GADAdState::LoadingAd)
        return;
    const auto hold = shared_from_this();
    setState(GADAdState::Shown);
    webView_->setHidden(false);
    delegateManager_->didReceiveAd();
    trackURLs(pendingTrackingURLs());
    GADStatistics& statistics = GADStatistics::sharedStatistics();
    statistics.endTimingNamed("prl");
    statistics.startTimingNamed("ppcl");
}

void GADObjectPrivate::webViewDidFailLoad() {
    const auto hold = shared_from_this();
    if (state_ != GADAdState::Shown)
        fail(GADErrorCode::NetworkError);
}

void GADObjectPrivate::trackURLs(std::span<const NSURL> urls) {
    trackers_->trackURLs(urls);
}

}
