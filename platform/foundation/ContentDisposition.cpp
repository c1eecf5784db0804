#include "platform/foundation/ContentDisposition.h"

#include "platform/foundation/HeaderFieldNames.h"
#include "platform/foundation/PercentEncoding.h"
#include "platform/foundation/Trimmed.h"
#include "platform/foundation/UTF8Text.h"

#include <algorithm>

namespace vistrel {

namespace {

/// Takes everything up to the next ";" outside quotes.
std::string_view takeParameter(std::string_view& header) {
    bool quoted = false;
    std::size_t at = 0;
    for (; at < header.size() && (quoted || header[at] != ';'); ++at)
        if (header[at] == '"')
            quoted = !quoted;
        else if (quoted && header[at] == '\\')
            ++at;
    at = std::min(at, header.size());
    const std::string_view parameter = header.substr(0, at);
    header.remove_prefix(std::min(at + 1, header.size()));
    return parameter;
}

std::string unquoted(std::string_view value) {
    if (!value.starts_with('"'))
        return std::string(value);
    std::string text;
    for (std::size_t at = 1; at < value.size() && value[at] != '"'; ++at) {
        if (value[at] == '\\' && at + 1 < value.size())
            ++at;
        text += value[at];
    }
    return text;
}

std::string plainForm(std::string_view value) {
    std::string bytes = unquoted(value);
    return isUTF8(bytes) ? bytes : textFromLatin1(bytes);
}

/// charset ' language ' escaped bytes
std::optional<std::string> extendedForm(std::string_view value) {
    const auto first = value.find('\'');
    const auto second = value.find('\'', first == std::string_view::npos ? first : first + 1);
    if (second == std::string_view::npos)
        return std::nullopt;
    const std::string_view charset = value.substr(0, first);
    auto bytes = strictlyPercentDecoded(value.substr(second + 1));
    if (!bytes)
        return std::nullopt;
    if (headerFieldNamesAreEqual(charset, "UTF-8"))
        return isUTF8(*bytes) ? bytes : std::nullopt;
    if (headerFieldNamesAreEqual(charset, "ISO-8859-1"))
        return textFromLatin1(*bytes);
    return std::nullopt;
}

}

std::optional<std::string> filenameOfContentDisposition(std::string_view header) {
    std::optional<std::string> plain;
    std::optional<std::string> extended;
    while (!header.empty()) {
        const std::string_view parameter = takeParameter(header);
        const auto equals = parameter.find('=');
        if (equals == std::string_view::npos)
            continue;
        const std::string_view name = trimmed(parameter.substr(0, equals));
        const std::string_view value = trimmed(parameter.substr(equals + 1));
        if (!plain && headerFieldNamesAreEqual(name, "filename"))
            plain = plainForm(value);
        else if (!extended && headerFieldNamesAreEqual(name, "filename*"))
            extended = extendedForm(value);
    }
    return extended ? extended : plain;
}

}
