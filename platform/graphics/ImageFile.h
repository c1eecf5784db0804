#pragma once
#include <cstddef>
#include <memory>
#include <span>
#include <string>

namespace vistrel {
class Bitmap;

/// Picture files: PNG and JPEG, told apart by their first bytes.
namespace ImageFile {

/// Null when the file is missing, unreadable, broken or of another format.
std::shared_ptr<Bitmap> read(const std::string& path);
std::shared_ptr<Bitmap> decode(std::span<const std::byte> bytes);
/// Whether the PNG was written whole.
bool writePNG(const Bitmap& bitmap, const std::string& path);

}
}
