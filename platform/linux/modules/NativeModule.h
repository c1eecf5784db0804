#pragma once
#include <functional>
#include <string>

namespace vistrel {

/// A shared object with a part of the program, loaded on first use and never unloaded, which its
/// libraries would not survive.
class NativeModule {
public:
    using Log = std::function<void(const std::string& line)>;

    /// `file` is looked for in $VISTREL_MODULES (which tests set), in "modules" beside the program
    /// (the build tree), and where it is installed relative to the program.
    NativeModule(std::string file, Log log);

    /// The address of a symbol; null if the module cannot be loaded, which is logged once.
    void* symbol(const char* name);

private:
    bool open();

    std::string file_;
    Log log_;
    void* handle_ = nullptr;
    bool tried_ = false;
};

}
