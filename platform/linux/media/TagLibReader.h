#pragma once
#include "platform/host/Media.h"
#include "platform/linux/media/BufferedFile.h"

#include <memory>
#include <string>

namespace vistrel {

/// One audio file's tags and length. The info is read when it is opened, the raw tag when it
/// is asked for.
class TagLibReader : public host::AudioFileReader {
public:
    /// `machinePath` lies on the machine. Fails with the system's reason when the file cannot be
    /// read, and with EINVAL when it holds no sound.
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
