#pragma once
#include "platform/host/Result.h"

#include <string>

namespace vistrel {
class Value;
}

namespace vistrel::host {

/// Property lists on the machine. The user-defaults store is one dictionary.
class Preferences {
public:
    virtual ~Preferences() = default;
    /// The stored dictionary; empty when nothing has been stored yet.
    virtual Result<Value> load() = 0;
    /// After a crash at any moment the store has the old or the new dictionary.
    virtual Status save(const Value& dictionary) = 0;
    /// Reads a property list file of the machine.
    virtual Result<Value> readPropertyList(const std::string& machinePath) = 0;
};

}
