#pragma once
#include "platform/host/Result.h"

#include <string>

namespace vistrel {
class Value;
}

namespace vistrel::host {

/// Where property lists lie. The user-defaults store is one dictionary.
class Preferences {
public:
    virtual ~Preferences() = default;
    /// The stored dictionary; an empty one when nothing was stored yet.
    virtual Result<Value> load() = 0;
    /// After a crash at any moment the store holds the old or the new dictionary.
    virtual Status save(const Value& dictionary) = 0;
    /// Reads the property list in a file of the machine.
    virtual Result<Value> readPropertyList(const std::string& machinePath) = 0;
};

}
