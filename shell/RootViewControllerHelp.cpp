#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/NSURL.h"
#include "platform/foundation/Weakly.h"
#include "platform/uikit/MFMailComposeViewController.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIDevice.h"
#include "platform/uikit/UINavigationController.h"
#include "settings/Settings.h"
#include "shell/HelpTexts.h"
#include "shell/MailtoAddress.h"
#include "shell/RootViewController.h"
#include "shell/SocialProfileAddresses.h"
#include "shell/UIDeviceAdditions.h"

#include <utility>

namespace vistrel {

namespace {

constexpr const char* kHowToUseTitle = "How To Use:";
constexpr const char* kFAQTitle = "FAQ";
constexpr const char* kSupportTitle = "Support";
constexpr const char* kApplicationSupportTitle = "Application Support";
constexpr const char* kWebsiteSubject = "Vistrel Website Support";
constexpr const char* kApplicationSubject = "Vistrel Application Support";
constexpr int kSupportRows = 3;

std::string bundleVersion() {
    const Value* version = NSBundle::mainBundle().infoDictionary().find("CFBundleVersion");
    return version ? std::string(version->string()) : std::string();
}

std::string mailBody() {
    const UIDevice& device = UIDevice::currentDevice();
    return supportMailBody(
        {bundleVersion(), machine(device), device.systemVersion(), device.uniqueIdentifier()});
}

/// Skips an address that is invalid or that nothing opens.
void openAddress(const std::string& address) {
    if (const auto url = NSURL::URLWithString(address))
        UIApplication::sharedApplication().openURL(*url);
}

void launchMailApp(const Setting& recipient, const char* subject) {
    openAddress(mailtoAddress(settingValue(recipient), subject, mailBody()));
}

const char* logLineOfResult(MFMailComposeResult result) {
    switch (result) {
    case MFMailComposeResult::Cancelled:
        return "Email: canceled";
    case MFMailComposeResult::Saved:
        return "Email: saved";
    case MFMailComposeResult::Sent:
        return "Email: sent";
    case MFMailComposeResult::Failed:
        return "Email: failed";
    }
    return "Email: not sent";
}

}

void RootViewController::presentHelpOptions() {
    const auto sheet = UIActionSheet::withTitle({}, weakReference<UIActionSheetDelegate>(this),
                                                "Cancel", {}, {"How To Use", "FAQ", "Support"});
    sheet->setActionSheetStyle(UIActionSheetStyle::BlackTranslucent);
    sheet->showInView(*view());
}

void RootViewController::showAlert(const char* title, std::string message, const char* cancelTitle,
                                   std::vector<std::string> otherTitles, int rows) {
    const auto alert =
        UIAlertView::withTitle(title, std::move(message), weakReference<UIAlertViewDelegate>(this),
                               cancelTitle, std::move(otherTitles));
    alert->setNumberOfRows(rows);
    alert->show();
}

void RootViewController::actionSheetClickedButtonAtIndex(UIActionSheet&, int buttonIndex) {
    switch (buttonIndex) {
    case 0:
        showAlert(kHowToUseTitle, howToUseText(), "Got it", {"FAQ"});
        break;
    case 1:
        showAlert(kFAQTitle, longFAQText(), "Close", {});
        break;
    case 2:
        showAlert(kSupportTitle, supportText(), "Cancel",
                  {"Application Support", "Website Support"}, kSupportRows);
        break;
    default:
        break;
    }
}

void RootViewController::alertViewClickedButtonAtIndex(UIAlertView& alertView, int buttonIndex) {
    if (alertView.title() == kHowToUseTitle) {
        if (buttonIndex == 1)
            showAlert(kFAQTitle, shortFAQText(), "Close", {});
    } else if (alertView.title() == kSupportTitle) {
        if (buttonIndex == 1)
            showAlert(kApplicationSupportTitle, socialNetworkText(), "Cancel",
                      {"Twitter", "Email"});
        else if (buttonIndex == 2)
            sendWebsiteSupportMail();
    } else if (alertView.title() == kApplicationSupportTitle) {
        if (buttonIndex == 1)
            openTwitterAppForFollowingUser(settingValue(kSupportTwitterHandle));
        else if (buttonIndex == 2)
            sendApplicationSupportMail();
    }
}

void RootViewController::sendWebsiteSupportMail() {
    if (MFMailComposeViewController::canSendMail())
        displayComposerSheetWebsiteSupport();
    else
        launchMailAppOnDeviceWebsiteSupport();
}

void RootViewController::sendApplicationSupportMail() {
    if (MFMailComposeViewController::canSendMail())
        displayComposerSheetApplicationSupport();
    else
        launchMailAppOnDeviceApplicationSupport();
}

void RootViewController::displayComposerSheet(const Setting& recipient, const char* subject) {
    const auto composer = std::make_shared<MFMailComposeViewController>();
    composer->setMailComposeDelegate(weakReference<MFMailComposeViewControllerDelegate>(this));
    composer->setSubject(subject);
    composer->setToRecipients({settingValue(recipient)});
    composer->setMessageBodyIsHTML(mailBody(), false);
    navigationController()->presentModalViewController(composer, true);
}

void RootViewController::displayComposerSheetWebsiteSupport() {
    displayComposerSheet(kWebsiteSupportRecipient, kWebsiteSubject);
}

void RootViewController::displayComposerSheetApplicationSupport() {
    displayComposerSheet(kApplicationSupportRecipient, kApplicationSubject);
}

void RootViewController::launchMailAppOnDeviceWebsiteSupport() {
    launchMailApp(kWebsiteSupportRecipient, kWebsiteSubject);
}

void RootViewController::launchMailAppOnDeviceApplicationSupport() {
    launchMailApp(kApplicationSupportRecipient, kApplicationSubject);
}

void RootViewController::mailComposeControllerDidFinishWithResultError(
    MFMailComposeViewController& controller, MFMailComposeResult result, const NSError*) {
    NSLog(logLineOfResult(result));
    if (navigationController()->modalViewController().get() == &controller)
        navigationController()->dismissModalViewControllerAnimated(true);
}

void RootViewController::openTwitterAppForFollowingUser(const std::string& userName) {
    for (const std::string& address : socialProfileClientAddresses(userName)) {
        const auto url = NSURL::URLWithString(address);
        if (url && UIApplication::sharedApplication().canOpenURL(*url)) {
            UIApplication::sharedApplication().openURL(*url);
            return;
        }
    }
    openAddress(socialProfileWebAddress(userName));
}

}
