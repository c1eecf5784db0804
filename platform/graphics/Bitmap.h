#pragma once
#include <cstddef>
#include <cstdint>

namespace vistrel {

/// Pixels in memory: 32 bits each, alpha premultiplied, native-endian ARGB (Cairo's ARGB32).
class Bitmap {
public:
    /// Transparent. Sizes in pixels, at least 1.
    Bitmap(int width, int height);
    ~Bitmap();
    Bitmap(const Bitmap&) = delete;
    Bitmap& operator=(const Bitmap&) = delete;

    /// The side of a picture in pixels for so many points at `scale` pixels per point: whole, at
    /// least 1 and within a sane limit.
    static int pixelsFor(double points, double scale);

    /// Makes all pixels transparent.
    void clear();
    /// Checks every pixel and records whether all are opaque.
    void findOpacity();

    int width() const { return width_; }
    int height() const { return height_; }
    int stride() const { return stride_; } ///< bytes from row to row
    std::uint32_t* row(int y) { return pixels_ + static_cast<std::size_t>(y) * (stride_ / 4); }
    const std::uint32_t* row(int y) const {
        return pixels_ + static_cast<std::size_t>(y) * (stride_ / 4);
    }
    unsigned char* data() { return reinterpret_cast<unsigned char*>(pixels_); }
    const unsigned char* data() const { return reinterpret_cast<const unsigned char*>(pixels_); }
    std::uint32_t pixel(int x, int y) const { return row(y)[x]; }

    /// Grows by one whenever the content is repainted; outputs cache by address and generation.
    std::uint64_t generation() const { return generation_; }
    void contentChanged() { ++generation_; }
    /// No pixel is transparent.
    bool isOpaque() const { return opaque_; }
    void setOpaque(bool opaque) { opaque_ = opaque; }

private:
    int width_;
    int height_;
    int stride_;
    bool opaque_ = false;
    std::uint64_t generation_ = 0;
    std::uint32_t* pixels_; ///< from the pool
};

}
