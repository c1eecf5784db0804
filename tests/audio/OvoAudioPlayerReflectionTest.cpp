#include "audio/OvoAudioPlayerReflection.h"

#include "platform/graphics/Bitmap.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIButton.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

class OvoAudioPlayerReflectionTest : public testing::Test {
protected:
    ~OvoAudioPlayerReflectionTest() override { UIImage::setScreenScale(1); }

    /// Each pixel encodes its row and column.
    static std::shared_ptr<const UIImage> cover(int pixels, double scale) {
        auto bitmap = std::make_shared<Bitmap>(pixels, pixels);
        for (int y = 0; y < pixels; ++y)
            for (int x = 0; x < pixels; ++x)
                bitmap->row(y)[x] = colorAt(x, y);
        return std::make_shared<UIImage>(std::move(bitmap), scale);
    }
    static std::uint32_t colorAt(int x, int y) {
        return 0xFF000000U | static_cast<std::uint32_t>(y % 256) << 16 |
               static_cast<std::uint32_t>(x % 256) << 8 |
               static_cast<std::uint32_t>(x * 7 + y) % 256;
    }
    static std::shared_ptr<UIButton> artwork(std::shared_ptr<const UIImage> image) {
        auto button = std::make_shared<UIButton>(CGRectMake(0, 0, 320, 320));
        button->setImageForState(std::move(image), UIControlState::Normal);
        return button;
    }
};

TEST_F(OvoAudioPlayerReflectionTest, RowsStartWithTheCoversLastOneAndFade) {
    for (const int scale : {1, 2}) {
        SCOPED_TRACE(scale);
        UIImage::setScreenScale(scale);
        const int side = 320 * scale;
        const auto button = artwork(cover(side, scale));
        const auto reflection = reflectedImageWithHeight(*button, 208);
        ASSERT_TRUE(reflection);
        EXPECT_EQ(reflection->size(), (CGSize{320, 208}));
        const Bitmap& picture = *reflection->bitmap();
        const int rows = 208 * scale;
        ASSERT_EQ(picture.height(), rows);
        for (int y = 0; y < rows; ++y) {
            const double opacity = 1 - static_cast<double>(y) / (rows - 1);
            for (int x = 0; x < side; x += y == 0 ? 1 : 127)
                for (const int shift : {0, 8, 16, 24})
                    ASSERT_NEAR(picture.pixel(x, y) >> shift & 0xFF,
                                (colorAt(x, side - 1 - y) >> shift & 0xFF) * opacity,
                                y == 0 ? 0 : 1)
                        << x << ", " << y << " bit " << shift;
        }
        EXPECT_EQ(picture.pixel(5, rows - 1), 0U);
    }
}

TEST_F(OvoAudioPlayerReflectionTest, ItIsNullWithoutHeightAndTransparentWithoutPicture) {
    EXPECT_EQ(reflectedImageWithHeight(*artwork(cover(320, 1)), 0), nullptr);
    const auto empty = reflectedImageWithHeight(*artwork(nullptr), 10);
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->bitmap()->pixel(0, 0), 0U);
}

}
}
