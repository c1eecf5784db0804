#include "platform/uikit/UIWebEngineValues.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace vistrel {

namespace {

bool isHexDigit(char c) {
    return std::isxdigit(static_cast<unsigned char>(c)) != 0;
}

std::int64_t announcedLength(const NSURLResponse& response) {
    const std::string text = response.valueForHTTPHeaderField("Content-Length");
    const bool compressed = !response.valueForHTTPHeaderField("Content-Encoding").empty();
    if (compressed || text.empty() || text.find_first_not_of("0123456789") != std::string::npos)
        return -1;
    return std::strtoll(text.c_str(), nullptr, 10);
}

}

std::optional<NSURL> addressOf(const std::string& text) {
    if (auto url = NSURL::URLWithString(text))
        return url;
    constexpr std::string_view kUnescaped = "!#$&'()*+,-./:;=?@_~";
    std::string escaped;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool isEscape = text[i] == '%' && i + 2 < text.size() && isHexDigit(text[i + 1]) &&
                              isHexDigit(text[i + 2]);
        if (isEscape || (byte < 0x80 && std::isalnum(byte)) ||
            kUnescaped.find(text[i]) != std::string_view::npos) {
            escaped += text[i];
        } else {
            char code[4];
            std::snprintf(code, sizeof code, "%%%02X", byte);
            escaped += code;
        }
    }
    return NSURL::URLWithString(escaped);
}

UIWebViewNavigationType navigationTypeOf(host::WebNavigationType type) {
    switch (type) {
    case host::WebNavigationType::LinkClicked:
        return UIWebViewNavigationType::LinkClicked;
    case host::WebNavigationType::FormSubmitted:
        return UIWebViewNavigationType::FormSubmitted;
    case host::WebNavigationType::BackForward:
        return UIWebViewNavigationType::BackForward;
    case host::WebNavigationType::Reload:
        return UIWebViewNavigationType::Reload;
    case host::WebNavigationType::FormResubmitted:
        return UIWebViewNavigationType::FormResubmitted;
    case host::WebNavigationType::Other:
        break;
    }
    return UIWebViewNavigationType::Other;
}

NSURLResponse responseOf(const NSURL& url, const host::WebResponse& answer) {
    const NSURLResponse head(url, answer.status, answer.headers, answer.mimeType, -1);
    return {url, answer.status, answer.headers, answer.mimeType, announcedLength(head)};
}

}
