#include "platform/uikit/FlipDrawing.h"

#include "platform/uikit/SceneVisitor.h"

#include <cmath>
#include <vector>

namespace vistrel {

namespace {

/// The viewing distance, in widths of the flipped view.
constexpr double kEyeDistance = 2.5;
constexpr double kDeepestShade = 0.4;
/// Fixed-point unit of subpixel positions.
constexpr int kUnit = 256;

/// Mixes two premultiplied pixels, `part` of 256 of the second, two channels at a time.
std::uint32_t mix(std::uint32_t a, std::uint32_t b, std::uint32_t part) {
    constexpr std::uint32_t mask = 0x00FF00FF;
    const std::uint32_t rest = kUnit - part;
    const std::uint32_t even = ((a & mask) * rest + (b & mask) * part) >> 8 & mask;
    const std::uint32_t odd = ((a >> 8 & mask) * rest + (b >> 8 & mask) * part) & ~mask;
    return even | odd;
}

std::uint32_t darken(std::uint32_t pixel, std::uint32_t light) {
    constexpr std::uint32_t mask = 0x00FF00FF;
    const std::uint32_t redBlue = (pixel & mask) * light >> 8 & mask;
    const std::uint32_t green = (pixel >> 8 & 0xFF) * light & 0xFF00;
    return (pixel & 0xFF000000) | redBlue | green;
}

/// Where one column of the result samples the picture.
struct Column {
    bool sees = false;
    int x = 0;          ///< left neighbour's column, -1 for none
    std::uint32_t part; ///< of the right neighbour
    double step = 1;    ///< picture rows for one row of the result
};

std::vector<Column> columnsFor(int width, double angle) {
    std::vector<Column> columns(static_cast<std::size_t>(width));
    const double distance = kEyeDistance * width;
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    for (int i = 0; i < width; ++i) {
        const double seen = i + 0.5 - width / 2.0;
        const double x = seen * distance / (distance * cosine - seen * sine);
        const double source = x + width / 2.0 - 0.5;
        auto& column = columns[static_cast<std::size_t>(i)];
        column.sees = source > -1 && source < width;
        column.x = static_cast<int>(std::floor(source));
        column.part = static_cast<std::uint32_t>((source - column.x) * kUnit);
        column.step = (distance + x * sine) / distance;
    }
    return columns;
}

/// Bilinear sample; outside the picture is transparent, which smooths the
/// edges.
std::uint32_t sample(const Bitmap& picture, const Column& column, double row) {
    const int y = static_cast<int>(std::floor(row));
    if (y < -1 || y >= picture.height())
        return 0;
    const auto down = static_cast<std::uint32_t>((row - y) * kUnit);
    const int right = column.x + 1;
    const auto across = [&](int line) -> std::uint32_t {
        if (line < 0 || line >= picture.height())
            return 0;
        const auto* pixels = picture.row(line);
        return mix(column.x >= 0 ? pixels[column.x] : 0,
                   right < picture.width() ? pixels[right] : 0, column.part);
    };
    return mix(across(y), across(y + 1), down);
}

}

void turnPicture(const Bitmap& picture, double angle, std::shared_ptr<Bitmap>& turned) {
    const int headroom = static_cast<int>(std::ceil(kFlipHeadroom * picture.height()));
    const int height = picture.height() + 2 * headroom;
    if (turned && turned->width() == picture.width() && turned->height() == height)
        turned->clear();
    else
        turned = std::make_shared<Bitmap>(picture.width(), height);
    const auto columns = columnsFor(picture.width(), angle);
    const auto light = static_cast<std::uint32_t>(
        std::lround(kUnit * (1 - kDeepestShade * std::abs(std::sin(angle)))));
    for (int y = 0; y < height; ++y) {
        const double fromMiddle = y + 0.5 - height / 2.0;
        auto* out = turned->row(y);
        for (const auto& column : columns) {
            if (column.sees) {
                const double row = fromMiddle * column.step + picture.height() / 2.0 - 0.5;
                *out = darken(sample(picture, column, row), light);
            }
            ++out;
        }
    }
    turned->contentChanged();
}

void drawFlip(UIViewAnimationEngine::Flip& flip, const CGRect& bounds, SceneVisitor& visitor) {
    const bool firstHalf = flip.progress < 0.5;
    const auto& picture = firstHalf ? flip.before : flip.after;
    if (!picture || bounds.isEmpty())
        return;
    const double turn = M_PI * (firstHalf ? flip.progress : flip.progress - 1);
    if (turn == 0) {
        visitor.drawPicture(bounds, picture);
        return;
    }
    turnPicture(*picture, flip.fromLeft ? turn : -turn, flip.turned);
    const double headroom =
        std::ceil(kFlipHeadroom * picture->height()) * bounds.size.height / picture->height();
    visitor.drawPicture(bounds.insetBy(0, -headroom), flip.turned);
}

}
