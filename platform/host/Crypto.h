#pragma once
#include "platform/host/Result.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace vistrel::host {

/// Digests and ciphers that existing servers require; neither protects a secret.
class Crypto {
public:
    using Block = std::array<std::byte, 16>;

    virtual ~Crypto() = default;
    virtual Block md5(std::span<const std::byte> bytes) = 0;
    virtual std::array<std::byte, 32> sha256(std::span<const std::byte> bytes) = 0;
    /// AES-128 in CBC mode, without padding: a text that is not a whole number
    /// of blocks fails.
    virtual Result<std::vector<std::byte>> aes128CBCEncrypt(const Block& key,
                                                            const Block& initialisationVector,
                                                            std::span<const std::byte> text) = 0;
};

}
