#pragma once
#include "platform/linux/media/RowScaler.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vistrel {

/// One component of a decoded frame, one byte per sample.
struct YuvPlane {
    const std::uint8_t* samples;
    int width;
    int height;
    std::ptrdiff_t stride; ///< bytes from one row to the next
};

/// The factors that convert luma and colour differences to red, green and blue, in units of 2^-13.
struct YuvColors {
    int lumaOffset;
    std::int16_t luma;
    std::int16_t redFromRed;
    std::int16_t greenFromRed;
    std::int16_t greenFromBlue;
    std::int16_t blueFromBlue;

    /// `red` and `blue` are those components' shares of luma (BT.601: 0.299 and 0.114).
    static YuvColors make(double red, double blue, bool isFullRange);
};

/// A decoded frame in planes; the two colour planes usually have half the luma's size.
struct YuvFrame {
    YuvPlane luma;
    YuvPlane blueDifference;
    YuvPlane redDifference;
    YuvColors colors;
};

/// First mirrors a picture left to right, then rotates it clockwise.
struct PictureTurn {
    bool mirrored = false;
    int quarters = 0; ///< 0 to 3

    bool swapsSides() const { return quarters % 2 != 0; }
    PictureTurn turnedFurther(int more) const { return {mirrored, (quarters + more) % 4}; }
};

/// Scales, rotates and converts decoded frames in one pass. A player needs this thirty times a
/// second without a graphics processor, so it touches each source byte once and keeps its scratch
/// memory.
class YuvScaler {
public:
    /// Writes `width` × `height` pixels, the size after rotation, as blue, green, red and 255 in
    /// memory order; `pixels` has no padding.
    void scale(const YuvFrame& frame, PictureTurn turn, int width, int height,
               std::uint32_t* pixels);

private:
    /// The layout of a scaled plane: the steps to the next column and the next row, in samples.
    struct Layout {
        std::ptrdiff_t first;
        std::ptrdiff_t column;
        std::ptrdiff_t row;
    };
    static Layout layoutFor(PictureTurn turn, int width, int height);
    void scalePlane(YuvPlane plane, RowScaler& rowScaler, PictureTurn turn, int width, int height,
                    std::vector<std::uint8_t>& to);
    YuvPlane halved(const YuvPlane& plane);
    void makeRow(const YuvPlane& plane, const RowScaler& rowScaler, int row, int rows,
                 std::uint8_t* to);
    void convert(const YuvColors& colors, int width, int height, std::uint32_t* pixels);
    void findColorTerms(const YuvColors& colors, const std::uint8_t* blue, const std::uint8_t* red,
                        int count);

    std::vector<std::uint8_t> half_[2];
    std::vector<std::uint8_t> blended_;
    std::vector<std::uint8_t> block_;
    RowScaler lumaRows_;
    RowScaler colorRows_;
    std::vector<std::uint8_t> luma_;
    std::vector<std::uint8_t> blue_;
    std::vector<std::uint8_t> red_;
    std::vector<std::int16_t> redTerms_;
    std::vector<std::int16_t> greenTerms_;
    std::vector<std::int16_t> blueTerms_;
};

}
