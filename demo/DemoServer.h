#pragma once
#include "demo/Misbehaviour.h"
#include "demo/Options.h"
#include "demo/Site.h"

#include <libsoup/soup.h>
#include <memory>
#include <string>

namespace vistrel::demo {

/// Answers requests on 127.0.0.1 with the site's pages. Runs on the main loop.
class DemoServer {
public:
    DemoServer(const std::string& mediaFolder, std::string ownAdFile);
    DemoServer(const DemoServer&) = delete;
    DemoServer& operator=(const DemoServer&) = delete;
    ~DemoServer();

    /// Starts listening; port 0 takes a free one. Returns the address without a trailing slash,
    /// or an empty text, with the reason in `complaint`.
    std::string listen(unsigned port, std::string& complaint);

private:
    static void onRequest(SoupServer* server, SoupServerMessage* message, const char* path,
                          GHashTable* query, gpointer self);
    void receive(SoupServerMessage* message);

    SoupServer* server_;
    Site site_;
};
}
