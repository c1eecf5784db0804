#include "fuzz/Check.h"
#include "platform/linux/network/BodyDecoder.h"
#include "platform/linux/network/HTTPHead.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {
using namespace vistrel;

void checkHead(std::string_view text) {
    HTTPHead head;
    bool fits = true;
    while (fits && !text.empty()) {
        const auto end = std::min(text.find('\n'), text.size() - 1) + 1;
        fits = head.take(text.substr(0, end));
        text.remove_prefix(end);
    }
    fuzz::check(head.fields().size() <= 1001, "a head has an end");
    fuzz::check(!head.isComplete() || head.status() >= 200, "interim answers are passed over");
    (void)head.mimeType();
    (void)head.location();
}

struct Decoded {
    std::vector<std::byte> bytes;
    bool complete = false;
};

/// Decompresses with the given chunk sizes for input and output.
Decoded decoded(std::string_view coding, std::span<const std::byte> input, std::size_t inSize,
                std::size_t outSize) {
    const auto decoder = BodyDecoder::forCoding(coding);
    Decoded result;
    std::vector<std::byte> output(outSize);
    std::size_t at = 0;
    for (;;) {
        const auto piece = input.subspan(at, std::min(inSize, input.size() - at));
        const auto step = decoder->decode(piece, output);
        fuzz::check(step.read <= piece.size() && step.written <= outSize, "no step runs over");
        at += step.read;
        result.bytes.insert(result.bytes.end(), output.begin(),
                            output.begin() + static_cast<std::ptrdiff_t>(step.written));
        const bool goesOn = step.state == BodyDecoder::State::MoreOutput ||
                            step.state == BodyDecoder::State::MoreInput;
        fuzz::check(!goesOn || step.read + step.written > 0 || at == input.size(),
                    "each step gets on");
        if (!goesOn || (at == input.size() && step.state == BodyDecoder::State::MoreInput))
            break;
    }
    result.complete = decoder->isComplete();
    return result;
}
}

/// A response's head, and a compressed body that arrives in pieces of any size.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    checkHead({reinterpret_cast<const char*>(data), size});
    const auto bytes = std::as_bytes(std::span(data, size));
    for (const char* coding : {"gzip", "deflate"}) {
        const Decoded whole = decoded(coding, bytes, size + 1, 65536);
        const Decoded pieces = decoded(coding, bytes, 7, 11);
        fuzz::check(whole.complete == pieces.complete, "the pieces make no difference to the end");
        fuzz::check(!whole.complete || whole.bytes == pieces.bytes, "nor to the bytes");
    }
    return 0;
}
