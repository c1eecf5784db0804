#include "platform/graphics/PNGReader.h"

#include "platform/graphics/Bitmap.h"

#include <bit>
#include <csetjmp>
#include <cstdint>
#include <cstring>
#include <png.h>
#include <vector>

namespace vistrel::PNGReader {

namespace {

void readSome(png_structp png, png_bytep data, std::size_t length) {
    auto& rest = *static_cast<std::span<const std::byte>*>(png_get_io_ptr(png));
    if (rest.size() < length)
        png_error(png, "ends early");
    std::memcpy(data, rest.data(), length);
    rest = rest.subspan(length);
}

void fail(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}

void ignore(png_structp, png_const_charp) {}

/// Four bytes per pixel in the bitmap's order, whatever the file has.
void asColourAndAlpha(png_structp png) {
    constexpr bool kAlphaIsLast = std::endian::native == std::endian::little;
    png_set_expand(png);
    png_set_scale_16(png);
    png_set_gray_to_rgb(png);
    png_set_add_alpha(png, 0xFF, kAlphaIsLast ? PNG_FILLER_AFTER : PNG_FILLER_BEFORE);
    if constexpr (kAlphaIsLast)
        png_set_bgr(png);
    else
        png_set_swap_alpha(png);
    png_set_interlace_handling(png);
}

std::uint32_t premultiplied(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24;
    std::uint32_t result = alpha << 24;
    for (unsigned shift = 0; shift < 24; shift += 8) {
        const std::uint32_t product = (pixel >> shift & 0xFF) * alpha + 0x80;
        result |= (product + (product >> 8)) >> 8 << shift;
    }
    return result;
}

void premultiply(Bitmap& bitmap) {
    std::uint32_t alphas = 0xFF000000;
    for (int y = 0; y < bitmap.height(); ++y) {
        std::uint32_t* row = bitmap.row(y);
        for (int x = 0; x < bitmap.width(); ++x) {
            alphas &= row[x];
            row[x] = premultiplied(row[x]);
        }
    }
    bitmap.setOpaque(alphas == 0xFF000000);
}

struct Reading {
    png_structp png = nullptr;
    png_infop info = nullptr;
    std::span<const std::byte> rest;
    bool hasAlpha = false;
    std::shared_ptr<Bitmap> bitmap;
    std::vector<png_bytep> rows;

    ~Reading() { png_destroy_read_struct(&png, &info, nullptr); }
};

/// libpng reports errors by longjmp, so each step sets its own jump, and
/// nothing with a destructor is in between.
bool readHead(Reading& reading) {
    if (setjmp(png_jmpbuf(reading.png)) != 0)
        return false;
    png_set_read_fn(reading.png, &reading.rest, readSome);
#ifdef PNG_IGNORE_ADLER32 // which not every libpng has
    // Compressed data has its own checksums.
    png_set_option(reading.png, PNG_IGNORE_ADLER32, PNG_OPTION_ON);
#endif
    png_read_info(reading.png, reading.info);
    reading.hasAlpha =
        (png_get_color_type(reading.png, reading.info) & PNG_COLOR_MASK_ALPHA) != 0 ||
        png_get_valid(reading.png, reading.info, PNG_INFO_tRNS) != 0;
    asColourAndAlpha(reading.png);
    png_read_update_info(reading.png, reading.info);
    return true;
}

bool readRows(Reading& reading) {
    if (setjmp(png_jmpbuf(reading.png)) != 0)
        return false;
    png_read_image(reading.png, reading.rows.data());
    png_read_end(reading.png, nullptr);
    return true;
}

}

std::shared_ptr<Bitmap> read(std::span<const std::byte> bytes) {
    Reading reading;
    reading.rest = bytes;
    reading.png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, fail, ignore);
    if (reading.png)
        reading.info = png_create_info_struct(reading.png);
    if (!reading.info || !readHead(reading))
        return nullptr;
    reading.bitmap =
        std::make_shared<Bitmap>(static_cast<int>(png_get_image_width(reading.png, reading.info)),
                                 static_cast<int>(png_get_image_height(reading.png, reading.info)));
    for (int y = 0; y < reading.bitmap->height(); ++y)
        reading.rows.push_back(reinterpret_cast<png_bytep>(reading.bitmap->row(y)));
    if (!readRows(reading))
        return nullptr;
    if (reading.hasAlpha)
        premultiply(*reading.bitmap);
    else
        reading.bitmap->setOpaque(true);
    return reading.bitmap;
}

}
