#pragma once
#include "platform/host/Preferences.h"

#include "platform/foundation/Value.h"

#include <map>
#include <string>
#include <utility>

namespace vistrel::support {

/// A user-defaults store in memory that outlives the shared object which reads it.
class MemoryPreferences : public host::Preferences {
public:
    host::Result<Value> load() override;
    host::Status save(const Value& dictionary) override;
    host::Result<Value> readPropertyList(const std::string& machinePath) override;

    const Value& stored() const { return stored_; }
    void setStored(Value dictionary) { stored_ = std::move(dictionary); }
    void setPropertyList(const std::string& machinePath, Value list) {
        lists_.insert_or_assign(machinePath, std::move(list));
    }
    /// 0: loading and saving succeed.
    void setFailure(int code) { failure_ = code; }
    int saves() const { return saves_; }

private:
    Value stored_{Value::Dictionary()};
    std::map<std::string, Value> lists_;
    int failure_ = 0;
    int saves_ = 0;
};

}
