#include "platform/linux/media/YuvScaler.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr int kFractionBits = 13;
/// Colours are summed in units of 2^-5: then no sum leaves 16 bits, and a register holds eight.
constexpr int kTermBits = 5;
/// Rows that are rotated together, so that one column of them is written at a time.
constexpr int kBlockRows = 16;

std::size_t count(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
}

const std::uint8_t* rowOf(const YuvPlane& plane, int row) {
    return plane.samples + plane.stride * row;
}

std::uint16_t channel(int value) {
    const auto level = static_cast<std::int16_t>(static_cast<std::int16_t>(value) >> kTermBits);
    return static_cast<std::uint16_t>(std::clamp<std::int16_t>(level, 0, 255));
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
        std::uint8_t* corner = to.data() + layout.first + layout.row * row;
        const bool isInPlace = layout.column == 1;
        for (int i = 0; i < together; ++i)
            makeRow(plane, rowScaler, row + i, rows,
                    isInPlace ? corner + layout.row * i : block_.data() + count(columns, i));
        if (isInPlace)
            continue;
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
    constexpr int kShift = kFractionBits - kTermBits;
    const int rounding =
        (1 << (kFractionBits - 1)) - colors.lumaOffset * colors.luma + (1 << (kShift - 1));
    const auto find = [&](std::vector<std::int16_t>& terms, std::int16_t fromBlue,
                          std::int16_t fromRed) {
        std::int16_t* __restrict to = terms.data();
        for (std::ptrdiff_t x = 0; x < count; ++x) {
            const auto b = static_cast<std::int16_t>(blue[x] - 128);
            const auto r = static_cast<std::int16_t>(red[x] - 128);
            const auto term =
                static_cast<std::int16_t>((fromBlue * b + fromRed * r + rounding) >> kShift);
            to[2 * x] = to[2 * x + 1] = term;
        }
    };
    find(redTerms_, 0, colors.redFromRed);
    find(greenTerms_, colors.greenFromBlue, colors.greenFromRed);
    find(blueTerms_, colors.blueFromBlue, 0);
}

void YuvScaler::convert(const YuvColors& colors, int width, int height, std::uint32_t* pixels) {
    const int pairs = (width + 1) / 2;
    for (auto* terms : {&redTerms_, &greenTerms_, &blueTerms_})
        terms->resize(static_cast<std::size_t>(pairs) * 2);
    // In units of 2^-7: the product with a byte fills 16 bits.
    const auto lumaFactor = static_cast<std::uint16_t>((colors.luma + 32) >> 6);
    for (int row = 0; row < height; ++row) {
        if (row % 2 == 0)
            findColorTerms(colors, blue_.data() + count(pairs, row / 2),
                           red_.data() + count(pairs, row / 2), pairs);
        const std::uint8_t* luma = luma_.data() + count(width, row);
        const std::int16_t* red = redTerms_.data();
        const std::int16_t* green = greenTerms_.data();
        const std::int16_t* blue = blueTerms_.data();
        std::uint32_t* __restrict out = pixels + count(width, row);
        for (int x = 0; x < width; ++x) {
            const auto light =
                static_cast<std::int16_t>(static_cast<std::uint16_t>(luma[x] * lumaFactor) >> 2);
            const std::uint16_t r = channel(light + red[x]);
            const std::uint16_t g = channel(light + green[x]);
            const std::uint16_t b = channel(light + blue[x]);
            const auto low = static_cast<std::uint16_t>(b | g << 8);
            const auto high = static_cast<std::uint16_t>(r | 0xFF00);
            out[x] = low | static_cast<std::uint32_t>(high) << 16;
        }
    }
}

}
