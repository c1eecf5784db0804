#include "demo/Digest.h"

#include <glib.h>

namespace vistrel::demo {

std::string sha256Of(const Body& body) {
    GChecksum* checksum = g_checksum_new(G_CHECKSUM_SHA256);
    for (uint64_t offset = 0; offset < body.size();) {
        const std::string_view bytes = body.at(offset);
        g_checksum_update(checksum, reinterpret_cast<const guchar*>(bytes.data()),
                          static_cast<gssize>(bytes.size()));
        offset += bytes.size();
    }
    std::string digest = g_checksum_get_string(checksum);
    g_checksum_free(checksum);
    return digest;
}
}
