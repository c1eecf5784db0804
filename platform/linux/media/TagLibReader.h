#pragma once
#include "platform/host/Media.h"
#include "platform/linux/media/BufferedFile.h"

#include <memory>
#include <string>

namespace vistrel {

/// An audio file's tags and length. Reads the info when it is opened and the raw tag on request.
class TagLibReader : public host::AudioFileReader {
public:
    /// `machinePath` is a path on the machine. Fails with the system's error when the file cannot
    /// be read, and with EINVAL when it contains no sound.
    static host::Result<std::unique_ptr<host::AudioFileReader>>
    open(const std::string& machinePath);

    host::Result<std::vector<std::byte>> id3Tag() override;
    host::Result<Info> info() override { return info_; }

private:
    TagLibReader() = default;

    BufferedFile bytes_;
    Info info_;
};

}
