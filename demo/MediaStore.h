#pragma once
#include "demo/Answer.h"

#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace vistrel::demo {

/// One file of the site. Several may have the same bytes under another name or type.
struct MediaFile {
    std::string_view name;   ///< last segment of its address, below /media/
    std::string_view source; ///< file in the media folder
    std::string_view type;   ///< media type, sent exactly so
    std::string_view title;
    std::string_view note;
};

/// All files below /media/.
std::span<const MediaFile> mediaFiles();

/// The media folder, read into memory once.
class MediaStore {
public:
    explicit MediaStore(const std::string& folder);

    /// Responds with the file of that name, or with "not found".
    Answer file(std::string_view name) const;

    /// Responds with a file that fits the extension of `name`; the number before the extension
    /// ("amber-ferry-2.mp4") chooses which.
    Answer episode(std::string_view name) const;

private:
    struct Contents {
        std::shared_ptr<const std::string> bytes;
        std::string lastModified;
        std::string entityTag;
    };

    Answer answerWith(const MediaFile& file) const;

    std::map<std::string, Contents, std::less<>> contents_;
};
}
