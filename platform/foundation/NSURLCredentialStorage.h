#pragma once
#include "platform/foundation/NSURL.h"

#include <map>
#include <string>

namespace vistrel {

/// A user name and password for a server.
struct NSURLCredential {
    std::string user;
    std::string password;
    bool isBasic = true; ///< the password is sent as it is: RFC 7617
};

/// The credentials of this run, by origin (scheme, host and port). Kept in memory only.
class NSURLCredentialStorage {
public:
    static NSURLCredentialStorage& sharedCredentialStorage();

    /// Null when the address's origin has none.
    const NSURLCredential* credentialForURL(const NSURL& url) const;
    void setCredentialForURL(NSURLCredential credential, const NSURL& url);
    void removeCredentialForURL(const NSURL& url);
    void removeAll() { credentials_.clear(); }
    /// The value of the Authorization field; empty without a Basic credential.
    std::string authorizationForURL(const NSURL& url) const;

private:
    std::map<std::string, NSURLCredential> credentials_;
};

/// "scheme://host:port" in lower case, without the scheme's default port.
std::string originOf(const NSURL& url);

}
