#include "ads/Object/GADPrivateUtilities.h"

#include <unordered_map>
#include <utility>

namespace vistrel {

namespace {
using Table = std::unordered_map<const void*, std::shared_ptr<GADPrivateObject>>;

Table& table() {
    static auto* objects = new Table; // outlives the host at exit
    return *objects;
}
}

void GADPrivateUtilities::setPrivateObjectForKey(std::shared_ptr<GADPrivateObject> object,
                                                 const void* key) {
    // A replaced object is destroyed at the end of this function, since it may use the table then.
    std::swap(table()[key], object);
}

std::shared_ptr<GADPrivateObject> GADPrivateUtilities::privateObjectForKey(const void* key) {
    const auto found = table().find(key);
    return found == table().end() ? nullptr : found->second;
}

void GADPrivateUtilities::removePrivateObjectForKey(const void* key) {
    const auto removed = table().extract(key);
}

}
