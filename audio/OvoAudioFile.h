#pragma once
#include "platform/foundation/NSURL.h"
#include "platform/foundation/Value.h"

#include <memory>
#include <optional>
#include <string>

namespace vistrel {
class UIImage;

/// An audio file and its tags. The file is read once: on construction, or, for a long list that
/// must not delay the screen, when something is first requested.
class OvoAudioFile {
public:
    enum class Reading { AtOnce, WhenAsked };

    /// `filePath` is a file URL.
    explicit OvoAudioFile(NSURL filePath, Reading reading = Reading::AtOnce);
    static std::shared_ptr<OvoAudioFile> withPath(const NSURL& filePath) {
        return std::make_shared<OvoAudioFile>(filePath);
    }

    /// The file's info dictionary, nothing when it cannot be read. Logs each step that fails.
    std::optional<Value> songID3Tags() const;
    /// Reads the file unless it has been read.
    void readIfNeeded() const;
    bool isRead() const { return read_; }

    /// The tag's title, or the last part of the URL, including percent escapes.
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
