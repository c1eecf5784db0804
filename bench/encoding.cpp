#include "ads/encoding/GAD_StringEncoding.h"
#include "bench/Bench.h"

#include <glib.h>

#include <random>
#include <vector>

namespace vistrel {
namespace {
using Bytes = std::vector<std::byte>;

Bytes randomBytes(std::size_t size) {
    std::mt19937 random(4);
    Bytes bytes(size);
    for (std::byte& byte : bytes)
        byte = static_cast<std::byte>(random());
    return bytes;
}

/// Both sides create an object from their input and free it.
bool benchBase64(const std::string& size, const Bytes& bytes) {
    const auto encoding = GAD_StringEncoding::rfc4648Base64StringEncoding();
    const std::string text = encoding->encode(bytes);
    const auto encode = [&] {
        bench::keep(encoding->encode(bytes));
    };
    const auto decode = [&] {
        bench::keep(encoding->decode(text));
    };
    const auto glibEncode = [&] {
        gchar* encoded =
            g_base64_encode(reinterpret_cast<const guchar*>(bytes.data()), bytes.size());
        bench::keep(*encoded);
        g_free(encoded);
    };
    const auto glibDecode = [&] {
        gsize length = 0;
        guchar* decoded = g_base64_decode(text.c_str(), &length);
        bench::keep(*decoded);
        g_free(decoded);
    };
    bool holds = bench::compareInNewPrograms(
        {"base64 encode " + size + " against GLib", bytes.size(), 2}, encode, glibEncode);
    holds &= bench::compareInNewPrograms(
        {"base64 decode " + size + " against GLib", bytes.size(), 2}, decode, glibDecode);
    return holds;
}
}
}

int main() {
    const bool small = vistrel::benchBase64("4 KB", vistrel::randomBytes(4096));
    const bool large = vistrel::benchBase64("1 MB", vistrel::randomBytes(1048576));
    return small && large ? 0 : 1;
}
