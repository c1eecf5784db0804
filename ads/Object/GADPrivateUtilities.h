#pragma once
#include "ads/Object/GADPrivateObject.h"

#include <memory>

namespace vistrel {

/// Maps each public object of the library to its private half, in one table per process. Public
/// objects are keys, compared by address and not retained; they remove themselves in their
/// destructors. Private objects are retained.
class GADPrivateUtilities {
public:
    static void setPrivateObjectForKey(std::shared_ptr<GADPrivateObject> object, const void* key);
    /// Null when there is none.
    static std::shared_ptr<GADPrivateObject> privateObjectForKey(const void* key);
    /// Likewise, for a key whose private object is known to be a T.
    template <typename T>
    static std::shared_ptr<T> privateObjectForKey(const void* key) {
        return std::static_pointer_cast<T>(privateObjectForKey(key));
    }
    static void removePrivateObjectForKey(const void* key);
};

}
