#pragma once
#include "platform/host/Result.h"
#include "platform/linux/modules/NativeModule.h"

#include <cerrno>
#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace vistrel {

/// What a module provides, made on first use. `Create` is the type of the module's entry point.
template <typename Service, typename Create>
class DeferredService {
public:
    using Make = std::function<std::shared_ptr<Service>(Create create)>;

    /// The module is "vistrel-`name`.so"; `make` calls its entry point, `symbol`.
    DeferredService(const std::string& name, NativeModule::Log log, const char* symbol, Make make)
        : module_("vistrel-" + name + ".so", std::move(log))
        , symbol_(symbol)
        , make_(std::move(make)) {}

    /// Null if the module cannot be loaded.
    Service* get() {
        if (!service_)
            if (const auto create = function<Create>(symbol_))
                service_ = make_(create);
        return service_.get();
    }
    /// Null before the first use; loads nothing.
    Service* existing() const { return service_.get(); }
    /// Another function of the module; null if the module cannot be loaded.
    template <typename Function>
    Function function(const char* symbol) {
        return reinterpret_cast<Function>(module_.symbol(symbol));
    }
    /// What a caller is told when get returns null; the log names the module.
    host::Failure missing() const { return {ENOSYS, "A part of Vistrel is not installed."}; }

private:
    NativeModule module_;
    const char* symbol_;
    Make make_;
    std::shared_ptr<Service> service_;
};

}
