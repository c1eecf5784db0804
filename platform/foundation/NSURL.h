#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace vistrel {

/// An absolute or relative address (RFC 3986). A value type; its parts are verbatim pieces of the
/// text, percent escapes included, unless a member says otherwise.
class NSURL {
public:
    /// Nothing when the text is not an address: empty, blanks, control characters, characters
    /// outside ASCII, quotes, angle brackets, malformed escapes, an http address without a host.
    /// What page engines leave unescaped beyond RFC 3986 (| ^ { } ` \ and brackets outside the
    /// host) is accepted.
    static std::optional<NSURL> URLWithString(std::string_view text);
    /// The "file" address of an absolute path; characters that an address may not contain are
    /// escaped.
    static NSURL fileURLWithPath(std::string_view path);

    const std::string& absoluteString() const { return text_; }
    std::string scheme() const; ///< as written, without ":"
    std::string host() const;
    std::optional<int> port() const;
    std::string path() const;              ///< percent escapes removed
    std::string escapedPath() const;       ///< as written
    std::string query() const;             ///< without "?"
    std::string fragment() const;          ///< without "#"
    std::string lastPathComponent() const; ///< percent escapes removed
    bool isFileURL() const;
    /// http or https, in any case.
    bool isHTTP() const;

    friend bool operator==(const NSURL&, const NSURL&) = default;

private:
    explicit NSURL(std::string text)
        : text_(std::move(text)) {}
    std::string text_;
};

}
