#include "ads/Object/GADBuildPage.h"

#include "ads/Delegate/GADWebViewDelegate.h"
#include "ads/GADSettings.h"
#include "ads/Notification/GADNotificationCenter.h"
#include "ads/Utility/GADMacros.h"
#include "ads/View/GADWebView.h"
#include "platform/foundation/NSURL.h"

namespace vistrel {

namespace {

/// Keeps a request's texts from ending the script element of the page.
std::string scriptLiteral(const Value::Dictionary& dictionary) {
    const Value value = dictionary;
    std::string literal;
    for (const char character : GADMacros::jsonify(&value).value_or(""))
        if (character == '<')
            literal += "\\u003C";
        else
            literal += character;
    return literal;
}

}

GADBuildPage::GADBuildPage(const std::string& script, const Value::Dictionary& parameters,
                           const Answer& answer)
    : webView_(GADWebView::withFrame(CGRectMake(0, 0, 1, 1)))
    , delegate_(std::make_shared<GADWebViewDelegate>()) {
    webView_->setHidden(true);
    webView_->setDelegate(delegate_);
    for (const char* name : {"loadAdURL", "invalidRequest", "unableToServe"})
        GADNotificationCenter::defaultCenter().addObserver(this, name, webView_.get(), answer);
    webView_->loadHTMLStringBaseURL(
        "<html><head><script>" + script + "</script><script>AFMA_buildAdURL(" +
            scriptLiteral(parameters) + ");</script></head><body></body></html>",
        NSURL::URLWithString(gadSettingValue(kGADAdServerOrigin)));
}

GADBuildPage::~GADBuildPage() {
    GADNotificationCenter::defaultCenter().removeObserver(this);
    webView_->setDelegate({});
}

}
