#pragma once
#include "platform/foundation/NSNotificationCenter.h"
#include "platform/foundation/NSURL.h"
#include "platform/foundation/Value.h"

#include <memory>
#include <optional>
#include <string>

namespace vistrel {
class UIWebView;

/// Posted for every navigation of a library web view, with the view as object: "u" is the address,
/// "a" the command's name when it is a bridge address.
inline constexpr const char* kGADDidReceiveWebActionNotification = "didReceiveWebAction";

/// Posted by the library's full-screen screens, with the screen as object, when they are presented
/// and dismissed.
inline constexpr const char* kGADViewControllerWillPresentFullScreenNotification =
    "GADViewControllerWillPresentFullScreen";
inline constexpr const char* kGADViewControllerDidRelinquishFullScreenNotification =
    "GADViewControllerDidRelinquishFullScreen";

/// Adds bridge addresses to the platform's notification centre.
namespace GADNotificationCenter {

/// The one shared centre.
NSNotificationCenter& defaultCenter();

/// Posts a bridge address's command with its parameters; any other address posts nothing.
void postNotificationFromURLObject(const NSURL& url, const void* object);
/// Does the same after `delay` seconds (0: in the next pass of the run loop), unless the object no
/// longer exists by then.
void postNotificationFromURLObjectWithDelay(const NSURL& url, std::weak_ptr<const void> object,
                                            double delay);
/// Calls the page's function "AFMA_ReceiveMessage" with the name and, if there is any, the user
/// info.
void postJSNotificationUserInfoWebView(const std::string& name,
                                       const std::optional<Value::Dictionary>& userInfo,
                                       UIWebView& webView);

}
}
