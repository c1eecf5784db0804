#include "platform/linux/mail/MailAccount.h"

#include <charconv>

namespace vistrel {

namespace {

std::uint16_t usualPort(MailSecurity security) {
    switch (security) {
    case MailSecurity::TLS:
        return 465;
    case MailSecurity::None:
        return 25;
    case MailSecurity::StartTLS:
        break;
    }
    return 587;
}

/// Any other word means the safe thing.
MailSecurity securityNamed(const std::string& word) {
    if (word == "tls")
        return MailSecurity::TLS;
    return word == "none" ? MailSecurity::None : MailSecurity::StartTLS;
}

}

std::optional<MailAccount> mailAccountFrom(const SettingLookup& setting) {
    const auto value = [&setting](const char* key) {
        return setting("mail", key).value_or(std::string());
    };
    MailAccount account;
    account.host = value("host");
    account.user = value("user");
    account.from = value("from");
    if (account.from.empty() && account.user.find('@') != std::string::npos)
        account.from = account.user;
    if (account.host.empty() || account.from.empty())
        return std::nullopt;
    account.security = securityNamed(value("security"));
    account.certificateAuthorityFile = value("ca-file");
    const std::string port = value("port");
    const char* end = port.data() + port.size();
    const auto read = std::from_chars(port.data(), end, account.port);
    if (read.ec != std::errc() || read.ptr != end || account.port == 0)
        account.port = usualPort(account.security);
    return account;
}

}
