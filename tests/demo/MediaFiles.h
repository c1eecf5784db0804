#pragma once
#include <fstream>
#include <iterator>
#include <string>

namespace vistrel::demo {

/// The bytes of a file of the site's media folder.
inline std::string mediaBytes(const std::string& name) {
    std::ifstream stream(std::string(DEMO_MEDIA_FOLDER) + "/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}
}
