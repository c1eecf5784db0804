#include "platform/linux/media/YuvScaler.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr int kFractionBits = 13;
/// Rows that are rotated together, so that one column of them is written at a time.
constexpr int kBlockRows = 16;

std::size_t count(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

const std::uint8_t* rowOf(const YuvPlane& plane, int row) {
    return plane.samples + plane.stride * row;
}

std::uint32_t channel(std::int32_t value) {
    return static_cast<std::uint32_t>(std::clamp(value >> kFractionBits, 0, 255));
}

}

YuvColors YuvColors::make(double red, double blue, bool isFullRange) {
    const double green = 1 - red - blue;
    const double lumaScale = isFullRange ? 1 : 255.0 / 219;
    const double colorScale = isFullRange ? 1 : 255.0 / 224;
    const auto factor = [](double value) {
        return static_cast<std::int16_t>(std::lround(value * (1 << kFractionBits)));
    };
    return {isFullRange ? 0 : 16,
            factor(lumaScale),
            factor(2 * (1 - red) * colorScale),
            factor(-2 * (1 - red) * red / green * colorScale),
            factor(-2 * (1 - blue) * blue / green * colorScale),
            factor(2 * (1 - blue) * colorScale)};
}

void YuvScaler::scale(const YuvFrame& frame, PictureTurn turn, int width, int height,
                      std::uint32_t* pixels) {
    const int colorWidth = (width + 1) / 2;
    const int colorHeight = (height + 1) / 2;
    scalePlane(frame.luma, lumaRows_, turn, width, height, luma_);
    scalePlane(frame.blueDifference, colorRows_, turn, colorWidth, colorHeight, blue_);
    scalePlane(frame.redDifference, colorRows_, turn, colorWidth, colorHeight, red_);
    convert(frame.colors, width, height, pixels);
}

YuvScaler::Layout YuvScaler::layoutFor(PictureTurn turn, int width, int height) {
    const std::ptrdiff_t stride = width;
    const std::ptrdiff_t last = width - 1;
    const std::ptrdiff_t lastRow = stride * (height - 1);
    const Layout layouts[] = {
        {0, 1, stride}, {last, stride, -1}, {lastRow + last, -1, -stride}, {lastRow, -stride, 1}};
    Layout layout = layouts[turn.quarters];
    if (turn.mirrored) {
        const int columns = turn.swapsSides() ? height : width;
        layout.first += layout.column * (columns - 1);
        layout.column = -layout.column;
    }
    return layout;
}

void YuvScaler::scalePlane(YuvPlane plane, RowScaler& rowScaler, PictureTurn turn, int width,
                           int height, std::vector<std::uint8_t>& to) {
    const Layout layout = layoutFor(turn, width, height);
    const int columns = turn.swapsSides() ? height : width;
    const int rows = turn.swapsSides() ? width : height;
    to.resize(count(width, height));
    // The code below mixes two samples. With more of them per pixel, fine patterns would flicker,
    // so halve the planes first.
    while (plane.width >= 2 * columns && plane.height >= 2 * rows && plane.height > 1)
        plane = halved(plane);
    rowScaler.prepare(plane.width, columns);
    block_.resize(count(columns, kBlockRows));
    blended_.resize(static_cast<std::size_t>(plane.width) + RowScaler::kPadding);
    for (int row = 0; row < rows; row += kBlockRows) {
        const int together = std::min(kBlockRows, rows - row);
        for (int i = 0; i < together; ++i)
            makeRow(plane, rowScaler, row + i, rows, block_.data() + count(columns, i));
        std::uint8_t* corner = to.data() + layout.first + layout.row * row;
        if (turn.swapsSides()) {
            for (int column = 0; column < columns; ++column, corner += layout.column)
                for (int i = 0; i < together; ++i)
                    corner[layout.row * i] = block_[count(columns, i) + std::size_t(column)];
        } else {
            for (int i = 0; i < together; ++i)
                for (int column = 0; column < columns; ++column)
                    corner[layout.row * i + layout.column * column] =
                        block_[count(columns, i) + std::size_t(column)];
        }
    }
}

