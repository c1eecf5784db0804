#pragma once
#include "platform/foundation/NSURL.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vistrel {

/// A response's head: its type, its length, and a name for its file.
class NSURLResponse {
public:
    using HeaderFields = std::vector<std::pair<std::string, std::string>>;

    NSURLResponse(NSURL URL, int statusCode, HeaderFields allHeaderFields, std::string MIMEType,
                  std::int64_t expectedContentLength);

    /// The address that answered, after redirects.
    const NSURL& URL() const { return URL_; }
    int statusCode() const { return statusCode_; }
    /// Type and subtype exactly as sent, without parameters.
    const std::string& MIMEType() const { return MIMEType_; }
    /// Bytes announced; -1 when unknown, or when the response is compressed.
    std::int64_t expectedContentLength() const { return expectedContentLength_; }
    const HeaderFields& allHeaderFields() const { return fields_; }
    /// Names are case-insensitive. The values of a repeated field are joined with ", ";
    /// empty when absent.
    std::string valueForHTTPHeaderField(std::string_view field) const;

    /// A plain file name, safe inside any folder; see SuggestedFilename.h.
    std::string suggestedFilename() const;

private:
    NSURL URL_;
    int statusCode_;
    HeaderFields fields_;
    std::string MIMEType_;
    std::int64_t expectedContentLength_;
};

}
