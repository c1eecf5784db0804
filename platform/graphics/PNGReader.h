#pragma once
#include <cstddef>
#include <memory>
#include <span>

namespace vistrel {
class Bitmap;

/// PNG pictures (ISO/IEC 15948) into pixels.
namespace PNGReader {

/// A whole file's bytes; the caller has checked its size. Null when the file is broken or ends
/// early.
std::shared_ptr<Bitmap> read(std::span<const std::byte> bytes);

}
}
