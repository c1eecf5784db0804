#include "ads/Opener/GADOpener.h"

#include "ads/Browser/GADBrowserController.h"
#include "ads/Delegate/GADDelegateManager.h"
#include "ads/Network/GADClickTracker.h"
#include "ads/Network/GADNetworkUtilities.h"
#include "ads/Object/GADObjectPrivate.h"
#include "ads/Opener/GADOpenParameters.h"
#include "ads/Statistics/GADStatistics.h"
#include "ads/Utility/GADTextUtilities.h"
#include "ads/View/GADWebView.h"
#include "ads/WebApp/GADWebAppViewController.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/foundation/PercentEncoding.h"
#include "platform/foundation/Weakly.h"
#include "platform/uikit/MFMailComposeViewController.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"

namespace vistrel {

namespace {

constexpr double kDelay = 0.3;
constexpr int kMostDelays = 3;

/// Consecutive delays before the application is left.
int delaysTaken = 0;

/// Retains the opener that will close it.
class AdMailComposer : public MFMailComposeViewController {
public:
    explicit AdMailComposer(std::shared_ptr<GADOpener> opener)
        : opener_(std::move(opener)) {}

private:
    std::shared_ptr<GADOpener> opener_;
};

void fillInMail(MFMailComposeViewController& composer, const NSURL& url) {
    constexpr std::string_view scheme = "mailto:";
    const std::string rest = url.absoluteString().substr(scheme.size());
    const auto question = rest.find('?');
    composer.setToRecipients({percentDecoded(rest.substr(0, question))});
    if (question == std::string::npos)
        return;
    const auto fields = GADNetworkUtilities::dictionaryFromQueryString(rest.substr(question + 1));
    if (fields.contains("cc"))
        composer.setCcRecipients(gadComponents(gadTextForKey("cc", fields), ','));
    if (fields.contains("bcc"))
        composer.setBccRecipients(gadComponents(gadTextForKey("bcc", fields), ','));
    if (fields.contains("subject"))
        composer.setSubject(gadTextForKey("subject", fields));
    if (fields.contains("body"))
        composer.setMessageBodyIsHTML(gadTextForKey("body", fields), false);
}

}

void GADOpener::openNotification(const Value::Dictionary& parameters) {
    using Target = GADOpenParameters::Target;
    const auto open = GADOpenParameters::fromDictionary(parameters);
    if (open.target == Target::Nothing)
        return;
    const auto url = GADStatistics::sharedStatistics().urlForClick(open.url);
    if (!url)
        openWebAppWithHTMLSupportedOrientations(open.html, open.orientations);
    else if (open.target == Target::Application)
        openApp(url);
    else if (!isPageAddress(*url))
        openOutsideTheWeb(*url);
    else if (open.target == Target::Browser)
        openBrowserToURLSupportedOrientations(*url, open.orientations);
    else
        openWebAppSupportedOrientations(*url, open.orientations);
}

bool GADOpener::isPageAddress(const NSURL& url) {
    const std::string scheme = gadLowerCased(url.scheme());
    return scheme == "about" || scheme == "http" || scheme == "https";
}

void GADOpener::openOutsideTheWeb(const NSURL& url) {
    const std::string scheme = gadLowerCased(url.scheme());
    if (scheme == "mailto")
        openEmailComposer(url);
    else if (scheme != "file")
        openApp(url);
}

void GADOpener::openBrowserToURLSupportedOrientations(const NSURL& url,
                                                      GADSupportedOrientations orientations) {
    const auto browser = std::make_shared<GADBrowserController>();
    browser->loadReferringURL(url, referringURL_);
    presentScreen(browser, orientations);
}

void GADOpener::openWebAppSupportedOrientations(const NSURL& url,
                                                GADSupportedOrientations orientations) {
    const auto webApp = std::make_shared<GADWebAppViewController>();
    webApp->load(url);
    presentScreen(webApp, orientations);
}

void GADOpener::openWebAppWithHTMLSupportedOrientations(const std::string& html,
                                                        GADSupportedOrientations orientations) {
    const auto webApp = std::make_shared<GADWebAppViewController>();
    webApp->loadHTMLBaseURL(html, std::nullopt);
    presentScreen(webApp, orientations);
}

void GADOpener::presentScreen(const std::shared_ptr<GADViewController>& screen,
                              GADSupportedOrientations orientations) {
    const auto controller = viewController_.lock();
    if (!controller)
        return;
    const auto hold = shared_from_this();
    screen->setSupportedOrientations(orientations);
    screen->setOpeningWebView(openingWebView_);
    screen->setDelegateManager(delegateManager_);
    if (screen->presentFromViewController(controller))
        didOpen();
}

void GADOpener::openApp(const std::optional<NSURL>& url) {
    if (!url)
        return;
    const auto hold = shared_from_this();
    didOpen();
    leaveApplicationForURL(*url);
}

void GADOpener::leaveApplicationForURL(const NSURL& url) {
    // Both calls follow the user's click, so they are made even if the ad no longer exists by then.
    if (GADClickTracker::activeTrackings() && delaysTaken < kMostDelays) {
        ++delaysTaken;
        NSRunLoop::performAfterDelay(
            kDelay, [self = shared_from_this(), url] { self->leaveApplicationForURL(url); });
        return;
    }
    delaysTaken = 0;
    if (delegateManager_)
        delegateManager_->willLeaveApplication();
    NSRunLoop::performAfterDelay(0, [url] { UIApplication::sharedApplication().openURL(url); });
}

void GADOpener::openEmailComposer(const NSURL& url) {
    const auto controller = viewController_.lock();
    if (!controller || controller->modalViewController())
        return;
    const auto composer = std::make_shared<AdMailComposer>(shared_from_this());
    fillInMail(*composer, url);
    composer->setMailComposeDelegate(weakReference<MFMailComposeViewControllerDelegate>(this));
    controller->presentModalViewController(composer, true);
    didOpen();
}

void GADOpener::mailComposeControllerDidFinishWithResultError(
    MFMailComposeViewController& controller, MFMailComposeResult, const NSError*) {
    const auto hold = shared_from_this();
    controller.dismissModalViewControllerAnimated(true);
    if (const auto page = openingWebView_.lock())
        UIApplication::sharedApplication().events().setFirstResponder(page);
}

void GADOpener::didOpen() {
    if (const auto ad = adController_.lock())
        ad->trackURLs(ad->pendingClickURLs());
}

}
