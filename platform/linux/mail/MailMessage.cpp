#include "platform/linux/mail/MailMessage.h"

#include "platform/foundation/Trimmed.h"
#include "platform/linux/NativeReference.h"

#include <gmime/gmime.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace vistrel {

namespace {

constexpr const char* kCharset = "utf-8";
/// Longer lines may be broken on the way.
constexpr std::size_t kLongestPlainLine = 78;

struct Freed {
    void operator()(char* text) const { g_free(text); }
};
using NativeText = std::unique_ptr<char, Freed>;

void prepareLibrary() {
    static const bool done = [] {
        g_mime_init();
        return true;
    }();
    (void)done;
}

std::string validText(const std::string& text) {
    const NativeText valid(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
    return valid.get();
}

/// One line of valid text without control characters, nothing at its ends.
std::string headerText(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, ' ');
    return std::string(trimmed(validText(text)));
}

std::string bodyText(std::string_view typed) {
    std::string text;
    for (std::size_t at = 0; at < typed.size(); ++at) {
        if (typed[at] == '\r') {
            text += '\n';
            if (at + 1 < typed.size() && typed[at + 1] == '\n')
                ++at;
        } else if (typed[at] != '\0') {
            text += typed[at];
        }
    }
    return validText(text);
}

bool travelsAsItIs(std::string_view text) {
    std::size_t length = 0;
    for (const char c : text) {
        length = c == '\n' ? 0 : length + 1;
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x7F || (byte < 0x20 && c != '\n' && c != '\t') || length > kLongestPlainLine)
            return false;
    }
    return text.find("From ") == std::string_view::npos;
}

std::string withMailLineEnds(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size() + bytes.size() / 32);
    for (const char c : bytes)
        if (c == '\n')
            result += "\r\n";
        else if (c != '\r')
            result += c;
    if (!result.ends_with("\r\n"))
        result += "\r\n";
    return result;
}

/// Seven-bit, with a name on both sides of the "@", and nothing that would end it on the wire.
bool isBareAddress(std::string_view address) {
    const auto at = address.rfind('@');
    return at != std::string_view::npos && at > 0 && at + 1 < address.size() &&
           std::ranges::all_of(address, [](char c) {
               const auto byte = static_cast<unsigned char>(c);
               return byte > 0x20 && byte < 0x7F && c != '<' && c != '>' && c != ',';
           });
}

struct Mailbox {
    std::string name;
    std::string address;
};

/// Nothing when the text is not one address.
std::optional<Mailbox> mailboxFrom(const std::string& typed) {
    const std::string text = headerText(typed);
    const auto list = NativeReference<InternetAddressList>::adopt(
        internet_address_list_parse(nullptr, text.c_str()));
    if (!list || internet_address_list_length(list.get()) != 1)
        return std::nullopt;
    InternetAddress* parsed = internet_address_list_get_address(list.get(), 0);
    if (!INTERNET_ADDRESS_IS_MAILBOX(parsed))
        return std::nullopt;
    const char* address = internet_address_mailbox_get_idn_addr(INTERNET_ADDRESS_MAILBOX(parsed));
    const char* name = internet_address_get_name(parsed);
    if (!address || !isBareAddress(address))
        return std::nullopt;
    return Mailbox{name ? headerText(name) : std::string(), address};
}

host::Failure noAddress(const std::string& typed) {
    return {EINVAL, "\"" + headerText(typed) + "\" is not a mail address."};
}

class Builder {
public:
    Builder()
        : message_(NativeReference<GMimeMessage>::adopt(g_mime_message_new(TRUE))) {}

