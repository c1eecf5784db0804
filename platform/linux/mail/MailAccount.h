#pragma once
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace vistrel {

enum class MailSecurity {
    StartTLS, ///< plain until the server agrees to encrypt; nothing is sent if it does not
    TLS,      ///< encrypted from the first byte
    None      ///< never encrypted: no password leaves this machine
};

/// An outgoing account: a mail submission server and who sends.
struct MailAccount {
    std::string host;
    std::uint16_t port = 587;
    MailSecurity security = MailSecurity::StartTLS;
    std::string user; ///< empty: the server asks for no password
    std::string from;
    std::string certificateAuthorityFile; ///< empty: the authorities that the system trusts
};

using SettingLookup =
    std::function<std::optional<std::string>(const std::string& group, const std::string& key)>;

/// The account in the settings' group "mail"; nothing when host or sender is missing.
[[nodiscard]] std::optional<MailAccount> mailAccountFrom(const SettingLookup& setting);

}
