#pragma once
#include <gio/gio.h>
#include <string>
#include <vector>

namespace vistrel::demo {

/// The demo site's program, started for a test and gone with it.
class DemoSiteProcess {
public:
    explicit DemoSiteProcess(const std::vector<std::string>& options = {});
    DemoSiteProcess(const DemoSiteProcess&) = delete;
    DemoSiteProcess& operator=(const DemoSiteProcess&) = delete;
    ~DemoSiteProcess();

    /// The first line of what it prints: its address.
    const std::string& firstLine() const { return firstLine_; }
    int port() const;

    /// Everything else that it prints until it ends.
    std::string restOfOutput();

    void closeInput();

    /// Whether it has ended by itself within the time.
    bool endsWithin(double seconds);
    int exitStatus() const;

private:
    GSubprocess* process_ = nullptr;
    GDataInputStream* output_ = nullptr;
    std::string firstLine_;
};

/// One site that the tests of a program share.
DemoSiteProcess& sharedSite();
}