    void add(GMimeAddressType kind, const Mailbox& mailbox) {
        const auto address = NativeReference<InternetAddress>::adopt(internet_address_mailbox_new(
            mailbox.name.empty() ? nullptr : mailbox.name.c_str(), mailbox.address.c_str()));
        internet_address_set_charset(address.get(), kCharset);
        internet_address_list_add(g_mime_message_get_addresses(message_.get(), kind),
                                  address.get());
    }
    void setText(const host::OutgoingMail& mail) {
        g_mime_message_set_subject(message_.get(), headerText(mail.subject).c_str(), kCharset);
        const std::string body = bodyText(mail.body);
        const auto stream = NativeReference<GMimeStream>::adopt(
            g_mime_stream_mem_new_with_buffer(body.data(), body.size()));
        const auto content = NativeReference<GMimeDataWrapper>::adopt(
            g_mime_data_wrapper_new_with_stream(stream.get(), GMIME_CONTENT_ENCODING_DEFAULT));
        // The library's text part would choose its own charset.
        const auto part = NativeReference<GMimePart>::adopt(
            g_mime_part_new_with_type("text", mail.isHTML ? "html" : "plain"));
        g_mime_object_set_content_type_parameter(GMIME_OBJECT(part.get()), "charset", kCharset);
        g_mime_part_set_content(part.get(), content.get());
        g_mime_part_set_content_encoding(part.get(), travelsAsItIs(body)
                                                         ? GMIME_CONTENT_ENCODING_7BIT
                                                         : GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE);
        g_mime_message_set_mime_part(message_.get(), GMIME_OBJECT(part.get()));
    }
    void stamp(const std::string& sender) {
        GDateTime* now = g_date_time_new_now_local();
        g_mime_message_set_date(message_.get(), now);
        g_date_time_unref(now);
        // The sender's domain: the machine's own name is nobody's business.
        const auto at = sender.rfind('@');
        const std::string domain = at == std::string::npos ? "localhost" : sender.substr(at + 1);
        const NativeText uuid(g_uuid_string_random());
        g_mime_message_set_message_id(message_.get(), (uuid.get() + ("@" + domain)).c_str());
    }
    std::string bytes() {
        const NativeText text(g_mime_object_to_string(GMIME_OBJECT(message_.get()), nullptr));
        return withMailLineEnds(text.get());
    }

private:
    NativeReference<GMimeMessage> message_;
};

struct Field {
    GMimeAddressType kind;
    const std::vector<std::string>& typed;
};

std::vector<Field> fieldsOf(const host::OutgoingMail& mail) {
    return {{GMIME_ADDRESS_TYPE_TO, mail.to},
            {GMIME_ADDRESS_TYPE_CC, mail.cc},
            {GMIME_ADDRESS_TYPE_BCC, mail.bcc}};
}

}

host::Result<MailMessage> mailMessage(const host::OutgoingMail& mail, const std::string& from) {
    prepareLibrary();
    const auto sender = mailboxFrom(from);
    if (!sender)
        return noAddress(from);
    Builder builder;
    builder.add(GMIME_ADDRESS_TYPE_FROM, *sender);
    MailMessage message;
    message.sender = sender->address;
    for (const Field& field : fieldsOf(mail)) {
        for (const std::string& typed : field.typed) {
            const auto mailbox = mailboxFrom(typed);
            if (!mailbox)
                return noAddress(typed);
            if (field.kind != GMIME_ADDRESS_TYPE_BCC)
                builder.add(field.kind, *mailbox);
            if (std::ranges::find(message.recipients, mailbox->address) == message.recipients.end())
                message.recipients.push_back(mailbox->address);
        }
    }
    if (message.recipients.empty())
        return host::Failure{EINVAL, "The mail has no recipient."};
    builder.stamp(sender->address);
    builder.setText(mail);
    message.bytes = builder.bytes();
    return message;
}

std::string draftBytes(const host::OutgoingMail& mail, const std::string& from) {
    prepareLibrary();
    Builder builder;
    // Text that is not an address yet stays readable as a name.
    const auto asTyped = [](const std::string& typed) {
        return mailboxFrom(typed).value_or(Mailbox{headerText(typed), {}});
    };
    const Mailbox sender = asTyped(from);
    if (!from.empty())
        builder.add(GMIME_ADDRESS_TYPE_FROM, sender);
    for (const Field& field : fieldsOf(mail))
        for (const std::string& typed : field.typed)
            builder.add(field.kind, asTyped(typed));
    builder.stamp(sender.address);
    builder.setText(mail);
    return builder.bytes();
}

}
