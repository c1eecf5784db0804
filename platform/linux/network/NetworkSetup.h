#pragma once

// NOLINTNEXTLINE(bugprone-reserved-identifier): the library's own name
using SoupCookieJar = struct _SoupCookieJar;

namespace vistrel {
namespace host {
class EventLoop;
class Network;
}

/// The entry points of the connections' module. The caller owns the network; the loop must outlive
/// it.
using CreateNetwork = host::Network* (*)(host::EventLoop& loop);
inline constexpr const char* kCreateNetworkSymbol = "vistrel_create_network";
/// The cookies of all of the module's connections; they live until the process ends.
using SharedCookieJar = SoupCookieJar* (*)();
inline constexpr const char* kSharedCookieJarSymbol = "vistrel_shared_cookie_jar";

}
