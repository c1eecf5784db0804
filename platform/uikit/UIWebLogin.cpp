#include "platform/uikit/UIWebLogin.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSURLCredentialStorage.h"
#include "platform/uikit/UITextField.h"

#include <map>
#include <utility>

namespace vistrel {

namespace {

/// The open dialogs by origin. Each lives until it is answered.
std::map<std::string, std::shared_ptr<UIWebLogin>>& openLogins() {
    static std::map<std::string, std::shared_ptr<UIWebLogin>> logins;
    return logins;
}

}

void UIWebLogin::answer(const host::WebChallenge& challenge, Answer answer) {
    auto& storage = NSURLCredentialStorage::sharedCredentialStorage();
    const auto origin = NSURL::URLWithString(challenge.origin);
    if (!origin) {
        answer({});
        return;
    }
    const NSURLCredential* known = storage.credentialForURL(*origin);
    if (known && !challenge.isRejected) {
        answer(host::WebCredential{known->user, known->password});
        return;
    }
    storage.removeCredentialForURL(*origin);
    auto& login = openLogins()[challenge.origin];
    const bool isNew = !login;
    if (isNew)
        login.reset(new UIWebLogin(challenge));
    login->waiting_.push_back(std::move(answer));
    if (isNew)
        login->show();
}

void UIWebLogin::show() {
    // The realm, which the server chooses, goes below the verified address.
    const std::string where = challenge_.realm.empty()
                                  ? challenge_.origin
                                  : challenge_.origin + "\n\u201c" + challenge_.realm + "\u201d";
    const auto alert =
        UIAlertView::withTitle(NSLocalizedString("Log In"), where, weak_from_this(),
                               NSLocalizedString("Cancel"), {NSLocalizedString("Log In")});
    alert->setAlertViewStyle(UIAlertViewStyle::LoginAndPasswordInput);
    alert->show();
}

void UIWebLogin::alertViewClickedButtonAtIndex(UIAlertView& alertView, int buttonIndex) {
    const auto self = std::exchange(openLogins()[challenge_.origin], nullptr);
    openLogins().erase(challenge_.origin);
    std::optional<host::WebCredential> given;
    if (buttonIndex == 1) {
        given = {alertView.textFieldAtIndex(0)->text(), alertView.textFieldAtIndex(1)->text()};
        NSURLCredentialStorage::sharedCredentialStorage().setCredentialForURL(
            {given->user, given->password, challenge_.isBasic},
            *NSURL::URLWithString(challenge_.origin));
    }
    for (const Answer& answer : std::exchange(waiting_, {}))
        answer(given);
}

}
