#include "ads/Network/GADCachedFile.h"

#include "ads/Network/GADCachedFilePath.h"
#include "ads/Network/GADHTTPDate.h"
#include "ads/Network/GADNetworkUtilities.h"
#include "ads/Utility/GADTextualDescription.h"
#include "ads/Utility/GADTime.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSURLConnection.h"
#include "platform/foundation/NSURLRequest.h"
#include "platform/foundation/UTF8Text.h"

#include <array>
#include <cstdio>
#include <utility>

namespace vistrel {

namespace {

/// The current time in whole seconds.
std::string uniqueText() {
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.0f", gadAbsoluteTime());
    return buffer.data();
}

std::string folderOf(const std::string& path) {
    return path.substr(0, path.rfind('/'));
}

}

GADCachedFile::GADCachedFile(std::weak_ptr<GADCachedFileDelegate> delegate, NSURL url)
    : delegate_(std::move(delegate))
    , sourceURL_(std::move(url))
    , httpDestinationURL_(sourceURL_) {}

std::shared_ptr<GADCachedFile>
GADCachedFile::withDelegateURL(std::weak_ptr<GADCachedFileDelegate> delegate, NSURL url) {
    return std::shared_ptr<GADCachedFile>(new GADCachedFile(std::move(delegate), std::move(url)));
}

GADCachedFile::~GADCachedFile() {
    cleanUp();
}

void GADCachedFile::validate() {
    beginFetchWithCacheBuster(CacheBuster::No);
}

void GADCachedFile::validateWithCacheBuster() {
    beginFetchWithCacheBuster(CacheBuster::Yes);
}

void GADCachedFile::cancel() {
    const auto self = shared_from_this();
    cleanUp();
}

void GADCachedFile::invalidate() {
    const auto self = shared_from_this();
    cleanUp();
    // A missing file counts as deleted.
    (void)NSFileManager::defaultManager().removeItemAtPath(filePath());
}

std::optional<std::string> GADCachedFile::content() {
    const auto bytes = NSFileManager::defaultManager().contentsAtPath(filePath());
    if (!bytes)
        return std::nullopt;
    std::string text(reinterpret_cast<const char*>(bytes->data()), bytes->size());
    if (!isUTF8(text))
        return std::nullopt;
    return text;
}

bool GADCachedFile::hasContent() {
    return NSFileManager::defaultManager().fileExistsAtPath(filePath());
}

const std::string& GADCachedFile::filePath() {
    if (filePath_.empty())
        filePath_ = gadCachedFilePath(sourceURL_);
    return filePath_;
}

std::optional<std::string> GADCachedFile::fileModificationDate() {
    const auto attributes = NSFileManager::defaultManager().attributesOfItemAtPath(filePath());
    if (!attributes)
        return std::nullopt;
    return GADHTTPDate::stringWithSeconds(attributes->modificationTime);
}

std::string GADCachedFile::description() {
    return "<GADCachedFile: " + gadAddressText(this) +
           "> HTTP code: " + std::to_string(httpStatusCode_) +
           "\n\turl: " + sourceURL_.absoluteString() + "\n\tfile: " + filePath();
}

void GADCachedFile::beginFetchWithCacheBuster(CacheBuster cacheBuster) {
    if (connection_)
        return;
    auto request = requestWithCacheBuster(cacheBuster);
    if (!request) {
        reportFailure(nullptr);
        return;
    }
    receivedData_.clear();
    std::shared_ptr<NSURLConnectionDelegate> self(shared_from_this(), this);
    connection_ = NSURLConnection::withRequestDelegate(std::move(*request), std::move(self));
}

std::optional<NSURLRequest> GADCachedFile::requestWithCacheBuster(CacheBuster cacheBuster) {
    std::optional<NSURL> url = sourceURL_;
    if (cacheBuster == CacheBuster::Yes)
        url = GADNetworkUtilities::appendQueryKeyValueToURL("unique", uniqueText(), sourceURL_);
    if (!url)
        return std::nullopt;
    NSURLRequest request(std::move(url), NSURLRequestCachePolicy::ReloadIgnoringLocalCacheData);
    request.setCookies(NSURLRequestCookies::SendAndStore);
    if (!GADNetworkUtilities::userAgentString().empty())
        request.setValueForHTTPHeaderField(GADNetworkUtilities::userAgentString(), "User-Agent");
    if (auto date = fileModificationDate())
        request.setValueForHTTPHeaderField(std::move(*date), "If-Modified-Since");
    return request;
}

std::optional<NSURLRequest> GADCachedFile::connectionWillSendRequestRedirectResponse(
    NSURLConnection&, const NSURLRequest& request, const NSURLResponse* redirectResponse) {
    if (request.URL())
        httpDestinationURL_ = *request.URL();
    if (!redirectResponse)
        return request;
    httpHeaders_ = redirectResponse->allHeaderFields();
    const auto asked = delegate();
    const auto veto =
        asked ? asked->cachedFileShouldRedirectToURL(*this, httpDestinationURL_) : std::nullopt;
    if (!veto)
        return request;
    cleanUp();
    reportFailure(&*veto);
    return std::nullopt;
}

void GADCachedFile::connectionDidReceiveResponse(NSURLConnection&, const NSURLResponse& response) {
    httpStatusCode_ = response.statusCode();
    httpHeaders_ = response.allHeaderFields();
    receivedData_.clear();
    if (httpStatusCode_ == 200) {
        const std::string date = response.valueForHTTPHeaderField("Last-Modified");
        receivedModificationDate_ = date.substr(0, date.find("GMT"));
        return;
    }
    const bool isCurrent = httpStatusCode_ == 304;
    cleanUp();
    if (isCurrent)
        reportEnd();
    else
        reportFailure(nullptr);
}

void GADCachedFile::connectionDidReceiveData(NSURLConnection&, std::span<const std::byte> data) {
    receivedData_.insert(receivedData_.end(), data.begin(), data.end());
}

void GADCachedFile::connectionDidFinishLoading(NSURLConnection&) {
    const auto error = storeReceivedData();
    const auto modified = GADHTTPDate::secondsWithString(receivedModificationDate_);
    cleanUp();
    if (error) {
        reportFailure(&*error);
        return;
    }
    reportEnd();
    if (modified)
        (void)NSFileManager::defaultManager().setModificationTimeOfItemAtPath(filePath(),
                                                                              *modified);
}

void GADCachedFile::connectionDidFailWithError(NSURLConnection&, const NSError& error) {
    cleanUp();
    reportFailure(&error);
}

std::optional<NSError> GADCachedFile::storeReceivedData() {
    NSFileManager& files = NSFileManager::defaultManager();
    const std::string folder = folderOf(filePath());
    // If the folder cannot be created, the write reports why.
    if (!files.fileExistsAtPath(folder))
        (void)files.createDirectoryAtPath(folder, true);
    return files.writeAtomicallyToPath(filePath(), receivedData_);
}

void GADCachedFile::reportEnd() {
    if (const auto told = delegate())
        told->cachedFileDownloadDidEnd(*this);
}

void GADCachedFile::reportFailure(const NSError* error) {
    if (const auto told = delegate())
        told->cachedFileDownloadDidFail(*this, error);
}

void GADCachedFile::cleanUp() {
    if (const auto connection = std::exchange(connection_, nullptr))
        connection->cancel();
    receivedData_ = {};
    receivedModificationDate_.clear();
}

}
