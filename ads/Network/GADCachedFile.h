#pragma once
#include "ads/Network/GADCachedFileDelegate.h"
#include "platform/foundation/NSURL.h"
#include "platform/foundation/NSURLConnectionDelegate.h"
#include "platform/foundation/NSURLResponse.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vistrel {

class NSURLRequest;

/// One address and its copy on disk, fetched and revalidated over HTTP. A later failure never
/// removes the copy of a successful fetch. A running fetch keeps the object alive; the delegate is
/// not retained.
class GADCachedFile : public std::enable_shared_from_this<GADCachedFile>,
                      private NSURLConnectionDelegate {
public:
    static std::shared_ptr<GADCachedFile>
    withDelegateURL(std::weak_ptr<GADCachedFileDelegate> delegate, NSURL url);
    ~GADCachedFile() override;
    GADCachedFile(const GADCachedFile&) = delete;
    GADCachedFile& operator=(const GADCachedFile&) = delete;

    /// Starts a fetch unless one is running.
    void validate();
    /// Does the same with an address that no proxy can have cached.
    void validateWithCacheBuster();
    /// Stops the fetch; the copy stays.
    void cancel();
    /// Stops the fetch and deletes the copy.
    void invalidate();

    /// Empty when there is no copy or it is not UTF-8.
    std::optional<std::string> content();
    bool hasContent();
    const std::string& filePath();
    /// The copy's time in the server's format; empty without a copy.
    std::optional<std::string> fileModificationDate();

    const NSURL& sourceURL() const { return sourceURL_; }
    /// The address of the last request, including one that the delegate prevented.
    const NSURL& httpDestinationURL() const { return httpDestinationURL_; }
    /// Of the last response that was not a redirect; 0 before the first.
    int httpStatusCode() const { return httpStatusCode_; }
    /// Of the last response, including redirects.
    const NSURLResponse::HeaderFields& httpHeaders() const { return httpHeaders_; }
    std::shared_ptr<GADCachedFileDelegate> delegate() const { return delegate_.lock(); }
    void setDelegate(std::weak_ptr<GADCachedFileDelegate> delegate) {
        delegate_ = std::move(delegate);
    }
    std::string description();

private:
    enum class CacheBuster { No, Yes };

    GADCachedFile(std::weak_ptr<GADCachedFileDelegate> delegate, NSURL url);
    void beginFetchWithCacheBuster(CacheBuster cacheBuster);
    std::optional<NSURLRequest> requestWithCacheBuster(CacheBuster cacheBuster);
    std::optional<NSError> storeReceivedData();
    void reportEnd();
    void reportFailure(const NSError* error);
    /// Comes before every report, so that the delegate may start the next fetch.
    void cleanUp();

    std::optional<NSURLRequest>
    connectionWillSendRequestRedirectResponse(NSURLConnection& connection,
                                              const NSURLRequest& request,
                                              const NSURLResponse* redirectResponse) override;
    void connectionDidReceiveResponse(NSURLConnection& connection,
                                      const NSURLResponse& response) override;
    void connectionDidReceiveData(NSURLConnection& connection,
                                  std::span<const std::byte> data) override;
    void connectionDidFinishLoading(NSURLConnection& connection) override;
    void connectionDidFailWithError(NSURLConnection& connection, const NSError& error) override;

    std::weak_ptr<GADCachedFileDelegate> delegate_;
    NSURL sourceURL_;
    std::string filePath_;
    std::shared_ptr<NSURLConnection> connection_;
    std::vector<std::byte> receivedData_;
    std::string receivedModificationDate_;
    NSURL httpDestinationURL_;
    int httpStatusCode_ = 0;
    NSURLResponse::HeaderFields httpHeaders_;
};

}
