#include "demo/AttachmentTable.h"
#include "demo/Page.h"
#include "demo/Pages.h"
#include "demo/Site.h"

namespace vistrel::demo {
namespace {
// Escapes separators too, so that they arrive inside the one segment.
std::string escapedSegment(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string escaped;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        const bool plain = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                           (byte >= '0' && byte <= '9') || byte == '-' || byte == '_' ||
                           byte == '.';
        if (plain) {
            escaped += character;
        } else {
            escaped += '%';
            escaped += digits[byte >> 4U];
            escaped += digits[byte & 15U];
        }
    }
    return escaped;
}
}

Answer attachmentsPage(Site& /*site*/, const Request& /*request*/) {
    Page page("Attachments");
    for (const Address& address : attachmentAddresses())
        page.link(address.address, address.title);
    return page.answer();
}

Answer attachmentFile(Site& site, const Request& request) {
    constexpr size_t prefix = std::string_view("/attach/").size();
    const std::string_view rest = std::string_view(request.path).substr(prefix);
    const long long number = numberFrom(rest.substr(0, rest.find('/')), 0);
    if (number < 1 || number > static_cast<long long>(attachments().size()))
        return errorAnswer(404, "No such attachment.");
    const Attachment& attachment = attachments()[static_cast<size_t>(number) - 1];
    Answer answer = site.media.file(attachment.file);
    if (!attachment.disposition.empty())
        answer.headers.emplace_back("Content-Disposition", attachment.disposition);
    answer.exactHeaders = true;
    return answer;
}

Addresses attachmentAddresses() {
    Addresses addresses;
    int number = 1;
    for (const Attachment& attachment : attachments()) {
        std::string address = "/attach/" + std::to_string(number++);
        if (!attachment.lastSegment.empty())
            address += "/" + escapedSegment(attachment.lastSegment);
        addresses.push_back({address, std::string(attachment.title)});
    }
    return addresses;
}
}
