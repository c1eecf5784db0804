#include "tests/support/MemoryPreferences.h"

#include <cerrno>
#include <cstring>

namespace vistrel::support {

host::Result<Value> MemoryPreferences::load() {
    if (failure_)
        return host::Failure{failure_, std::strerror(failure_)};
    return stored_;
}

host::Status MemoryPreferences::save(const Value& dictionary) {
    if (failure_)
        return host::Failure{failure_, std::strerror(failure_)};
    ++saves_;
    stored_ = dictionary;
    return host::Done{};
}

host::Result<Value> MemoryPreferences::readPropertyList(const std::string& machinePath) {
    const auto found = lists_.find(machinePath);
    if (found == lists_.end())
        return host::Failure{ENOENT, std::strerror(ENOENT)};
    return found->second;
}

}
