#pragma once
#include <gio/gio.h>
#include <string>
#include <vector>

namespace vistrel::demo {

/// A process of the demo site, ended with this object.
class DemoSiteProcess {
public:
    explicit DemoSiteProcess(const std::vector<std::string>& options = {});
    DemoSiteProcess(const DemoSiteProcess&) = delete;
    DemoSiteProcess& operator=(const DemoSiteProcess&) = delete;
    ~DemoSiteProcess();

    /// The first line of what it prints: its address.
    const std::string& firstLine() const { return firstLine_; }
    int port() const;

    /// The rest of its output, until it ends.
    std::string restOfOutput();

private:
    GSubprocess* process_ = nullptr;
    GDataInputStream* output_ = nullptr;
    std::string firstLine_;
};

/// One site that the tests of a program share.
DemoSiteProcess& sharedSite();
}
