#pragma once
#include "platform/foundation/NSError.h"

#include <optional>

namespace vistrel {

class GADCachedFile;
class NSURL;

/// Receives the events of a cached file's fetch. May start, cancel or release the file in any of
/// these calls.
class GADCachedFileDelegate {
public:
    virtual ~GADCachedFileDelegate() = default;
    /// The copy is up to date.
    virtual void cachedFileDownloadDidEnd(GADCachedFile& file) = 0;
    /// `error` is null when the connection could not be made or the status was unexpected.
    virtual void cachedFileDownloadDidFail(GADCachedFile& file, const NSError* error) = 0;
    /// Return nothing to follow the redirect, or an error to stop the fetch.
    virtual std::optional<NSError> cachedFileShouldRedirectToURL(GADCachedFile& file,
                                                                 const NSURL& url) = 0;
};

}
