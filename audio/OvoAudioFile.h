#pragma once
#include "platform/foundation/NSURL.h"
#include "platform/foundation/Value.h"

#include <memory>
#include <optional>
#include <string>

namespace vistrel {
class UIImage;

/// One audio file and what its tags say of it. The file is read once: when the object is made, or,
/// for a long list that must not hold the screen up, when something is first asked of it.
class OvoAudioFile {
public:
    enum class Reading { AtOnce, WhenAsked };

    /// `filePath` is a file address.
    explicit OvoAudioFile(NSURL filePath, Reading reading = Reading::AtOnce);
    static std::shared_ptr<OvoAudioFile> withPath(const NSURL& filePath) {
        return std::make_shared<OvoAudioFile>(filePath);
    }

    /// The file's info dictionary, nothing when it cannot be read. Each step that fails is logged.
    std::optional<Value> songID3Tags() const;
    /// Reads the file unless that was done.
    void readIfNeeded() const;
    bool isRead() const { return read_; }

    /// Without one in the tags, the end of the address, percent escapes included.
    std::string title() const;
    std::string artist() const; ///< empty when unknown
    std::string album() const;  ///< empty when unknown
    float duration() const;     ///< seconds, 0 when unknown
    std::string durationInMinutes() const;
    /// The same picture for every file.
    std::shared_ptr<const UIImage> coverImage() const;

    const NSURL& filePath() const { return filePath_; }
    void setFilePath(NSURL filePath) { filePath_ = std::move(filePath); }
    const std::optional<Value>& fileInfoDict() const;
    void setFileInfoDict(std::optional<Value> fileInfoDict);

private:
    std::optional<std::string> text(const char* key) const;

    NSURL filePath_;
    mutable std::optional<Value> fileInfoDict_;
    mutable bool read_ = false;
};

}
