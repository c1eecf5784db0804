#pragma once
#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

namespace vistrel {

/// Decompresses a body with a Content-Encoding of gzip or deflate.
class BodyDecoder {
public:
    /// Null for any other coding: such a body is delivered as it arrives.
    static std::unique_ptr<BodyDecoder> forCoding(std::string_view coding);
    ~BodyDecoder();
    BodyDecoder(const BodyDecoder&) = delete;
    BodyDecoder& operator=(const BodyDecoder&) = delete;

    /// Also failures.
    enum class State { MoreInput, MoreOutput, Damaged, Bomb };
    struct Step {
        State state;
        std::size_t read;    ///< of the input
        std::size_t written; ///< to the output
    };
    /// Unpacks until the input is used up (MoreInput) or the output is full (MoreOutput). A Bomb is
    /// a body that grows far beyond what came over the network.
    Step decode(std::span<const std::byte> input, std::span<std::byte> output);

    /// Whether the compressed data has ended, with a matching checksum.
    bool isComplete() const { return complete_; }

private:
    explicit BodyDecoder(bool isGzip);
    [[nodiscard]] bool restart(std::byte first);

    z_stream stream_{};
    bool isGzip_;
    bool started_ = false;
    bool complete_ = false;
    bool ended_ = false;         ///< what follows is not part of the body
    bool outputPending_ = false; ///< the output was too small for all of the input
    std::uint64_t read_ = 0;
    std::uint64_t written_ = 0;
};

}
