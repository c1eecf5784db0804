#pragma once
#include <optional>
#include <string>

using GSubprocess = struct _GSubprocess;

namespace vistrel {

/// The toolkit's display server for web browsers. It ends with this object.
class BroadwayServer {
public:
    ~BroadwayServer();

    /// Its socket is in the runtime folder. Starts it on a free loopback port and makes it the
    /// display of this process. False when it cannot be started.
    bool start();
    /// For the web browser.
    std::string address() const;

private:
    GSubprocess* server_ = nullptr;
    int port_ = 0;
};

}
