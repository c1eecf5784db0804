#include "platform/linux/network/BodyDecoder.h"

#include "platform/foundation/HeaderFieldNames.h"

namespace vistrel {

namespace {

constexpr int kGzipFormat = MAX_WBITS + 16;
constexpr int kZlibFormat = MAX_WBITS;
constexpr int kNoFormat = -MAX_WBITS;
/// The first byte of a gzip member; a body may have several.
constexpr std::byte kGzipStart{0x1F};
/// A body may grow by this factor, and to this size in any case.
constexpr std::uint64_t kMostGrowth = 100;
constexpr std::uint64_t kHarmlessSize = std::uint64_t{16} * 1024 * 1024;

}

std::unique_ptr<BodyDecoder> BodyDecoder::forCoding(std::string_view coding) {
    const auto is = [coding](std::string_view name) {
        return headerFieldNamesAreEqual(coding, name);
    };
    if (!is("gzip") && !is("x-gzip") && !is("deflate"))
        return nullptr;
    return std::unique_ptr<BodyDecoder>(new BodyDecoder(!is("deflate")));
}

BodyDecoder::BodyDecoder(bool isGzip)
    : isGzip_(isGzip) {
    inflateInit2(&stream_, kGzipFormat);
}

BodyDecoder::~BodyDecoder() {
    inflateEnd(&stream_);
}

bool BodyDecoder::restart(std::byte first) {
    // "deflate" is the zlib format, but some servers leave its header out. Its first byte ends
    // in 8.
    const bool hasHeader = (first & std::byte{0x0F}) == std::byte{8};
    const int format = isGzip_ ? kGzipFormat : hasHeader ? kZlibFormat : kNoFormat;
    started_ = true;
    complete_ = false;
    return inflateReset2(&stream_, format) == Z_OK;
}

BodyDecoder::Step BodyDecoder::decode(std::span<const std::byte> input,
                                      std::span<std::byte> output) {
    const auto used = [&] {
        return input.size() - stream_.avail_in;
    };
    const auto made = [&] {
        return output.size() - stream_.avail_out;
    };
    stream_.next_in = reinterpret_cast<Bytef*>(const_cast<std::byte*>(input.data()));
    stream_.avail_in = static_cast<uInt>(input.size());
    stream_.next_out = reinterpret_cast<Bytef*>(output.data());
    stream_.avail_out = static_cast<uInt>(output.size());
    int result = Z_OK;
    while (stream_.avail_out > 0 && (stream_.avail_in > 0 || outputPending_)) {
        ended_ = ended_ || (complete_ && !(isGzip_ && input[used()] == kGzipStart));
        if (ended_) {
            stream_.avail_in = 0; // whatever follows is not part of the body
            break;
        }
        if ((!started_ || complete_) && !restart(input[used()]))
            return {State::Damaged, used(), made()};
        result = inflate(&stream_, Z_NO_FLUSH);
        outputPending_ = false;
        complete_ = result == Z_STREAM_END;
        if (result != Z_OK && !complete_)
            break;
    }
    outputPending_ = stream_.avail_out == 0 && !complete_;
    read_ += used();
    written_ += made();
    if (written_ > kHarmlessSize && written_ / kMostGrowth > read_)
        return {State::Bomb, used(), made()};
    if (result != Z_OK && result != Z_BUF_ERROR && result != Z_STREAM_END)
        return {State::Damaged, used(), made()};
    return {stream_.avail_out == 0 ? State::MoreOutput : State::MoreInput, used(), made()};
}

}
