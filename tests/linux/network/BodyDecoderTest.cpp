#include "platform/linux/network/BodyDecoder.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vistrel {
namespace {

std::string gzipped(std::string text) {
    std::string packed(compressBound(text.size()) + 32, '\0');
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, MAX_WBITS + 16, MAX_MEM_LEVEL,
                 Z_DEFAULT_STRATEGY);
    stream.next_in = reinterpret_cast<Bytef*>(text.data());
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

/// What comes out when so many bytes at a time go in; "cut" when the body does not end there.
std::string unpacked(const std::string& body, std::size_t piece) {
    const auto decoder = BodyDecoder::forCoding("gzip");
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
    const std::string member = gzipped("some text that is packed");
    const struct {
        const char* name;
        std::string body;
        const char* text;
    } rows[] = {
        {"one member", member, "some text that is packed"},
        {"two members", member + gzipped(", and more"), "some text that is packed, and more"},
        {"padding", member + std::string(9, '\0'), "some text that is packed"},
        {"padding that looks like a member", member + std::string(9, '\0') + "\x1F junk",
         "some text that is packed"},
        {"cut", member.substr(0, member.size() - 1), "cut"},
    };
    for (const auto& row : rows) {
        for (std::size_t piece = 1; piece <= row.body.size(); ++piece)
            ASSERT_EQ(unpacked(row.body, piece), row.text) << row.name << " by " << piece;
    }
}

}
}
