#pragma once
#include <optional>
#include <string>

using GSubprocess = struct _GSubprocess;

namespace vistrel {

/// Shows the program's window in any web browser: the toolkit's own display server, ended with this
/// object.
class BroadwayServer {
public:
    ~BroadwayServer();

    /// Starts it on a free loopback port and makes it the display of this process. Nothing when it
    /// cannot be started.
    bool start();
    /// For the web browser.
    std::string address() const;

private:
    GSubprocess* server_ = nullptr;
    int port_ = 0;
};

}
