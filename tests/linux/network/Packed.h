#pragma once
#include "tests/support/Testing.h"

#include <gio/gio.h>

namespace vistrel {

inline std::string packed(const std::string& text,
                          GZlibCompressorFormat format = G_ZLIB_COMPRESSOR_FORMAT_GZIP) {
    GZlibCompressor* compressor = g_zlib_compressor_new(format, 9);
    std::string bytes(text.size() + 64, '\0');
    gsize read = 0;
    gsize written = 0;
    g_converter_convert(G_CONVERTER(compressor), text.data(), text.size(), bytes.data(),
                        bytes.size(), G_CONVERTER_INPUT_AT_END, &read, &written, nullptr);
    g_object_unref(compressor);
    bytes.resize(written);
    return bytes;
}

}
