#pragma once
#include "platform/host/Crypto.h"

namespace vistrel {

/// Digests by GLib, ciphers by libgcrypt: both are in the process anyway.
class LibraryCrypto : public host::Crypto {
public:
    Block md5(std::span<const std::byte> bytes) override;
    std::array<std::byte, 32> sha256(std::span<const std::byte> bytes) override;
    host::Result<std::vector<std::byte>> aes128CBCEncrypt(const Block& key,
                                                          const Block& initialisationVector,
                                                          std::span<const std::byte> text) override;
};

}
