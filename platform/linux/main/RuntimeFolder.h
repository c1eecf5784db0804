#pragma once
#include <string>

namespace vistrel {

/// A runtime folder of this process's own. The page engine notes its processes in the runtime
/// folder and leaves the notes there; a session's folder goes with the session, this one with the
/// process.
class RuntimeFolder {
public:
    RuntimeFolder() = default;
    ~RuntimeFolder();
    RuntimeFolder(const RuntimeFolder&) = delete;
    RuntimeFolder& operator=(const RuntimeFolder&) = delete;

    /// In a session without a runtime folder, for GLib and what is built on it. Sound servers are
    /// looked for where they are without one. Call it before GLib asks for the folder.
    void replaceMissing();
    /// Takes the place of the session's folder for the processes that are started from now on, the
    /// display's server among them, except when they look for sound servers. Nothing changes when
    /// it cannot be made.
    void replaceForDisplay();

private:
    bool make();

    std::string path_;
};

}
