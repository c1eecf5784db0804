#include "demo/Sessions.h"

#include <random>

namespace vistrel::demo {

std::string Sessions::open() {
    std::random_device random;
    std::string token = std::to_string(random()) + std::to_string(random());
    tokens_.insert(token);
    return token;
}

void Sessions::close(const std::string& token) {
    tokens_.erase(token);
}
}
