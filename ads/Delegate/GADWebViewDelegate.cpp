#include "ads/Delegate/GADWebViewDelegate.h"

#include "ads/Network/GADClickTracker.h"
#include "ads/Network/GADNetworkUtilities.h"
#include "ads/Notification/GADNotification.h"
#include "ads/Notification/GADNotificationCenter.h"
#include "ads/Opener/GADOpener.h"
#include "ads/Opener/GADSafetyPolicy.h"
#include "ads/Utility/GADIdentifierUtilities.h"
#include "ads/Utility/GADNumberUtilities.h"
#include "ads/Utility/GADSignalGathering.h"
#include "ads/Utility/GADTextUtilities.h"
#include "ads/View/GADWebView.h"
#include "ads/ViewController/GADViewController.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/foundation/NSURLRequest.h"
#include "platform/foundation/Weakly.h"
#include "platform/media/AudioServices.h"
#include "platform/uikit/UIApplication.h"

namespace vistrel {

namespace {

std::optional<NSURL> urlForKey(const std::string& key, const Value::Dictionary& parameters) {
    return NSURL::URLWithString(gadTextForKey(key, parameters));
}

void postWebAction(const NSURL& url, const std::optional<std::string>& name, UIWebView& webView) {
    Value::Dictionary userInfo{{"u", url.absoluteString()}};
    if (name)
        userInfo.set("a", *name);
    GADNotificationCenter::defaultCenter().postNotification(kGADDidReceiveWebActionNotification,
                                                            &webView, userInfo);
}

}

GADWebViewDelegate::GADWebViewDelegate()
    : opener_(std::make_shared<GADOpener>()) {}

GADWebViewDelegate::~GADWebViewDelegate() = default;

bool GADWebViewDelegate::webViewShouldStartLoadWithRequest(UIWebView& webView,
                                                           const NSURLRequest& request,
                                                           UIWebViewNavigationType type) {
    const auto hold = shared_from_this();
    if (!request.URL())
        return false;
    const NSURL url = *request.URL();
    auto& page = static_cast<GADWebView&>(webView);
    GADNetworkUtilities::setUserAgentString(request.valueForHTTPHeaderField("User-Agent"));
    opener_->setViewController(viewController_);
    opener_->setOpeningWebView(weakReference<GADWebView>(&page));
    if (const auto notification = GADNotification::notificationFromURL(url)) {
        postWebAction(url, notification->name(), webView);
        performCommand(*notification, url, page);
        return false;
    }
    // Loads that a page starts by itself at its beginning are not the user's actions.
    if (type != UIWebViewNavigationType::Other || url.path().size() >= 2)
        postWebAction(url, std::nullopt, webView);
    return followURL(url, type, page);
}

bool GADWebViewDelegate::followURL(const NSURL& url, UIWebViewNavigationType, GADWebView& webView) {
    if (GADOpener::isPageAddress(url))
        return true;
    if (gadLowerCased(url.scheme()) != "file" &&
        GADSafetyPolicy::permitsLeaving(webView, "load", &url))
        opener_->openOutsideTheWeb(url);
    return false;
}

void GADWebViewDelegate::webViewDidFinishLoad(UIWebView& webView) {
    notifyWebViewOfOrientationChange(webView,
                                     UIApplication::sharedApplication().statusBarOrientation());
    if (hasLoadedAtLeastOnce_)
        return;
    hasLoadedAtLeastOnce_ = true;
    loadedFirstPage(webView);
}

void GADWebViewDelegate::performCommand(const GADNotification& notification, const NSURL& url,
                                        GADWebView& webView) {
    const std::string& name = notification.name();
    const Value::Dictionary& parameters = notification.parameters();
    if (name == "click") {
        trackURLStringAppendSpamSignals(gadTextForKey("u", parameters), GADSpamSignals::Yes);
    } else if (name == "close") {
        if (const auto screen = std::dynamic_pointer_cast<GADViewController>(viewController()))
            screen->relinquishScreen();
    } else if (name == "httpTrack") {
        trackURLStringAppendSpamSignals(gadTextForKey("u", parameters), GADSpamSignals::No);
    } else if (name == "log") {
        NSLog(gadLogText(gadTextForKey("string", parameters)));
    } else if (name == "open") {
        const auto target = urlForKey("u", parameters);
        if (GADSafetyPolicy::permitsLeaving(webView, name, target ? &*target : nullptr))
            opener_->openNotification(parameters);
    } else if (name == "touch") {
        processTouchSignals(parameters);
    } else if (name == "vibrate") {
        if (GADSafetyPolicy::permitsLeaving(webView, name, nullptr))
            AudioServicesPlaySystemSound(kSystemSoundID_Vibrate);
    } else if (name == "canOpenURLs") {
        processCanOpenURLsWebView(gadTextForKey("urls", parameters), webView);
    } else if (name == "evalInOpener") {
        evaluateInOpenerLater(parameters, webView);
    } else if (GADSafetyPolicy::permitsForwarding(name)) {
        GADNotificationCenter::postNotificationFromURLObjectWithDelay(url, webView.weak_from_this(),
                                                                      0);
    }
}

void GADWebViewDelegate::evaluateInOpenerLater(const Value::Dictionary& parameters,
                                               GADWebView& webView) {
    if (!openingWebView())
        return;
    NSRunLoop::performAfterDelay(
        0, weakly(this, [parameters,
                         asker = weakReference<UIWebView>(&webView)](GADWebViewDelegate& self) {
            self.evaluateJavaScriptInOpener(parameters, asker);
        }));
}

void GADWebViewDelegate::notifyWebViewOfOrientationChange(UIWebView& webView,
                                                          UIInterfaceOrientation orientation) {
    int degrees = 0;
    switch (orientation) {
    case UIInterfaceOrientation::Portrait:
        break;
    case UIInterfaceOrientation::PortraitUpsideDown:
        degrees = 180;
        break;
    case UIInterfaceOrientation::LandscapeRight:
        degrees = 90;
        break;
    case UIInterfaceOrientation::LandscapeLeft:
        degrees = -90;
        break;
    default:
        return;
    }
    webView.stringByEvaluatingJavaScriptFromString(
        "window.__defineGetter__('orientation',function(){return " + std::to_string(degrees) +
        ";});window.onorientationchange();");
}

void GADWebViewDelegate::trackURLStringAppendSpamSignals(const std::string& text,
                                                         GADSpamSignals signals) {
    if (!tracker_)
        tracker_ = GADClickTracker::withDelegate(weakReference<GADClickTrackerDelegate>(this));
    const auto url = NSURL::URLWithString(text);
    if (url)
        tracker_->trackURL(signals == GADSpamSignals::Yes
                               ? GADSignalGathering::shared().urlWithClickSignals(*url)
                               : *url);
}

void GADWebViewDelegate::processCanOpenURLsWebView(const std::string& commaSeparatedURLs,
                                                   UIWebView& webView) {
    const auto urls = gadComponents(commaSeparatedURLs, ',');
    GADNotificationCenter::postJSNotificationUserInfoWebView(
        "openableURLs", GADIdentifierUtilities::sharedInstance().canOpenURLs(urls), webView);
}

void GADWebViewDelegate::evaluateJavaScriptInOpener(const Value::Dictionary& parameters,
                                                    std::weak_ptr<UIWebView> webView) {
    const auto opening = openingWebView();
    if (!opening)
        return;
    opening->stringByEvaluatingJavaScriptFromString(
        gadTextForKey("js", parameters), [asker = std::move(webView)](const std::string& result) {
            if (const auto page = asker.lock())
                GADNotificationCenter::postJSNotificationUserInfoWebView(
                    "evalJavaScriptInOpenerResult", Value::Dictionary{{"result", result}}, *page);
        });
}

void GADWebViewDelegate::processTouchSignals(const Value::Dictionary& parameters) {
    GADSignalGathering::shared().addTouch(intForKeyFromDictionary("tx", parameters),
                                          intForKeyFromDictionary("ty", parameters),
                                          intForKeyFromDictionary("td", parameters));
}

int GADWebViewDelegate::intForKeyFromDictionary(const std::string& key,
                                                const Value::Dictionary& dictionary) {
    const Value* value = dictionary.find(key);
    return value ? GADNumberUtilities::integerWithString(value->string()) : -1;
}

void GADWebViewDelegate::trackerDidRedirect(GADClickTracker&, const NSURL&) {}

void GADWebViewDelegate::trackerDidFailWithError(GADClickTracker&, const NSError*) {}

}
