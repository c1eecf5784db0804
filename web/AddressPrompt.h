#pragma once
#include "platform/foundation/NSURL.h"
#include "platform/uikit/UIAlertView.h"

#include <functional>
#include <memory>
#include <string>

namespace vistrel {

/// Asks for the address of a page until one is typed or the user cancels.
class AddressPrompt : public UIAlertViewDelegate,
                      public std::enable_shared_from_this<AddressPrompt> {
public:
    explicit AddressPrompt(std::function<void(const NSURL&)> open);

    void ask() { ask({}, {}); }
    void alertViewClickedButtonAtIndex(UIAlertView& alertView, int buttonIndex) override;

private:
    void ask(const std::string& typed, std::string complaint);

    std::function<void(const NSURL&)> open_;
};

}