/// Averages blocks of two by two samples.
YuvPlane YuvScaler::halved(const YuvPlane& plane) {
    const int width = plane.width / 2;
    const int height = plane.height / 2;
    auto& to = plane.samples == half_[0].data() ? half_[1] : half_[0];
    to.resize(count(width, height));
    for (int row = 0; row < height; ++row) {
        const std::uint8_t* upper = rowOf(plane, 2 * row);
        const std::uint8_t* lower = rowOf(plane, 2 * row + 1);
        std::uint8_t* out = to.data() + count(width, row);
        for (std::ptrdiff_t x = 0; x < width; ++x)
            out[x] = static_cast<std::uint8_t>(
                (upper[2 * x] + upper[2 * x + 1] + lower[2 * x] + lower[2 * x + 1] + 2) >> 2);
    }
    return {to.data(), width, height, width};
}

void YuvScaler::makeRow(const YuvPlane& plane, const RowScaler& rowScaler, int row, int rows,
                        std::uint8_t* to) {
    const Between place = Between::of(row, plane.height, rows);
    const std::uint8_t* upper = rowOf(plane, place.first);
    const std::uint8_t* lower = rowOf(plane, std::min(place.first + 1, plane.height - 1));
    // Local copies, because a written byte could alias any of these fields.
    std::uint8_t* blended = blended_.data();
    const int samples = plane.width;
    const auto lowerShare = place.share;
    const auto upperShare = static_cast<std::uint16_t>(256 - lowerShare);
    for (int x = 0; x < samples; ++x)
        blended[x] = static_cast<std::uint8_t>(
            static_cast<std::uint16_t>(upper[x] * upperShare + lower[x] * lowerShare + 128) >> 8);
    blended[samples] = blended[samples - 1];
    rowScaler.scale(blended, to);
}

/// The amounts that the colour differences add to each channel of the two pixels that share them.
void YuvScaler::findColorTerms(const YuvColors& colors, const std::uint8_t* blue,
                               const std::uint8_t* red, int count) {
    std::int32_t* redTerms = redTerms_.data();
    std::int32_t* greenTerms = greenTerms_.data();
    std::int32_t* blueTerms = blueTerms_.data();
    const std::int32_t rounding = (1 << (kFractionBits - 1)) - colors.lumaOffset * colors.luma;
    for (std::ptrdiff_t x = 0; x < count; ++x) {
        const auto b = static_cast<std::int16_t>(blue[x] - 128);
        const auto r = static_cast<std::int16_t>(red[x] - 128);
        redTerms[2 * x] = redTerms[2 * x + 1] = colors.redFromRed * r + rounding;
        greenTerms[2 * x] = greenTerms[2 * x + 1] =
            colors.greenFromRed * r + colors.greenFromBlue * b + rounding;
        blueTerms[2 * x] = blueTerms[2 * x + 1] = colors.blueFromBlue * b + rounding;
    }
}

void YuvScaler::convert(const YuvColors& colors, int width, int height, std::uint32_t* pixels) {
    const int pairs = (width + 1) / 2;
    for (auto* terms : {&redTerms_, &greenTerms_, &blueTerms_})
        terms->resize(static_cast<std::size_t>(pairs) * 2);
    for (int row = 0; row < height; ++row) {
        if (row % 2 == 0)
            findColorTerms(colors, blue_.data() + count(pairs, row / 2),
                           red_.data() + count(pairs, row / 2), pairs);
        const std::uint8_t* luma = luma_.data() + count(width, row);
        const std::int32_t* red = redTerms_.data();
        const std::int32_t* green = greenTerms_.data();
        const std::int32_t* blue = blueTerms_.data();
        std::uint32_t* out = pixels + count(width, row);
        for (int x = 0; x < width; ++x) {
            const std::int32_t light = static_cast<std::int16_t>(luma[x]) * colors.luma;
            out[x] = 0xFF000000U | channel(light + red[x]) << 16 | channel(light + green[x]) << 8 |
                     channel(light + blue[x]);
        }
    }
}

}
