#include "platform/graphics/UIImage.h"

#include "platform/graphics/Bitmap.h"
#include "platform/graphics/CGContext.h"
#include "platform/graphics/ImageFile.h"
#include "platform/host/Host.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <future>
#include <map>
#include <unistd.h>
#include <utility>
#include <vector>

namespace vistrel {

namespace {

double currentScale = 1;

struct Variant {
    std::string path;
    double scale = 1;
};

std::string variantPath(const std::string& path, int scale) {
    if (scale == 1)
        return path;
    const auto slash = path.rfind('/');
    auto dot = path.rfind('.');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash))
        dot = path.size();
    return path.substr(0, dot) + "@" + std::to_string(scale) + "x" + path.substr(dot);
}

/// The smallest variant that is sharp enough, else the sharpest; empty when there is none.
Variant bestVariant(const std::string& path, double screenScale) {
    Variant best;
    for (const int scale : {1, 2, 3}) {
        auto candidate = variantPath(path, scale);
        if (access(candidate.c_str(), R_OK) != 0)
            continue;
        best = {std::move(candidate), static_cast<double>(scale)};
        if (scale >= screenScale)
            break;
    }
    return best;
}

using Picture = std::shared_ptr<const UIImage>;

Picture load(const std::string& path, double screenScale) {
    const Variant variant = bestVariant(path, screenScale);
    if (variant.path.empty())
        return nullptr;
    auto bitmap = ImageFile::read(variant.path);
    return bitmap ? std::make_shared<UIImage>(std::move(bitmap), variant.scale) : nullptr;
}

/// Of a resource: its path, and the screen's scale as far as the variants differ. A window that is
/// being resized has many scales.
using Key = std::pair<std::string, double>;
constexpr double kLargestVariant = 3;

Key keyOf(const std::string& name, double screenScale) {
    const bool hasExtension = name.find('.') != std::string::npos;
    return {host::current().resourcePath + "/" + name + (hasExtension ? "" : ".png"),
            std::clamp(std::ceil(screenScale), 1.0, kLargestVariant)};
}

/// Pictures read ahead and not used yet.
std::map<Key, std::future<Picture>>& readings() {
    static auto& readings = *new std::map<Key, std::future<Picture>>;
    return readings;
}

Picture read(const Key& key) {
    if (auto reading = readings().extract(key))
        return reading.mapped().get();
    return load(key.first, key.second);
}

/// One direction of a stretched picture: bands of pixels and the points that they cover.
struct Band {
    double source;
    double sourceLength;
    double target;
    double targetLength;
};

std::vector<Band> bands(double pixels, double scale, int cap, double origin, double length) {
    if (cap <= 0)
        return {{0, pixels, origin, length}};
    const double middle = std::max(scale, 1.0);
    const double first = std::min(cap * scale, pixels - middle);
    const double last = pixels - first - middle;
    // Caps that do not fit shrink together.
    const double shrink = std::min(1.0, length * scale / std::max(first + last, 1.0));
    const double firstPoints = first / scale * shrink;
    const double lastPoints = last / scale * shrink;
    return {{0, first, origin, firstPoints},
            {first, middle, origin + firstPoints, length - firstPoints - lastPoints},
            {first + middle, last, origin + length - lastPoints, lastPoints}};
}

}

UIImage::UIImage(std::shared_ptr<const Bitmap> bitmap, double scale)
    : bitmap_(std::move(bitmap))
    , scale_(scale) {}

std::shared_ptr<const UIImage> UIImage::imageNamed(const std::string& name) {
    static auto& cache = *new std::map<Key, Picture>;
    const Key key = keyOf(name, currentScale);
    if (const auto found = cache.find(key); found != cache.end())
        return found->second;
    auto image = read(key);
    if (image)
        cache.emplace(key, image);
    return image;
}

void UIImage::readAhead(const std::string& name, double screenScale) {
    const Key key = keyOf(name, screenScale);
    if (!readings().contains(key))
        readings()[key] = std::async(std::launch::async, load, key.first, key.second);
}

std::shared_ptr<const UIImage> UIImage::imageWithContentsOfFile(const std::string& path) {
    return load(path, currentScale);
}

std::shared_ptr<const UIImage> UIImage::imageWithData(std::span<const std::byte> data) {
    auto bitmap = ImageFile::decode(data);
    return bitmap ? std::make_shared<UIImage>(std::move(bitmap), 1) : nullptr;
}

void UIImage::setScreenScale(double scale) {
    currentScale = scale;
}

double UIImage::screenScale() {
    return currentScale;
}

CGSize UIImage::size() const {
    return {bitmap_->width() / scale_, bitmap_->height() / scale_};
}

std::shared_ptr<const UIImage> UIImage::stretchableImage(int leftCapWidth, int topCapHeight) const {
    auto image = std::make_shared<UIImage>(bitmap_, scale_);
    image->leftCapWidth_ = leftCapWidth;
    image->topCapHeight_ = topCapHeight;
    return image;
}

void UIImage::drawAtPoint(CGPoint point) const {
    drawInRect({point, size()});
}

void UIImage::drawInRect(const CGRect& rect) const {
    auto* context = UIGraphicsGetCurrentContext();
    if (context == nullptr || rect.isEmpty())
        return;
    if (leftCapWidth_ <= 0 && topCapHeight_ <= 0) {
        context->drawBitmap(*bitmap_, rect);
        return;
    }
    const auto columns =
        bands(bitmap_->width(), scale_, leftCapWidth_, rect.minX(), rect.size.width);
    const auto rows =
        bands(bitmap_->height(), scale_, topCapHeight_, rect.minY(), rect.size.height);
    for (const auto& row : rows) {
        for (const auto& column : columns) {
            context->drawBitmapPart(
                *bitmap_,
                CGRectMake(column.source, row.source, column.sourceLength, row.sourceLength),
                CGRectMake(column.target, row.target, column.targetLength, row.targetLength));
        }
    }
}

}
