#pragma once
#include "platform/host/Network.h"
#include "platform/linux/NativeReference.h"

#include <libsoup/soup.h>

#include <string>

namespace vistrel {

/// The cookies of one exchange with all of its hops. What a server sets goes into the shared jar;
/// with CookieUse::SendOnly it lives as long as the exchange.
class ExchangeCookies {
public:
    /// `mainDocument` is the page that makes the request: cookies that are not meant for its
    /// requests to other sites are left out, as for a frame. Empty for the application's own.
    ExchangeCookies(host::CookieUse use, const std::string& mainDocument);
    ~ExchangeCookies();
    ExchangeCookies(const ExchangeCookies&) = delete;
    ExchangeCookies& operator=(const ExchangeCookies&) = delete;

    /// The value of the Cookie field for an address; empty when there is none.
    [[nodiscard]] std::string fieldFor(GUri* uri) const;
    /// A Set-Cookie field from that address.
    void take(GUri* uri, const std::string& field);

private:
    host::CookieUse use_;
    GUri* mainDocument_; ///< null: none
    NativeReference<SoupCookieJar> jar_;
};

}
