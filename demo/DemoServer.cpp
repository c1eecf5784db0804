#include "demo/DemoServer.h"

#include "demo/Exchange.h"
#include "demo/Routes.h"

namespace vistrel::demo {

DemoServer::DemoServer(const std::string& mediaFolder, std::string ownAdFile)
    : server_(soup_server_new("server-header", "demo", "raw-paths", TRUE, nullptr))
    , site_(mediaFolder) {
    site_.ownAdFile = std::move(ownAdFile);
    soup_server_add_handler(server_, nullptr, onRequest, this, nullptr);
}

DemoServer::~DemoServer() {
    g_object_unref(server_);
}

std::string DemoServer::listen(unsigned port, std::string& complaint) {
    GError* error = nullptr;
    if (soup_server_listen_local(server_, port, SOUP_SERVER_LISTEN_IPV4_ONLY, &error) == FALSE) {
        complaint = error->message;
        g_error_free(error);
        return {};
    }
    GSList* addresses = soup_server_get_uris(server_);
    const int chosen = g_uri_get_port(static_cast<GUri*>(addresses->data));
    g_slist_free_full(addresses,
                      reinterpret_cast<GDestroyNotify>(reinterpret_cast<void (*)()>(g_uri_unref)));
    return "http://127.0.0.1:" + std::to_string(chosen);
}

void DemoServer::onRequest(SoupServer* /*server*/, SoupServerMessage* message, const char* /*path*/,
                           GHashTable* /*query*/, gpointer self) {
    static_cast<DemoServer*>(self)->receive(message);
}

void DemoServer::receive(SoupServerMessage* message) {
    Request request = requestFrom(message);
    ++site_.hits[{request.method, request.path}];
    site_.adLog.add(request);
    Exchange::start(message, std::move(request), site_);
}
}
