#pragma once
#include <span>
#include <string>
#include <string_view>

namespace vistrel::demo {

/// A media file sent with a Content-Disposition header that names it in a difficult way.
struct Attachment {
    std::string_view title;
    std::string disposition; ///< the header's value to the byte; empty: none is sent
    std::string_view file = "short-signal.mp3";
    std::string_view lastSegment = {}; ///< of its address, for names taken from there; unescaped
};

/// Number N of the table has the address /attach/N, or /attach/N/SEGMENT.
std::span<const Attachment> attachments();
}
