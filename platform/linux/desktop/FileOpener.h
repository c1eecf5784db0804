#pragma once
#include "platform/host/Desktop.h"
#include "platform/host/Result.h"
#include "platform/linux/NativeReference.h"

#include <gio/gio.h>

#include <functional>
#include <string>
#include <utility>

namespace vistrel {

/// Hands files of the machine to other programs: through the desktop's services where they answer,
/// by the list of installed programs otherwise. Each function reports once, on the loop, unless it
/// is cancelled first.
class FileOpener {
public:
    using Done = std::function<void(host::Status)>;

    /// Without a bus only installed programs are left.
    FileOpener(NativeReference<GDBusConnection> bus, NativeReference<GCancellable> cancellable)
        : bus_(std::move(bus))
        , cancellable_(std::move(cancellable)) {}

    /// Lets the user choose a program; where the desktop cannot ask, `ask` does. It is never this
    /// program.
    void openWith(const std::string& path, host::AskForProgram ask, Done done) const;
    /// Shows the file in the file manager, or at least its folder.
    void showInFolder(const std::string& path, Done done) const;

private:
    NativeReference<GDBusConnection> bus_;
    NativeReference<GCancellable> cancellable_;
};

}
