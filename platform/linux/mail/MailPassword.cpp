#include "platform/linux/mail/MailPassword.h"

#include <libsecret/secret.h>

#include <cstdlib>
#include <memory>
#include <utility>

namespace vistrel {

namespace {

using Answer = std::function<void(std::optional<std::string>)>;

/// The name is not compared, so that a secret put in by the desktop's own tools is found.
const SecretSchema& schema() {
    static const SecretSchema value = [] {
        SecretSchema made{};
        made.name = "org.vistrel.Vistrel.Mail";
        made.flags = SECRET_SCHEMA_DONT_MATCH_NAME;
        made.attributes[0] = {"server", SECRET_SCHEMA_ATTRIBUTE_STRING};
        made.attributes[1] = {"user", SECRET_SCHEMA_ATTRIBUTE_STRING};
        return made;
    }();
    return value;
}

void found(GObject*, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Answer> done(static_cast<Answer*>(data));
    GError* error = nullptr;
    char* secret = secret_password_lookup_finish(result, &error);
    const bool cancelled = g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED);
    g_clear_error(&error);
    if (cancelled)
        return;
    std::optional<std::string> password;
    if (secret)
        password = secret;
    secret_password_free(secret);
    (*done)(std::move(password));
}

}

void askForMailPassword(const MailAccount& account, GCancellable* cancellable, Answer done) {
    if (const char* password = std::getenv("VISTREL_MAIL_PASSWORD")) {
        done(std::string(password));
        return;
    }
    secret_password_lookup(&schema(), cancellable, found, new Answer(std::move(done)), "server",
                           account.host.c_str(), "user", account.user.c_str(), nullptr);
}

}
