#include "platform/linux/media/MpegDuration.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>

namespace vistrel {

namespace {

/// A file's bytes, mapped for reading; empty when that fails.
class MappedFile {
public:
    explicit MappedFile(const std::string& path) {
        const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        struct stat status {};
        if (file >= 0 && ::fstat(file, &status) == 0 && status.st_size > 0) {
            size_ = static_cast<std::size_t>(status.st_size);
            void* memory = ::mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, file, 0);
            bytes_ = memory == MAP_FAILED ? nullptr : static_cast<const unsigned char*>(memory);
        }
        if (file >= 0)
            ::close(file);
    }
    ~MappedFile() {
        if (bytes_)
            ::munmap(const_cast<unsigned char*>(bytes_), size_);
    }
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    /// The part between two offsets, limited to the file.
    std::span<const unsigned char> part(std::int64_t begin, std::int64_t end) const {
        if (!bytes_)
            return {};
        const auto from =
            std::min(static_cast<std::size_t>(std::max<std::int64_t>(0, begin)), size_);
        const auto to =
            std::clamp(static_cast<std::size_t>(std::max<std::int64_t>(0, end)), from, size_);
        return {bytes_ + from, to - from};
    }

private:
    const unsigned char* bytes_ = nullptr;
    std::size_t size_ = 0;
};

struct Frame {
    std::size_t length = 0;
    double seconds = 0;
    int rate = 0;      ///< kbit/s
    unsigned kind = 0; ///< version, layer and sample rate: the same in all frames of a file
};

// ISO/IEC 11172-3 2.4.2.3 and 13818-3 2.4.2.3: kbit/s by rows of (version, layer) and index.
constexpr int kRates[5][16] = {
    {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448, 0}, // 1, I
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384, 0},    // 1, II
    {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0},     // 1, III
    {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256, 0},    // 2, I
    {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0},         // 2, II and III
};
constexpr std::size_t kMostSearched = std::size_t{64} << 10;
constexpr std::size_t kMostWalked = std::size_t{8} << 20;
constexpr int kSampleRates[3] = {44100, 48000, 32000};

std::optional<Frame> frameAt(std::span<const unsigned char> bytes, std::size_t at) {
    if (at + 4 > bytes.size() || bytes[at] != 0xFF || (bytes[at + 1] & 0xE0) != 0xE0)
        return std::nullopt;
    const unsigned version = (bytes[at + 1] >> 3) & 3; // 3: MPEG 1, 2: MPEG 2, 0: MPEG 2.5
    const unsigned layer = 4 - ((bytes[at + 1] >> 1) & 3);
    const unsigned rateIndex = bytes[at + 2] >> 4;
    const unsigned sampleRateIndex = (bytes[at + 2] >> 2) & 3;
    if (version == 1 || layer == 4 || sampleRateIndex == 3)
        return std::nullopt;
    const unsigned row = version == 3 ? layer - 1 : (layer == 1 ? 3 : 4);
    Frame frame;
    frame.rate = kRates[row][rateIndex];
    if (frame.rate == 0)
        return std::nullopt;
    const int sampleRate = kSampleRates[sampleRateIndex] >> (version == 3   ? 0
                                                             : version == 2 ? 1
                                                                            : 2);
    const int samples = layer == 1 ? 384 : (layer == 3 && version != 3 ? 576 : 1152);
    const int padding = (bytes[at + 2] >> 1) & 1;
    const int slots = samples / 8 * frame.rate * 1000 / sampleRate;
    frame.length = layer == 1 ? static_cast<std::size_t>(slots / 4 + padding) * 4
                              : static_cast<std::size_t>(slots + padding);
    frame.seconds = static_cast<double>(samples) / sampleRate;
    frame.kind = static_cast<unsigned>(bytes[at + 1] & 0x1E) << 8 | (bytes[at + 2] & 0x0CU);
    return frame;
}

/// Finds a frame that is followed by another of its kind and stores its position in `at`.
std::optional<Frame> findFrame(std::span<const unsigned char> bytes, std::size_t& at) {
    for (; at + 4 <= bytes.size(); ++at) {
        const auto frame = frameAt(bytes, at);
        if (!frame)
            continue;
        const auto next = frameAt(bytes, at + frame->length);
        if ((next && next->kind == frame->kind) || at + frame->length == bytes.size())
            return frame;
    }
    return std::nullopt;
}

}

bool MpegDuration::variesInRate(const std::string& path, std::int64_t firstFrame,
                                std::int64_t end) {
    constexpr std::size_t kPlaces = 6;
    constexpr int kFramesAtEach = 12;
    const MappedFile file(path);
    const auto bytes = file.part(firstFrame, end);
    int rate = 0;
    for (std::size_t place = 0; place < kPlaces; ++place) {
        const auto rest = bytes.subspan(bytes.size() / kPlaces * place);
        const auto near = rest.first(std::min(rest.size(), kMostSearched));
        std::size_t at = 0;
        auto frame = findFrame(near, at);
        for (int i = 0; frame && i < kFramesAtEach; ++i) {
            if (rate != 0 && frame->rate != rate)
                return true;
            rate = frame->rate;
            at += frame->length;
            frame = frameAt(near, at);
        }
    }
    return false;
}

double MpegDuration::byWalking(const std::string& path, std::int64_t firstFrame, std::int64_t end) {
    const MappedFile file(path);
    const auto bytes = file.part(firstFrame, end);
    double seconds = 0;
    std::size_t at = 0;
    // Far enough for a good estimate; a file of several hours must not delay the screen.
    const auto walked = bytes.first(std::min(bytes.size(), kMostWalked));
    while (at < walked.size()) {
        auto frame = frameAt(walked, at);
        if (!frame)
            frame = findFrame(walked, at);
        if (!frame)
            break;
        seconds += frame->seconds;
        at += frame->length;
    }
    return walked.empty()
               ? 0
               : seconds * static_cast<double>(bytes.size()) / static_cast<double>(walked.size());
}

}
