#include "platform/linux/network/BodyDecoder.h"

#include "tests/linux/network/Packed.h"

namespace vistrel {
namespace {

/// What comes out when so many bytes at a time go in; "cut" when the body does not end there.
std::string unpacked(const char* coding, const std::string& body, std::size_t piece) {
    const auto decoder = BodyDecoder::forCoding(coding);
    std::string text;
    std::vector<std::byte> output(11);
    const auto input = std::as_bytes(std::span(body));
    for (std::size_t at = 0; at < input.size();) {
        const auto step =
            decoder->decode(input.subspan(at, std::min(piece, input.size() - at)), output);
        at += step.read;
        text.append(reinterpret_cast<const char*>(output.data()), step.written);
        if (step.state == BodyDecoder::State::Damaged)
            return "damaged";
    }
    return decoder->isComplete() ? text : "cut";
}

TEST(BodyDecoder, PiecesOfAnySizeMakeTheSameText) {
    const std::string text = "some text that is packed";
    const std::string member = packed(text);
    const std::string padded = member + std::string(9, '\0');
    std::string damaged = member;
    damaged[member.size() - 6] ^= 1; // in the checksum
    const std::tuple<const char*, const char*, std::string, std::string> rows[] = {
        {"one member", "gzip", member, text},
        {"two members", "x-gzip", member + packed(", and more"), text + ", and more"},
        {"padding", "gzip", padded, text},
        {"padding that looks like a member", "gzip", padded + "\x1F junk", text},
        {"cut", "gzip", member.substr(0, member.size() - 1), "cut"},
        {"no trailer", "gzip", member.substr(0, member.size() - 8), "cut"},
        {"a wrong checksum", "gzip", damaged, "damaged"},
        {"not packed", "gzip", text, "damaged"},
        {"deflate", "Deflate", packed(text, G_ZLIB_COMPRESSOR_FORMAT_ZLIB), text},
        {"no header", "deflate", packed(text, G_ZLIB_COMPRESSOR_FORMAT_RAW), text},
    };
    for (const auto& [name, coding, body, result] : rows) {
        for (std::size_t piece = 1; piece <= body.size(); ++piece)
            ASSERT_EQ(unpacked(coding, body, piece), result) << name << " by " << piece;
    }
}

}
}
