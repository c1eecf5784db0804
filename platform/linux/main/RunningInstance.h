#pragma once
#include "platform/linux/NativeReference.h"

#include <gio/gio.h>

#include <functional>
#include <string>
#include <vector>

namespace vistrel {

/// There is one process for each device root. It holds a lock on the folder, which ends with the
/// process, and can be reached over the session bus as org.freedesktop.Application.
class RunningInstance {
public:
    /// What is to be opened, and what the desktop sent for the window to take the focus.
    using Activated = std::function<void(const std::vector<std::string>& addresses,
                                         const std::string& startupToken)>;

    /// `deviceRoot` is made when it is missing. `isDefaultRoot` decides the name on the bus: that
    /// of the desktop entry, or one of the root's own.
    RunningInstance(const std::string& deviceRoot, bool isDefaultRoot);
    ~RunningInstance();
    RunningInstance(const RunningInstance&) = delete;
    RunningInstance& operator=(const RunningInstance&) = delete;

    /// False when another process has this device root.
    bool isFirst() const { return isFirst_; }
    /// Has that process raise its window and open `address`, unless that is empty. False when it
    /// cannot be reached.
    bool activateFirst(const std::string& address) const;
    /// From now on others reach this process. Without a session bus nothing happens.
    void listen(Activated activated);

private:
    struct Calls;

    std::string busName_;
    int lock_ = -1;
    bool isFirst_ = true;
    Activated activated_;
    NativeReference<GDBusConnection> connection_;
    guint registration_ = 0;
    guint nameOwner_ = 0;
};

}
