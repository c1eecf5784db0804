#pragma once
#include <string>
#include <utility>
#include <vector>

namespace vistrel {

/// What of a request changes from one hop of a redirect to the next.
struct HTTPRedirect {
    using HeaderFields = std::vector<std::pair<std::string, std::string>>;

    int status;
    std::string from; ///< addresses
    std::string to;

    /// 303, and a redirected POST, go on as GET: RFC 9110, 15.4.
    std::string methodAfter(const std::string& method) const;
    /// Another site gets no credentials, and of the referring page only the site. A method without
    /// a body has no Content-Type.
    HeaderFields fieldsAfter(HeaderFields fields, const std::string& method) const;
};

}
