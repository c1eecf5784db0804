#include "platform/foundation/NSURLCredentialStorage.h"

#include <cstdint>
#include <utility>

namespace vistrel {

namespace {

std::string lowerCased(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return text;
}

std::string base64(const std::string& bytes) {
    constexpr const char* kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string result;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        for (std::size_t j = 0; j < 3; ++j)
            group =
                group << 8 | (i + j < bytes.size() ? static_cast<unsigned char>(bytes[i + j]) : 0U);
        for (std::size_t j = 0; j < 4; ++j)
            result += i + j <= bytes.size() ? kDigits[group >> (18 - 6 * j) & 63] : '=';
    }
    return result;
}

}

std::string originOf(const NSURL& url) {
    const std::string scheme = lowerCased(url.scheme());
    std::string origin = scheme + "://" + lowerCased(url.host());
    const int usual = scheme == "https" ? 443 : 80;
    if (const auto port = url.port(); port && *port != usual)
        origin += ":" + std::to_string(*port);
    return origin;
}

NSURLCredentialStorage& NSURLCredentialStorage::sharedCredentialStorage() {
    static NSURLCredentialStorage storage;
    return storage;
}

const NSURLCredential* NSURLCredentialStorage::credentialForURL(const NSURL& url) const {
    const auto found = credentials_.find(originOf(url));
    return found == credentials_.end() ? nullptr : &found->second;
}

void NSURLCredentialStorage::setCredentialForURL(NSURLCredential credential, const NSURL& url) {
    credentials_.insert_or_assign(originOf(url), std::move(credential));
}

void NSURLCredentialStorage::removeCredentialForURL(const NSURL& url) {
    credentials_.erase(originOf(url));
}

std::string NSURLCredentialStorage::authorizationForURL(const NSURL& url) const {
    const NSURLCredential* credential = credentialForURL(url);
    return credential && credential->isBasic
               ? "Basic " + base64(credential->user + ":" + credential->password)
               : std::string();
}

}
