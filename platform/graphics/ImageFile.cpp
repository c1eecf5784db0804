#include "platform/graphics/ImageFile.h"

#include "platform/graphics/Bitmap.h"
#include "platform/graphics/PNGReader.h"

#include <algorithm>
#include <array>
#include <cairo.h>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <turbojpeg.h>
#include <vector>

namespace vistrel::ImageFile {

namespace {

/// A picture larger than this on a side, or with more pixels than this, is refused.
constexpr int kLargestSide = 16384;
constexpr std::uintmax_t kLargestFile = std::uintmax_t{256} * 1024 * 1024;
constexpr std::int64_t kMostPixels = std::int64_t{64} * 1024 * 1024;

bool isReasonable(std::int64_t width, std::int64_t height) {
    return width > 0 && height > 0 && width <= kLargestSide && height <= kLargestSide &&
           width * height <= kMostPixels;
}

std::uint32_t bigEndian(std::span<const std::byte> bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value = value << 8 | std::to_integer<std::uint32_t>(bytes[at + i]);
    return value;
}

std::shared_ptr<Bitmap> decodePNG(std::span<const std::byte> bytes) {
    // Width and height are at a fixed offset, and checked before memory is allocated for them.
    if (bytes.size() < 24 || !isReasonable(bigEndian(bytes, 16), bigEndian(bytes, 20)))
        return nullptr;
    return PNGReader::read(bytes);
}

std::shared_ptr<Bitmap> decodeJPEG(std::span<const std::byte> bytes) {
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto size = static_cast<unsigned long>(bytes.size());
    std::unique_ptr<void, int (*)(tjhandle)> decoder(tjInitDecompress(), tjDestroy);
    int width = 0;
    int height = 0;
    int sampling = 0;
    int space = 0;
    if (!decoder ||
        tjDecompressHeader3(decoder.get(), data, size, &width, &height, &sampling, &space) != 0 ||
        !isReasonable(width, height))
        return nullptr;
    auto bitmap = std::make_shared<Bitmap>(width, height);
    if (tjDecompress2(decoder.get(), data, size, bitmap->data(), width, bitmap->stride(), height,
                      TJPF_BGRA, 0) != 0 &&
        tjGetErrorCode(decoder.get()) == TJERR_FATAL)
        return nullptr;
    bitmap->setOpaque(true);
    return bitmap;
}

bool beginsWith(std::span<const std::byte> bytes, std::span<const unsigned char> signature) {
    return bytes.size() >= signature.size() &&
           std::memcmp(bytes.data(), signature.data(), signature.size()) == 0;
}

}

std::shared_ptr<Bitmap> decode(std::span<const std::byte> bytes) {
    static constexpr std::array<unsigned char, 8> png = {0x89, 'P',  'N',  'G',
                                                         '\r', '\n', 0x1A, '\n'};
    static constexpr std::array<unsigned char, 3> jpeg = {0xFF, 0xD8, 0xFF};
    std::shared_ptr<Bitmap> bitmap;
    if (beginsWith(bytes, png))
        bitmap = decodePNG(bytes);
    else if (beginsWith(bytes, jpeg))
        bitmap = decodeJPEG(bytes);
    if (bitmap)
        bitmap->contentChanged();
    return bitmap;
}

std::shared_ptr<Bitmap> read(const std::string& path) {
    std::error_code error;
    const bool isFile = std::filesystem::is_regular_file(path, error);
    const auto size = isFile ? std::filesystem::file_size(path, error) : 0;
    std::ifstream file(path, std::ios::binary);
    if (error || size == 0 || size > kLargestFile || !file)
        return nullptr;
    std::vector<std::byte> bytes(size);
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size));
    return file ? decode(bytes) : nullptr;
}

bool writePNG(const Bitmap& bitmap, const std::string& path) {
    // The surface is only read.
    auto* surface = cairo_image_surface_create_for_data(const_cast<unsigned char*>(bitmap.data()),
                                                        CAIRO_FORMAT_ARGB32, bitmap.width(),
                                                        bitmap.height(), bitmap.stride());
    const auto status = cairo_surface_write_to_png(surface, path.c_str());
    cairo_surface_destroy(surface);
    return status == CAIRO_STATUS_SUCCESS;
}

}
