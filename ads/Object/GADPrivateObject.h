#pragma once
#include <memory>

namespace vistrel {

/// The private half of a public object of the library. Kept by GADPrivateUtilities.
class GADPrivateObject : public std::enable_shared_from_this<GADPrivateObject> {
public:
    GADPrivateObject() = default;
    virtual ~GADPrivateObject() = default;
    GADPrivateObject(const GADPrivateObject&) = delete;
    GADPrivateObject& operator=(const GADPrivateObject&) = delete;
};

}
