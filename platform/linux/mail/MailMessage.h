#pragma once
#include "platform/host/Desktop.h"

#include <string>
#include <vector>

namespace vistrel {

/// A mail as it travels.
struct MailMessage {
    std::string sender;                  ///< bare addresses
    std::vector<std::string> recipients; ///< each once, the hidden ones too
    std::string bytes;                   ///< headers and body, seven-bit, lines end with CR LF
};

/// Builds the message (RFC 5322) with date and identifier of now. No field can add a header line:
/// control characters in it become blanks. Fails when an address is none, and without recipients.
[[nodiscard]] host::Result<MailMessage> mailMessage(const host::OutgoingMail& mail,
                                                    const std::string& from);

/// The same as a file to go on with later: whatever is typed is kept, hidden recipients too.
[[nodiscard]] std::string draftBytes(const host::OutgoingMail& mail, const std::string& from);

}
