#pragma once
#include "platform/foundation/NSNotificationCenter.h"
#include "platform/foundation/Value.h"

#include <functional>
#include <memory>
#include <string>

namespace vistrel {
class GADWebView;
class GADWebViewDelegate;

/// The hidden page in which the ad server's script builds the address of an ad from a request's
/// parameters.
class GADBuildPage {
public:
    /// The script's answer: "loadAdURL", "invalidRequest" or "unableToServe". The page may be
    /// destroyed in it.
    using Answer = std::function<void(const NSNotification& answer)>;

    GADBuildPage(const std::string& script, const Value::Dictionary& parameters,
                 const Answer& answer);
    ~GADBuildPage();
    GADBuildPage(const GADBuildPage&) = delete;
    GADBuildPage& operator=(const GADBuildPage&) = delete;

private:
    std::shared_ptr<GADWebView> webView_;
    std::shared_ptr<GADWebViewDelegate> delegate_;
};

}
