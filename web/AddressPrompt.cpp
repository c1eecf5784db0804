#include "web/AddressPrompt.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/Trimmed.h"
#include "platform/foundation/Weakly.h"
#include "platform/uikit/UITextField.h"
#include "platform/uikit/UITextPrompt.h"
#include "platform/uikit/UIWebEngineValues.h"

#include <utility>

namespace vistrel {

namespace {

/// What is typed without a scheme is on the web.
std::optional<NSURL> typedAddress(const std::string& text) {
    const auto separator = text.find("://");
    const bool hasScheme = separator < text.find_first_of("/?#");
    auto url = addressOf(hasScheme ? text : "http://" + text);
    return url && url->isHTTP() && !url->host().empty() ? url : std::nullopt;
}

}

AddressPrompt::AddressPrompt(std::function<void(const NSURL&)> open)
    : open_(std::move(open)) {}

void AddressPrompt::ask(const std::string& typed, std::string complaint) {
    const UITextPrompt prompt{NSLocalizedString("Go to Address"), NSLocalizedString("Go"),
                              NSLocalizedString("Address")};
    prompt.ask(weakReference<UIAlertViewDelegate>(this), typed, std::move(complaint));
}

void AddressPrompt::alertViewClickedButtonAtIndex(UIAlertView& alertView, int buttonIndex) {
    if (buttonIndex == 0)
        return;
    const std::string typed = alertView.textFieldAtIndex(0)->text();
    if (const auto url = typedAddress(std::string(trimmed(typed))))
        open_(*url);
    else
        ask(typed, NSLocalizedString("This is not the address of a web page."));
}

}
