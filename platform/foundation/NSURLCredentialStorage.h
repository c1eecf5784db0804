#pragma once
#include "platform/foundation/NSURL.h"

#include <map>
#include <string>

namespace vistrel {

/// A name and a password that the user has given to a server.
struct NSURLCredential {
    std::string user;
    std::string password;
    bool isBasic = true; ///< the server takes the password as it is: RFC 7617
};

/// The credentials of this run, by origin (scheme, host and port). Kept in memory only.
class NSURLCredentialStorage {
public:
    static NSURLCredentialStorage& sharedCredentialStorage();

    /// Null when there is none for the address's origin.
    const NSURLCredential* credentialForURL(const NSURL& url) const;
    void setCredentialForURL(NSURLCredential credential, const NSURL& url);
    void removeCredentialForURL(const NSURL& url);
    void removeAll() { credentials_.clear(); }
    /// The Authorization field of a request; empty without a credential that can be sent in one.
    std::string authorizationForURL(const NSURL& url) const;

private:
    std::map<std::string, NSURLCredential> credentials_;
};

/// "scheme://host:port" in lower case, the scheme's own port left out.
std::string originOf(const NSURL& url);

}
