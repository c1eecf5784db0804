#include "shell/MailtoAddress.h"

#include "platform/foundation/PercentEncoding.h"

namespace vistrel {

namespace {

/// Lines of a mail end with both characters.
std::string withMailLineBreaks(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\r' && text[at] != '\n') {
            result += text[at];
            continue;
        }
        if (text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n')
            ++at;
        result += "\r\n";
    }
    return result;
}

}

std::string mailtoAddress(std::string_view recipient, std::string_view subject,
                          std::string_view body) {
    std::string address = percentEncodedComponent(recipient);
    if (const auto at = address.rfind("%40"); at != std::string::npos)
        address.replace(at, 3, "@");
    return "mailto:" + address +
           "?subject=" + percentEncodedComponent(withMailLineBreaks(subject)) +
           "&body=" + percentEncodedComponent(withMailLineBreaks(body));
}

}
