#include "platform/graphics/UIImage.h"

#include "platform/graphics/Bitmap.h"
#include "platform/graphics/CGContext.h"
#include "platform/graphics/ImageFile.h"
#include "tests/support/HostTest.h"
#include "tests/support/TemporaryFolder.h"

#include <png.h>
#include <turbojpeg.h>

namespace vistrel {
namespace {

constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kGreen = 0xFF00FF00;
constexpr std::uint32_t kBlue = 0xFF0000FF;

std::shared_ptr<Bitmap> filled(int width, int height, std::uint32_t pixel) {
    auto bitmap = std::make_shared<Bitmap>(width, height);
    for (int y = 0; y < height; ++y)
        std::fill_n(bitmap->row(y), width, pixel);
    return bitmap;
}

std::vector<std::byte> jpegOf(const Bitmap& bitmap) {
    unsigned char* data = nullptr;
    unsigned long size = 0;
    auto* encoder = tjInitCompress();
    tjCompress2(encoder, bitmap.data(), bitmap.width(), bitmap.stride(), bitmap.height(), TJPF_BGRA,
                &data, &size, TJSAMP_444, 95, 0);
    tjDestroy(encoder);
    const auto bytes = std::as_bytes(std::span(data, size));
    std::vector<std::byte> result(bytes.begin(), bytes.end());
    tjFree(data);
    return result;
}

/// What libpng writes: rows as they are in the file.
struct PNGFile {
    std::vector<std::vector<png_byte>> rows;
    int colour;
    int depth = 8;
    int interlace = PNG_INTERLACE_NONE;
    std::vector<png_color> palette{};
    std::vector<png_byte> paletteAlpha{};
};

std::vector<std::byte> pngOf(const PNGFile& file, unsigned width) {
    std::vector<std::byte> result;
    auto* png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    auto* info = png_create_info_struct(png);
    png_set_write_fn(
        png, &result,
        [](png_structp out, png_bytep data, std::size_t length) {
            auto& all = *static_cast<std::vector<std::byte>*>(png_get_io_ptr(out));
            const auto bytes = std::as_bytes(std::span(data, length));
            all.insert(all.end(), bytes.begin(), bytes.end());
        },
        nullptr);
    png_set_IHDR(png, info, width, static_cast<png_uint_32>(file.rows.size()), file.depth,
                 file.colour, file.interlace, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (!file.palette.empty()) {
        png_set_PLTE(png, info, file.palette.data(), static_cast<int>(file.palette.size()));
        png_set_tRNS(png, info, file.paletteAlpha.data(),
                     static_cast<int>(file.paletteAlpha.size()), nullptr);
    }
    png_write_info(png, info);
    std::vector<png_bytep> rows;
    for (const auto& row : file.rows)
        rows.push_back(const_cast<png_bytep>(row.data()));
    png_write_image(png, rows.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return result;
}

class UIImageTest : public support::HostTest {
protected:
    UIImageTest() { deterministicHost().host.resourcePath = folder.path(); }
    ~UIImageTest() override { UIImage::setScreenScale(1); }
    void write(const std::string& name, const Bitmap& bitmap) {
        ASSERT_TRUE(ImageFile::writePNG(bitmap, folder.path(name)));
    }
    std::vector<std::byte> bytesOf(const std::string& name) const {
        const std::string text = support::contentsOf(folder.path(name));
        const auto bytes = std::as_bytes(std::span(text));
        return {bytes.begin(), bytes.end()};
    }
    support::TemporaryFolder folder;
};

TEST_F(UIImageTest, TheVariantForTheScreenIsTaken) {
    write("Logo.png", *filled(10, 10, kRed));
    write("Logo@2x.png", *filled(20, 20, kGreen));
    write("Logo@3x.png", *filled(30, 30, kBlue));
    write("Small.png", *filled(10, 10, kRed));
    write("Sharp@2x.png", *filled(20, 20, kGreen));
    const std::tuple<double, const char*, double> cases[] = {
        {1, "Logo.png", 1}, {1.25, "Logo.png", 2}, {2, "Logo", 2},     {2.5, "Logo.png", 3},
        {4, "Logo.png", 3}, {3, "Small.png", 1},   {1, "Sharp.png", 2}};
    for (const auto& [screen, name, scale] : cases) {
        UIImage::setScreenScale(screen);
        const auto image = UIImage::imageNamed(name);
        ASSERT_TRUE(image) << name << " at " << screen;
        EXPECT_EQ(image->scale(), scale) << name << " at " << screen;
        EXPECT_EQ(image->size(), (CGSize{10, 10}));
        EXPECT_EQ(UIImage::imageNamed(name), image) << "kept";
    }
    EXPECT_EQ(UIImage::imageNamed("Missing.png"), nullptr);
}

TEST_F(UIImageTest, APictureReadAheadIsUsedAtItsScale) {
    write("Ahead.png", *filled(10, 10, kRed));
    write("Ahead@2x.png", *filled(20, 20, kBlue));
    UIImage::setScreenScale(2);
    UIImage::readAhead("Ahead", 2);
    UIImage::readAhead("Ahead", 2);
    UIImage::readAhead("Nowhere", 2);
    const auto image = UIImage::imageNamed("Ahead");
    ASSERT_TRUE(image);
    EXPECT_EQ(image->bitmap()->pixel(19, 19), kBlue);
    EXPECT_EQ(UIImage::imageNamed("Ahead"), image) << "kept";
    EXPECT_EQ(UIImage::imageNamed("Nowhere"), nullptr);
    UIImage::readAhead("Ahead", 2);
    UIImage::setScreenScale(1);
    EXPECT_EQ(UIImage::imageNamed("Ahead")->bitmap()->pixel(9, 9), kRed) << "another scale";
}

TEST_F(UIImageTest, FilesAreReadEachTime) {
    const auto path = folder.path("cover.png");
    for (const auto colour : {kRed, kBlue}) {
        write("cover.png", *filled(4, 4, colour));
        EXPECT_EQ(UIImage::imageWithContentsOfFile(path)->bitmap()->pixel(0, 0), colour);
    }
    EXPECT_EQ(UIImage::imageWithContentsOfFile(folder.path("none.png")), nullptr);
    EXPECT_EQ(UIImage::imageWithContentsOfFile(folder.path()), nullptr);
}

TEST_F(UIImageTest, PNGAndJPEGAreToldApartByTheirBytes) {
    write("half.png", *filled(16, 16, 0x80800000));
    const auto fromPNG = UIImage::imageWithData(bytesOf("half.png"));
    ASSERT_TRUE(fromPNG);
    EXPECT_EQ(fromPNG->bitmap()->pixel(3, 3), 0x80800000) << "transparency survives";
    EXPECT_FALSE(fromPNG->bitmap()->isOpaque());
    const auto fromJPEG = UIImage::imageWithData(jpegOf(*filled(16, 8, kGreen)));
    ASSERT_TRUE(fromJPEG);
    EXPECT_EQ(fromJPEG->size(), (CGSize{16, 8}));
    const auto pixel = fromJPEG->bitmap()->pixel(8, 4);
    EXPECT_GT(pixel >> 8 & 0xFF, 250U);
    EXPECT_LT(pixel >> 16 & 0xFF, 5U);
    EXPECT_TRUE(fromJPEG->bitmap()->isOpaque());
}

TEST_F(UIImageTest, EveryKindOfPNGComesOutAsPremultipliedPixels) {
    const std::vector<std::vector<png_byte>> colours{{1, 2, 3, 4, 5, 6}, {7, 8, 9, 10, 11, 12}};
    const std::vector<std::uint32_t> colourPixels{0xFF010203, 0xFF040506, 0xFF070809, 0xFF0A0B0C};
    const struct {
        const char* name;
        PNGFile file;
        std::vector<std::uint32_t> pixels; ///< of two rows of two
        bool isOpaque;
    } cases[] = {
        {"colour", {colours, PNG_COLOR_TYPE_RGB}, colourPixels, true},
        {"interlaced", {colours, PNG_COLOR_TYPE_RGB, 8, PNG_INTERLACE_ADAM7}, colourPixels, true},
        {"one-bit grey",
         {{{0x40}, {0x80}}, PNG_COLOR_TYPE_GRAY, 1},
         {0xFF000000, 0xFFFFFFFF, 0xFFFFFFFF, 0xFF000000},
         true},
        {"palette with transparency",
         {.rows = {{0, 1}, {2, 0}},
          .colour = PNG_COLOR_TYPE_PALETTE,
          .palette = {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}},
          .paletteAlpha = {128, 0, 255}},
         {0x80800000, 0x00000000, 0xFF0000FF, 0x80800000},
         false},
        {"sixteen bits with alpha",
         {{{255, 255, 0, 0, 128, 128, 255, 255, 0, 0, 255, 255, 0, 0, 0, 0},
           {255, 255, 255, 255, 255, 255, 128, 128, 0, 0, 0, 0, 0, 0, 255, 255}},
          PNG_COLOR_TYPE_RGB_ALPHA,
          16},
         {0xFFFF0080, 0x00000000, 0x80808080, 0xFF000000},
         false},
    };
    for (const auto& each : cases) {
        const auto image = UIImage::imageWithData(pngOf(each.file, 2));
        ASSERT_TRUE(image) << each.name;
        const auto& bitmap = *image->bitmap();
        EXPECT_EQ((std::vector{bitmap.pixel(0, 0), bitmap.pixel(1, 0), bitmap.pixel(0, 1),
                               bitmap.pixel(1, 1)}),
                  each.pixels)
            << each.name;
        EXPECT_EQ(bitmap.isOpaque(), each.isOpaque) << each.name;
    }
}

TEST_F(UIImageTest, ABrokenFileYieldsNoPicture) {
    write("good.png", *filled(16, 16, kRed));
    const auto png = bytesOf("good.png");
    for (std::size_t length = 0; length + 12 < png.size(); ++length)
        EXPECT_EQ(UIImage::imageWithData(std::span(png).first(length)), nullptr) << length;
    auto enormous = png;
    enormous[16] = std::byte{0x7F};
    EXPECT_EQ(UIImage::imageWithData(enormous), nullptr);
    const auto jpeg = jpegOf(*filled(16, 16, kRed));
    EXPECT_EQ(UIImage::imageWithData(std::span(jpeg).first(20)), nullptr);
    const std::vector<std::byte> text(64, std::byte{'x'});
    EXPECT_EQ(UIImage::imageWithData(text), nullptr);
    EXPECT_EQ(UIImage::imageWithData({}), nullptr);
}

/// A red frame of `cap` pixels around one green pixel column and row.
std::shared_ptr<const UIImage> framed(int cap, double scale) {
    const int side = 2 * cap + static_cast<int>(scale);
    auto bitmap = filled(side, side, kRed);
    for (int i = 0; i < side; ++i) {
        for (int middle = cap; middle < cap + static_cast<int>(scale); ++middle) {
            bitmap->row(middle)[i] = kGreen;
            bitmap->row(i)[middle] = kGreen;
        }
    }
    return std::make_shared<UIImage>(bitmap, scale);
}

std::shared_ptr<Bitmap> drawnInto(const UIImage& image, const CGRect& rect) {
    auto bitmap = std::make_shared<Bitmap>(40, 40);
    CGContext context(bitmap, 1);
    UIGraphicsPushContext(context);
    image.drawInRect(rect);
    UIGraphicsPopContext();
    return bitmap;
}

TEST_F(UIImageTest, CapsKeepTheirSizeAndTheMiddleStretches) {
    struct Probe {
        int x, y;
        std::uint32_t pixel;
    };
    const std::vector<Probe> stretched = {{4, 4, kRed},  {5, 2, kGreen},   {34, 2, kGreen},
                                          {35, 4, kRed}, {20, 15, kGreen}, {2, 24, kGreen},
                                          {2, 25, kRed}, {2, 30, 0}};
    const std::tuple<const char*, std::shared_ptr<const UIImage>, CGRect, std::vector<Probe>>
        cases[] = {
            {"plain", framed(5, 1)->stretchableImage(5, 5), CGRectMake(0, 0, 40, 30), stretched},
            {"sharp", framed(10, 2)->stretchableImage(5, 5), CGRectMake(0, 0, 40, 30), stretched},
            {"no cap at the top",
             framed(5, 1)->stretchableImage(5, 0),
             CGRectMake(0, 0, 40, 33),
             {{20, 1, kGreen}, {2, 16, kGreen}, {2, 13, kRed}}},
            {"caps that do not fit",
             framed(5, 1)->stretchableImage(5, 5),
             CGRectMake(10, 10, 6, 20),
             {{11, 12, kRed}, {15, 12, kRed}, {16, 12, 0}, {9, 12, 0}}},
        };
    for (const auto& [name, image, rect, probes] : cases) {
        const auto picture = drawnInto(*image, rect);
        for (const auto& [x, y, pixel] : probes)
            EXPECT_EQ(picture->pixel(x, y), pixel) << name << " at " << x << ", " << y;
    }
}

}
}
