#pragma once
#include "platform/foundation/Value.h"

#include <memory>
#include <string>

namespace vistrel {

/// A failure as a value: its domain, its code, and a sentence for people.
class NSError {
public:
    NSError(std::string domain, int code, std::string localizedDescription,
            std::shared_ptr<const NSError> underlyingError = nullptr);
    /// The description is the user info's text under NSLocalizedDescriptionKey.
    NSError(std::string domain, int code, Value::Dictionary userInfo);
    NSError(const NSError&) = default;
    NSError(NSError&&) = default;
    NSError& operator=(const NSError&) = default;
    NSError& operator=(NSError&&) = default;
    /// Frees a chain of underlying errors of any length without recursing.
    ~NSError();

    const std::string& domain() const { return domain_; }
    int code() const { return code_; }
    const std::string& localizedDescription() const { return localizedDescription_; }
    /// The error that caused this one, or null.
    const std::shared_ptr<const NSError>& underlyingError() const { return underlyingError_; }

    const Value::Dictionary& userInfo() const { return userInfo_; }

    /// As it appears in the log: domain, code and description.
    std::string description() const;

private:
    std::string domain_;
    int code_;
    std::string localizedDescription_;
    std::shared_ptr<const NSError> underlyingError_;
    Value::Dictionary userInfo_;
};

/// Keys of the user info.
inline constexpr const char* NSLocalizedDescriptionKey = "NSLocalizedDescription";
inline constexpr const char* NSLocalizedFailureReasonErrorKey = "NSLocalizedFailureReason";

inline constexpr const char* NSPOSIXErrorDomain = "NSPOSIXErrorDomain";
inline constexpr const char* NSURLErrorDomain = "NSURLErrorDomain";

/// Codes of NSURLErrorDomain, with the phone's numbers.
enum NSURLErrorCode : int {
    NSURLErrorUnknown = -1,
    NSURLErrorCancelled = -999,
    NSURLErrorBadURL = -1000,
    NSURLErrorTimedOut = -1001,
    NSURLErrorUnsupportedURL = -1002,
    NSURLErrorCannotConnectToHost = -1004,
    NSURLErrorNetworkConnectionLost = -1005,
    NSURLErrorHTTPTooManyRedirects = -1007,
    NSURLErrorSecureConnectionFailed = -1200,
    NSURLErrorServerCertificateUntrusted = -1202,
};

}
