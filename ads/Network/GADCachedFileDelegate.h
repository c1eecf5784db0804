#pragma once
#include "platform/foundation/NSError.h"

#include <optional>

namespace vistrel {

class GADCachedFile;
class NSURL;

/// Hears how a cached file's fetch goes. It may start, cancel or let go of the file in any of
/// these.
class GADCachedFileDelegate {
public:
    virtual ~GADCachedFileDelegate() = default;
    /// The file is current.
    virtual void cachedFileDownloadDidEnd(GADCachedFile& file) = 0;
    /// No error: the connection could not be made, or the status was an unexpected one.
    virtual void cachedFileDownloadDidFail(GADCachedFile& file, const NSError* error) = 0;
    /// Nothing follows the redirect; an error stops the fetch.
    virtual std::optional<NSError> cachedFileShouldRedirectToURL(GADCachedFile& file,
                                                                 const NSURL& url) = 0;
};

}
