#pragma once
#include <span>
#include <string>
#include <string_view>

namespace vistrel::demo {

/// A media file sent with a difficult Content-Disposition header.
struct Attachment {
    std::string_view title;
    std::string disposition; ///< the header's exact value; empty: not sent
    std::string_view file = "short-signal.mp3";
    std::string_view lastSegment = {}; ///< of its address, for names taken from it; unescaped
};

/// Number N of the table has the address /attach/N, or /attach/N/SEGMENT.
std::span<const Attachment> attachments();
}
