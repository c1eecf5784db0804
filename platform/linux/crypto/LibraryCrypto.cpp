#include "platform/linux/crypto/LibraryCrypto.h"

#include <gcrypt.h>
#include <glib.h>

#include <cerrno>
#include <memory>
#include <string>
#include <type_traits>

namespace vistrel {

namespace {

struct CloseCipher {
    void operator()(gcry_cipher_hd_t cipher) const { gcry_cipher_close(cipher); }
};
using Cipher = std::unique_ptr<std::remove_pointer_t<gcry_cipher_hd_t>, CloseCipher>;

struct FreeChecksum {
    void operator()(GChecksum* checksum) const { g_checksum_free(checksum); }
};

void computeDigest(GChecksumType type, std::span<const std::byte> bytes,
                   std::span<std::byte> digest) {
    const std::unique_ptr<GChecksum, FreeChecksum> checksum(g_checksum_new(type));
    g_checksum_update(checksum.get(), reinterpret_cast<const guchar*>(bytes.data()),
                      static_cast<gssize>(bytes.size()));
    gsize size = digest.size();
    g_checksum_get_digest(checksum.get(), reinterpret_cast<guint8*>(digest.data()), &size);
}

/// Once per process, unless another user of the library was first.
void initialiseLibrary() {
    if (gcry_control(GCRYCTL_INITIALIZATION_FINISHED_P) != 0)
        return;
    gcry_check_version(nullptr);
    gcry_control(GCRYCTL_DISABLE_SECMEM, 0);
    gcry_control(GCRYCTL_INITIALIZATION_FINISHED, 0);
}

host::Failure failureOf(gcry_error_t error) {
    return {EIO, std::string("The text cannot be encrypted: ") + gcry_strerror(error)};
}

}

host::Crypto::Block LibraryCrypto::md5(std::span<const std::byte> bytes) {
    // Not libgcrypt's: that one refuses this digest when the machine runs in FIPS mode.
    Block digest{};
    computeDigest(G_CHECKSUM_MD5, bytes, digest);
    return digest;
}

std::array<std::byte, 32> LibraryCrypto::sha256(std::span<const std::byte> bytes) {
    std::array<std::byte, 32> digest{};
    computeDigest(G_CHECKSUM_SHA256, bytes, digest);
    return digest;
}

host::Result<std::vector<std::byte>>
LibraryCrypto::aes128CBCEncrypt(const Block& key, const Block& initialisationVector,
                                std::span<const std::byte> text) {
    initialiseLibrary();
    gcry_cipher_hd_t handle = nullptr;
    if (const auto error = gcry_cipher_open(&handle, GCRY_CIPHER_AES128, GCRY_CIPHER_MODE_CBC, 0))
        return failureOf(error);
    const Cipher cipher(handle);
    if (const auto error = gcry_cipher_setkey(cipher.get(), key.data(), key.size()))
        return failureOf(error);
    if (const auto error = gcry_cipher_setiv(cipher.get(), initialisationVector.data(),
                                             initialisationVector.size()))
        return failureOf(error);
    std::vector<std::byte> output(text.size());
    if (text.empty())
        return output;
    if (const auto error = gcry_cipher_encrypt(cipher.get(), output.data(), output.size(),
                                               text.data(), text.size()))
        return failureOf(error);
    return output;
}

}
