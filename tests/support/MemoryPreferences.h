#pragma once
#include "platform/host/Preferences.h"

#include "platform/foundation/Value.h"
#include "tests/support/Testing.h"

#include <cerrno>
#include <cstring>

namespace vistrel::support {

/// A user-defaults store in memory that outlives the shared object which reads it.
class MemoryPreferences : public host::Preferences {
public:
    host::Result<Value> load() override {
        return failure_ ? host::Result<Value>(error(failure_)) : stored_;
    }
    host::Status save(const Value& dictionary) override {
        if (failure_)
            return error(failure_);
        ++saves_;
        stored_ = dictionary;
        return host::Done{};
    }
    host::Result<Value> readPropertyList(const std::string& machinePath) override {
        const auto found = lists_.find(machinePath);
        return found == lists_.end() ? host::Result<Value>(error(ENOENT)) : found->second;
    }

    const Value& stored() const { return stored_; }
    void setStored(Value dictionary) { stored_ = std::move(dictionary); }
    void setPropertyList(const std::string& machinePath, Value list) {
        lists_.insert_or_assign(machinePath, std::move(list));
    }
    /// 0: loading and saving succeed.
    void setFailure(int code) { failure_ = code; }
    int saves() const { return saves_; }

private:
    static host::Failure error(int code) { return {code, std::strerror(code)}; }

    Value stored_{Value::Dictionary()};
    std::map<std::string, Value> lists_;
    int failure_ = 0;
    int saves_ = 0;
};

}
