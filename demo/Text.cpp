#include "demo/Text.h"

#include <charconv>

namespace vistrel::demo {
namespace {
int hexDigit(char digit) {
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    const char lower = static_cast<char>(digit | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string_view trimmed(std::string_view text) {
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

template <typename Use>
void forEachPair(std::string_view text, char separator, Use use) {
    while (!text.empty()) {
        const size_t end = text.find(separator);
        const std::string_view pair = text.substr(0, end);
        const size_t equals = pair.find('=');
        if (!pair.empty())
            use(pair.substr(0, equals),
                equals == std::string_view::npos ? std::string_view() : pair.substr(equals + 1));
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    }
}
}

std::string unescaped(std::string_view text, bool plusIsSpace) {
    std::string plain;
    plain.reserve(text.size());
    for (size_t at = 0; at < text.size(); ++at) {
        const bool escape = text[at] == '%' && at + 2 < text.size() &&
                            hexDigit(text[at + 1]) >= 0 && hexDigit(text[at + 2]) >= 0;
        if (escape) {
            plain += static_cast<char>(hexDigit(text[at + 1]) * 16 + hexDigit(text[at + 2]));
            at += 2;
        } else {
            plain += plusIsSpace && text[at] == '+' ? ' ' : text[at];
        }
    }
    return plain;
}

Fields formFields(std::string_view text) {
    Fields fields;
    forEachPair(text, '&', [&](std::string_view name, std::string_view value) {
        fields.emplace(unescaped(name, true), unescaped(value, true));
    });
    return fields;
}

Fields cookieFields(std::string_view header) {
    Fields fields;
    forEachPair(header, ';', [&](std::string_view name, std::string_view value) {
        fields.emplace(trimmed(name), trimmed(value));
    });
    return fields;
}

std::string escapedForHtml(std::string_view text) {
    std::string escaped;
    escaped.reserve(text.size());
    for (const char character : text) {
        switch (character) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        case '\'':
            escaped += "&#39;";
            break;
        default:
            escaped += character;
        }
    }
    return escaped;
}

long long numberFrom(std::string_view text, long long otherwise) {
    if (!text.empty() && (text.front() == '+' || text.front() == ' '))
        text.remove_prefix(1);
    long long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : otherwise;
}
}
