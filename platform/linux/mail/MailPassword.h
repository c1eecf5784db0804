#pragma once
#include "platform/linux/mail/MailAccount.h"

#include <gio/gio.h>

#include <functional>
#include <optional>
#include <string>

namespace vistrel {

/// Asks for the account's password: the environment's VISTREL_MAIL_PASSWORD, else the desktop's
/// secret store, where it lies under the attributes "server" and "user". `done` has it on the main
/// context, nothing when there is none; not called when cancelled.
void askForMailPassword(const MailAccount& account, GCancellable* cancellable,
                        std::function<void(std::optional<std::string>)> done);

}
