#pragma once
#include <gio/gio.h>
#include <string>

namespace vistrel::demo {

/// The demo site's program, started beside the gallery and gone with it.
class GalleryServer {
public:
    /// `ownAdFile` is served as the ad "own"; empty: there is none.
    GalleryServer(const std::string& program, const std::string& ownAdFile);
    ~GalleryServer();
    GalleryServer(const GalleryServer&) = delete;
    GalleryServer& operator=(const GalleryServer&) = delete;

    /// Empty when it could not be started.
    const std::string& address() const { return address_; }

private:
    GSubprocess* process_ = nullptr;
    std::string address_;
};

}
