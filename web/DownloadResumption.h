#pragma once
#include <cstdint>
#include <string>

namespace vistrel {
class NSURLRequest;
class NSURLResponse;

/// What must be known of a download that broke off to continue it.
class DownloadResumption {
public:
    DownloadResumption() = default;
    /// Of the answer that a download begins with.
    explicit DownloadResumption(const NSURLResponse& response);

    /// Whether the server gave the file a mark by which it can be recognised.
    bool isPossible() const { return !validator_.empty(); }
    /// Asks for what follows `offset`, if the file is still the same, and else for the whole.
    void addTo(NSURLRequest& request, std::int64_t offset) const;
    /// Whether the answer is what follows `offset` of the same file.
    bool continues(const NSURLResponse& response, std::int64_t offset) const;

private:
    std::string validator_; ///< a strong entity tag, else the time of the last change
};

}
