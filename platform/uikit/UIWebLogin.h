#pragma once
#include "platform/host/WebEngine.h"
#include "platform/uikit/UIAlertView.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vistrel {

/// The dialog for a server that requires a name and a password: one per origin, however many
/// requests wait for it. The answer is kept in the credential storage.
class UIWebLogin : public UIAlertViewDelegate, public std::enable_shared_from_this<UIWebLogin> {
public:
    using Answer = std::function<void(std::optional<host::WebCredential>)>;

    /// Answers from the storage when it has untried credentials, else asks the user.
    static void answer(const host::WebChallenge& challenge, Answer answer);

    void alertViewClickedButtonAtIndex(UIAlertView& alertView, int buttonIndex) override;

private:
    explicit UIWebLogin(host::WebChallenge challenge)
        : challenge_(std::move(challenge)) {}
    void show();

    host::WebChallenge challenge_;
    std::vector<Answer> waiting_;
};

}
