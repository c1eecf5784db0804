#include "ads/Notification/GADNotificationCenter.h"

#include "ads/Notification/GADNotification.h"
#include "ads/Utility/GADMacros.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/uikit/UIWebView.h"

#include <utility>

namespace vistrel::GADNotificationCenter {

NSNotificationCenter& defaultCenter() {
    return NSNotificationCenter::defaultCenter();
}

void postNotificationFromURLObject(const NSURL& url, const void* object) {
    if (const auto notification = GADNotification::notificationFromURL(url))
        defaultCenter().postNotification(notification->name(), object, notification->parameters());
}

void postNotificationFromURLObjectWithDelay(const NSURL& url, std::weak_ptr<const void> object,
                                            double delay) {
    NSRunLoop::performAfterDelay(
        delay,
        [url, object = std::move(object)] {
            if (const auto sender = object.lock())
                postNotificationFromURLObject(url, sender.get());
        });
}

void postJSNotificationUserInfoWebView(const std::string& name,
                                       const std::optional<Value::Dictionary>& userInfo,
                                       UIWebView& webView) {
    std::string arguments = "'" + name + "'";
    if (userInfo) {
        const Value dictionary = *userInfo;
        arguments += ", " + GADMacros::jsonify(&dictionary).value_or("");
    }
    webView.stringByEvaluatingJavaScriptFromString("AFMA_ReceiveMessage(" + arguments + ");");
}

}
