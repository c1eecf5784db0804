#include "demo/Compression.h"

#include <array>
#include <gio/gio.h>
#include <utility>

namespace vistrel::demo {

Body gzipped(const Body& body) {
    const std::string plain = body.text();
    GZlibCompressor* compressor = g_zlib_compressor_new(G_ZLIB_COMPRESSOR_FORMAT_GZIP, 6);
    std::string compressed;
    std::array<char, 65536> buffer{};
    GConverterResult result = G_CONVERTER_CONVERTED;
    for (size_t read = 0; result == G_CONVERTER_CONVERTED;) {
        gsize taken = 0;
        gsize made = 0;
        result = g_converter_convert(G_CONVERTER(compressor), plain.data() + read,
                                     plain.size() - read, buffer.data(), buffer.size(),
                                     G_CONVERTER_INPUT_AT_END, &taken, &made, nullptr);
        read += taken;
        compressed.append(buffer.data(), made);
    }
    g_object_unref(compressor);
    return Body(std::move(compressed));
}
}
