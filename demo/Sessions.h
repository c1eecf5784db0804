#pragma once
#include <set>
#include <string>

namespace vistrel::demo {

/// The open sessions, identified by the token in their cookie.
class Sessions {
public:
    /// Opens a session and returns its token.
    std::string open();
    void close(const std::string& token);
    bool isOpen(const std::string& token) const { return tokens_.contains(token); }

private:
    std::set<std::string> tokens_;
};
}
