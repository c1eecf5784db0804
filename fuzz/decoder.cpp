#include "ads/encoding/GAD_StringEncoding.h"
#include "fuzz/Check.h"

#include <array>
#include <cstdint>
#include <string>

namespace {
using namespace vistrel;

std::shared_ptr<GAD_StringEncoding> encodingFor(unsigned choice) {
    static const std::string all = [] {
        std::string characters;
        for (int c = 0; c < 128; ++c)
            characters += static_cast<char>(c);
        return characters;
    }();
    static const std::array<std::shared_ptr<GAD_StringEncoding>, 10> encodings = {
        GAD_StringEncoding::binaryStringEncoding(),
        GAD_StringEncoding::hexStringEncoding(),
        GAD_StringEncoding::rfc4648Base32StringEncoding(),
        GAD_StringEncoding::rfc4648Base32HexStringEncoding(),
        GAD_StringEncoding::crockfordBase32StringEncoding(),
        GAD_StringEncoding::rfc4648Base64StringEncoding(),
        GAD_StringEncoding::rfc4648Base64WebsafeStringEncoding(),
        GAD_StringEncoding::stringEncodingWithString("ACGT"),
        GAD_StringEncoding::stringEncodingWithString("01234567"),
        GAD_StringEncoding::stringEncodingWithString(all)};
    return encodings[choice % encodings.size()];
}
}

/// Decoded bytes survive encoding and decoding, and so do any other bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const auto encoding = encodingFor(data[0]);
    const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
    if (const auto bytes = encoding->decode(text))
        fuzz::check(encoding->decode(encoding->encode(*bytes)) == bytes, "decoded bytes survive");
    const auto decoded = encoding->decode(encoding->encodeString(text));
    fuzz::check(decoded.has_value() && decoded->size() == text.size() &&
                    std::equal(decoded->begin(), decoded->end(),
                               reinterpret_cast<const std::byte*>(text.data())),
                "any bytes survive");
    return 0;
}
