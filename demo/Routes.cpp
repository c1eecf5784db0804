#include "demo/Routes.h"

#include "demo/Page.h"

#include <array>

namespace vistrel::demo {
namespace {
constexpr std::array<Route, 45> table = {{
    {"GET", "/", indexPage},
    {"GET", "/tvshows/*", showPage},
    {"GET", "/db/showthread.php", showPage},
    {"GET", "/db/showpost.php", showPage},
    {"GET", "/mdb/*", moviePage},
    {"GET", "/music/", musicPage},
    {"GET", "/partner/*", partnerPage},
    {"GET", "/vip/", membersPage},
    {"POST", "/vip/login", membersLogin},
    {"GET", "/vip/logout", membersLogout},
    {"GET", "/vip/members-only.mp4", membersFile},
    {"GET", "/vip/fetch", postedFormPage},
    {"POST", "/vip/fetch", postedFormFile},
    {"GET", "/rotate/", rotatingPage},
    {"GET", "/rotate/film.mp4", rotatingFile},
    {"GET", "/media/", mediaPage},
    {"GET", "/media/*", mediaFile},
    {"GET", "/files/*", episodeFile},
    {"GET", "/frames/", framesPage},
    {"GET", "/attach/", attachmentsPage},
    {"GET", "/attach/*", attachmentFile},
    {"GET", "/r/", redirectsPage},
    {"GET", "/r/*", redirection},
    {"POST", "/r/*", redirection},
    {"GET", "/misbehave/", misbehavioursPage},
    {"GET", "/big", bigFile},
    {"GET", "/big.sha256", bigFileDigest, true},
    {"GET", "/sha256", fileDigest},
    {"GET", "/afma/sdk-core-v40.js", adScript},
    {"GET", "/safa/sdk-core-v40.js", searchAdScript},
    {"GET", "/ads/", adsPage},
    {"GET", "/ads/serve", serveAd},
    {"GET", "/ads/land/*", adLandingPage},
    {"GET", "/ads/app/*", adWebApp},
    {"GET", "/ads/frame", adFrame},
    {"GET", "/ads/track/*", adPing},
    {"GET", "/ads/event/*", adPing},
    {"GET", "/ads/clicked/*", adPing},
    {"GET", "/ads/click/*", adClickPing},
    {"GET", "/ads/log", adLogPage},
    {"GET", "/counters/post", postCounter},
    {"GET", "/counters/hits", hitCounter},
    {"GET", "/echo", echo},
    {"POST", "/echo", echo},
    {"GET", "/favicon.ico",
     [](Site&, const Request&) {
         return errorAnswer(404, "No icon.");
     }},
}};

bool fits(const Route& route, const Request& request) {
    if (route.method != (request.method == "HEAD" ? "GET" : request.method))
        return false;
    if (route.path.ends_with('*'))
        return request.path.starts_with(route.path.substr(0, route.path.size() - 1));
    return request.path == route.path;
}
}

std::span<const Route> routes() {
    return table;
}

const Route* routeFor(const Request& request) {
    for (const Route& route : table)
        if (fits(route, request))
            return &route;
    return nullptr;
}

std::vector<AddressGroup> servedAddresses() {
    return {
        {"Menu", {{"/music/", "Music"}, {"/vip/", "VIP Login"}}},
        {"Partner sites", partnerAddresses()},
        {"Things to try",
         {{"/media/", "Media"},
          {"/attach/", "Attachments"},
          {"/r/", "Redirects"},
          {"/misbehave/", "Misbehaviour"},
          {"/frames/", "Frames"},
          {"/ads/", "Ads"},
          {"/rotate/", "Rotating session"},
          {"/vip/fetch", "Film by form"},
          {"/vip/members-only.mp4", "Members' film"},
          {"/big?mb=64&type=video/mp4&name=big.mp4", "Big file"},
          {"/big.sha256?mb=64", "Digest of the big file"},
          {"/sha256?path=/media/harbour-at-dawn.mp4", "Digest of a film"},
          {"/counters/post", "Counter of posted forms"},
          {"/counters/hits?path=/music/", "Counter of visits"},
          {"/echo", "Echo of the request"}}},
        {"Media", mediaAddresses()},
        {"Attachments", attachmentAddresses()},
        {"Redirects", redirectAddresses()},
        {"TV shows", showAddresses()},
        {"Movies", movieAddresses()},
    };
}

Answer indexPage(Site& /*site*/, const Request& /*request*/) {
    Page page("Demo site");
    page.paragraph("Content site, partner sites and their media, all on this machine.");
    for (const AddressGroup& group : servedAddresses()) {
        page.section(group.title);
        for (const Address& address : group.addresses)
            page.link(address.address, address.title, address.address);
    }
    return page.answer();
}
}
