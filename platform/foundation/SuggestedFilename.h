#pragma once
#include <string>
#include <string_view>

namespace vistrel {

/// The name under which to save a response: the file name of its Content-Disposition header
/// (RFC 6266; extended form of RFC 8187 first, then the quoted or token form), else the last
/// segment of the address, percent-decoded, else its host; with an extension that fits the media
/// type added when the name has none that does. Always a plain name.
std::string suggestedFilename(std::string_view contentDisposition, std::string_view url,
                              std::string_view mimeType);

/// Reduces any text to a plain name: no separators, controls or direction overrides, valid
/// UTF-8, not "." or "..", not hidden by a leading dot, at most 255 bytes with the extension kept,
/// never empty. Cleaning twice changes nothing.
std::string plainFilename(std::string_view name);

}
