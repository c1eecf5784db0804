#pragma once
#include <functional>
#include <string>

namespace vistrel {

/// A part of the program in a shared object that is opened when it is first needed. Once opened it
/// stays: the libraries below it do not survive being closed.
class NativeModule {
public:
    using Log = std::function<void(const std::string& line)>;

    /// `file` is looked for in $VISTREL_MODULES (which tests set), in "modules" beside the program
    /// (the build tree), and where it is installed relative to the program.
    NativeModule(std::string file, Log log);

    /// The address of a symbol; null when the module cannot be opened, which is logged once.
    void* symbol(const char* name);

private:
    bool open();

    std::string file_;
    Log log_;
    void* handle_ = nullptr;
    bool tried_ = false;
};

}
