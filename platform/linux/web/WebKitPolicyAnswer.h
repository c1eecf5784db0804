#pragma once
#include "platform/linux/NativeReference.h"

#include <webkit/webkit.h>

#include <utility>

namespace vistrel {

/// A decision that the engine waits for. Refused when it is dropped without an answer: the engine
/// itself would take that for a yes.
class WebKitPolicyAnswer {
public:
    explicit WebKitPolicyAnswer(WebKitPolicyDecision* decision)
        : decision_(NativeReference<WebKitPolicyDecision>::ref(decision)) {}
    WebKitPolicyAnswer(const WebKitPolicyAnswer&) = delete;
    WebKitPolicyAnswer& operator=(const WebKitPolicyAnswer&) = delete;
    ~WebKitPolicyAnswer() {
        if (decision_)
            webkit_policy_decision_ignore(decision_.get());
    }

    /// Null policies: those of the page.
    void allow(WebKitWebsitePolicies* policies = nullptr) {
        const auto decision = std::exchange(decision_, {});
        if (policies)
            webkit_policy_decision_use_with_policies(decision.get(), policies);
        else
            webkit_policy_decision_use(decision.get());
    }

private:
    NativeReference<WebKitPolicyDecision> decision_;
};

}
