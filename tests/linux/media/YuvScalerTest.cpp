// Frames scaled, rotated and converted in memory.
#include "platform/linux/media/YuvScaler.h"

#include "platform/linux/media/RowScaler.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

std::size_t area(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

/// A frame of one colour, or with four quadrants of different luma.
struct Frame {
    Frame(int columns, int rows)
        : width(columns)
        , height(rows)
        , luma(area(columns, rows))
        , blue(area((columns + 1) / 2, (rows + 1) / 2), 128)
        , red(blue) {}

    void fill(int y, int u, int v) {
        luma.assign(luma.size(), static_cast<std::uint8_t>(y));
        blue.assign(blue.size(), static_cast<std::uint8_t>(u));
        red.assign(red.size(), static_cast<std::uint8_t>(v));
    }
    void quarter(std::array<int, 4> levels) {
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                luma[area(y, width) + static_cast<std::size_t>(x)] = static_cast<std::uint8_t>(
                    levels[static_cast<std::size_t>((y >= height / 2) * 2 + (x >= width / 2))]);
    }
    YuvFrame frame(YuvColors colors) const {
        const int half = (width + 1) / 2;
        const int halfHeight = (height + 1) / 2;
        return {{luma.data(), width, height, width},
                {blue.data(), half, halfHeight, half},
                {red.data(), half, halfHeight, half},
                colors};
    }

    int width;
    int height;
    std::vector<std::uint8_t> luma;
    std::vector<std::uint8_t> blue;
    std::vector<std::uint8_t> red;
};

const YuvColors kFullRange = YuvColors::make(0.299, 0.114, true);

TEST(YuvScalerTest, RotationAndMirroringMoveTheQuarters) {
    Frame frame(12, 8);
    frame.quarter({10, 20, 30, 40});
    // Upper left, upper right, lower left, lower right.
    const std::pair<PictureTurn, std::array<int, 4>> rows[] = {
        {{false, 0}, {10, 20, 30, 40}}, {{false, 1}, {30, 10, 40, 20}},
        {{false, 2}, {40, 30, 20, 10}}, {{false, 3}, {20, 40, 10, 30}},
        {{true, 0}, {20, 10, 40, 30}},  {{true, 1}, {40, 20, 30, 10}},
        {{true, 2}, {30, 40, 10, 20}},  {{true, 3}, {10, 30, 20, 40}},
    };
    YuvScaler scaler;
    for (const auto& [turn, expected] : rows) {
        const int width = turn.swapsSides() ? 40 : 60;
        const int height = turn.swapsSides() ? 60 : 40;
        std::vector<std::uint32_t> pixels(area(width, height));
        scaler.scale(frame.frame(kFullRange), turn, width, height, pixels.data());
        const auto at = [&](int x, int y) {
            return static_cast<int>(pixels[area(y, width) + static_cast<std::size_t>(x)] & 0xFF);
        };
        const std::array<int, 4> corners{at(1, 1), at(width - 2, 1), at(1, height - 2),
                                         at(width - 2, height - 2)};
        EXPECT_EQ(corners, expected) << turn.mirrored << turn.quarters;
    }
}

TEST(YuvScalerTest, ColoursFollowTheFilmsMatrixAndRangeAtAnySize) {
    const YuvColors sd = YuvColors::make(0.299, 0.114, false);
    const YuvColors hd = YuvColors::make(0.2126, 0.0722, false);
    const struct {
        const char* name;
        YuvColors colors;
        int y, u, v;
        std::uint32_t expected;
    } rows[] = {
        {"black", sd, 16, 128, 128, 0xFF000000},
        {"white", sd, 235, 128, 128, 0xFFFFFFFF},
        {"red", sd, 81, 90, 240, 0xFFFF0000},
        {"blue", sd, 41, 240, 110, 0xFF0000FF},
        {"red hd", hd, 63, 102, 240, 0xFFFF0000},
        {"green hd", hd, 173, 42, 26, 0xFF00FF00},
        {"grey", kFullRange, 77, 128, 128, 0xFF4D4D4D},
        {"beyond white", sd, 255, 128, 128, 0xFFFFFFFF},
    };
    const std::pair<int, int> sizes[] = {{1, 1}, {9, 5}, {17, 31}, {64, 48}, {200, 3}};
    YuvScaler scaler;
    for (const auto& row : rows) {
        for (Frame frame : {Frame(35, 21), Frame(1, 1)}) {
            frame.fill(row.y, row.u, row.v);
            for (const auto& [width, height] : sizes) {
                std::vector<std::uint32_t> pixels(area(width, height));
                scaler.scale(frame.frame(row.colors), {false, 1}, width, height, pixels.data());
                for (const std::uint32_t pixel : pixels)
                    for (const unsigned shift : {0U, 8U, 16U, 24U})
                        ASSERT_NEAR(pixel >> shift & 0xFF, row.expected >> shift & 0xFF, 2)
                            << row.name << ' ' << frame.width << ' ' << width << ' ' << height;
            }
        }
    }
}

TEST(YuvScalerTest, FinePatternsBecomeGreyInsteadOfFlickering) {
    Frame frame(64, 64);
    for (std::size_t i = 0; i < frame.luma.size(); ++i)
        frame.luma[i] = (i + i / 64) % 2 ? 255 : 0;
    std::vector<std::uint32_t> pixels(area(16, 16));
    YuvScaler().scale(frame.frame(kFullRange), {}, 16, 16, pixels.data());
    for (const std::uint32_t pixel : pixels)
        EXPECT_NEAR(pixel & 0xFF, 128, 2);
}

TEST(RowScalerTest, BetweenTwoSamplesARowChangesEvenly) {
    std::vector<std::uint8_t> samples(2 + RowScaler::kPadding, 200);
    samples[0] = 0;
    std::vector<std::uint8_t> row(4);
    RowScaler scaler(RowScaler::Machine::Plain);
    scaler.prepare(2, 4);
    scaler.scale(samples.data(), row.data());
    EXPECT_THAT(row, ElementsAre(0, 50, 150, 200));
}

TEST(RowScalerTest, EveryMachineMakesTheSameSamples) {
    const std::pair<int, int> stretches[] = {{1280, 720}, {640, 203}, {63, 64},  {35, 18},
                                             {16, 8},     {300, 40},  {64, 640}, {1, 30},
                                             {2, 7},      {500, 1},   {720, 720}};
    for (const auto& [from, to] : stretches) {
        std::vector<std::uint8_t> samples(static_cast<std::size_t>(from) + RowScaler::kPadding);
        for (std::size_t i = 0; i < samples.size(); ++i)
            samples[i] = static_cast<std::uint8_t>(i * i * 37 + i * 101);
        samples[static_cast<std::size_t>(from)] = samples[static_cast<std::size_t>(from) - 1];
        std::vector<std::uint8_t> results[2];
        for (auto& result : results) {
            RowScaler scaler(&result == results ? RowScaler::Machine::Plain
                                                : RowScaler::thisMachine());
            scaler.prepare(from, to);
            result.assign(static_cast<std::size_t>(to) + 1, 7);
            scaler.scale(samples.data(), result.data());
            EXPECT_EQ(result.back(), 7) << "nothing is written behind the row";
        }
        EXPECT_EQ(results[0], results[1]) << from << " to " << to;
    }
}

}
}
