#include "demo/AdTable.h"

#include <algorithm>

namespace vistrel::demo {
namespace {
constexpr std::string_view landing = "{site}/ads/land/film/";
constexpr std::string_view tracked = "X-Afma-Tracking-Urls: {site}/ads/track/{name}";
constexpr std::string_view trackedForAMinute = "X-Afma-Tracking-Urls: {site}/ads/track/{name}\n"
                                               "X-Afma-Refresh-Rate: 60";
constexpr std::string_view clicks =
    "X-Afma-Tracking-Urls: {site}/ads/track/{name} {site}/ads/track/{name}/partner\n"
    "X-Afma-Click-Tracking-Urls: {site}/ads/click/{name} {site}/ads/click/{name}/partner";

// A page in a frame that sends the commands in its address.
constexpr std::string_view framed =
    R"(<!DOCTYPE html><body style="margin:0"><iframe width="320" height="50" style="border:0"
src="{site}/ads/frame"></iframe>)";
constexpr std::string_view framedInSandbox =
    R"(<!DOCTYPE html><body style="margin:0"><iframe width="320" height="50" style="border:0"
sandbox="allow-scripts" src="{site}/ads/frame"></iframe>)";

// Shows the application's answers in the ad.
constexpr std::string_view showsAnswers =
    "function AFMA_ReceiveMessage(name,answer){"
    "document.getElementById('said').textContent=name+' '+JSON.stringify(answer)}";

constexpr Ad table[] = {
    {"film", "Film festival", "film", "{site}/ads/land/film/", "", trackedForAMinute},
    {"music", "Record", "music", "{site}/ads/land/music/", "", trackedForAMinute},
    {"shop", "Tea shop", "shop", "{site}/ads/land/shop/", "", trackedForAMinute},
    {"film-screen", "Film festival, full screen", "film", "{site}/ads/land/film/", "", tracked, "",
     200, true},
    {"music-screen", "Record, full screen", "music", "{site}/ads/land/music/", "", tracked, "", 200,
     true},
    {"shop-screen", "Tea shop, full screen", "shop", "{site}/ads/land/shop/", "", tracked, "", 200,
     true},

    {"link", "A plain link", "film", landing},
    {"script-link", "A link opened by script, untouched", "music", landing,
     "setTimeout(function(){location='{site}/ads/land/music/'},600)"},
    {"clicks", "Click and tracking addresses", "music", "{site}/ads/app/music", "", clicks},
    {"redirected", "An ad behind a redirect", "", "", "",
     "Location: {site}/ads/serve?ad=shop&after=redirect\n"
     "X-Afma-Tracking-Urls: {site}/ads/track/redirected",
     "Moved.", 302},
    {"signed", "A link with a click string", "shop", "{site}/ads/land/shop/?ai=DemoClickString"},

    {"gmsg-click", "click: pings", "", "gmsg://ads/click?u={site}%2Fads%2Fclick%2F{name}"},
    {"gmsg-close", "close: nothing in a banner", "", "gmsg://ads/close"},
    {"gmsg-httptrack", "httpTrack: pings", "",
     "gmsg://ads/httpTrack?u={site}%2Fads%2Ftrack%2F{name}"},
    {"gmsg-log", "log: one line", "", "gmsg://ads/log?string=Said%20by%20an%20ad"},
    {"gmsg-open", "open: a browser", "",
     "gmsg://ads/open?a=browser&u={site}%2Fads%2Fland%2Ffilm%2F"},
    {"gmsg-open-app", "open: a web app", "",
     "gmsg://ads/open?a=webapp&u={site}%2Fads%2Fapp%2Ffilm"},
    {"gmsg-open-html", "open: a web app of HTML", "",
     "gmsg://ads/open?a=webapp&html=%3Cbody%20style%3D%22background%3A%23fff%3B"
     "font%3A24px%20sans-serif%3Bpadding%3A60px%2024px%22%3EA%20page%20out%20of%20a%20parameter"},
    {"gmsg-open-call", "open: a call", "", "gmsg://ads/open?a=call&u=tel%3A%2B15550100"},
    {"gmsg-open-portrait", "open: portrait only", "",
     "gmsg://ads/open?a=webapp&o=p&u={site}%2Fads%2Fapp%2Fshop"},
    {"gmsg-touch", "touch: where", "", "gmsg://ads/touch?tx=160&ty=25&td=1"},
    {"gmsg-vibrate", "vibrate", "", "gmsg://ads/vibrate"},
    {"gmsg-canopenurls", "canOpenURLs: asks", "",
     "gmsg://ads/canOpenURLs?urls=tel%3A1,nobody-has-this%3A1", showsAnswers},
    {"gmsg-evalinopener", "evalInOpener: no opener", "", "gmsg://ads/evalInOpener?js=1%2B1"},
    {"gmsg-other", "An unknown command", "", "gmsg://ads/dance?how=slowly"},
    {"grokruf-launch", "grokruf: launch", "",
     "grokruf://launch?url={site}%2Fads%2Fland%2Fmusic%2F"},
    {"grokruf-closecanvas", "grokruf: closecanvas", "", "grokruf://closecanvas"},
    {"grokruf-log", "grokruf: log", "", "grokruf://log?string=Said%20the%20other%20way"},
    {"grokruf-other", "grokruf: unknown host", "", "grokruf://dance?how=slowly"},
    {"tel", "A telephone number", "", "tel:+15550100"},
    {"mailto", "A mail", "",
     "mailto:boxoffice@film-week.example?subject=Two%20seats&cc=a@film-week.example,"
     "b@film-week.example&body=Friday%2C%20please."},
    {"file", "A file on this machine", "", "file:///etc/hostname"},
    {"unknown-scheme", "An unknown scheme", "", "nobody-has-this:at-all"},
    {"frame", "Commands from a frame", "", "", "", "", framed},
    {"sandboxed-frame", "Commands from a sandboxed frame", "", "", "", "", framedInSandbox},
    {"web-app", "A web app with its own link back", "film",
     "gmsg://ads/open?a=webapp&u={site}%2Fads%2Fapp%2Ffilm"},

    {"blank", "White space only", "", "", "", "", " \n\t\r\n "},
    {"rejected", "Status 400", "", "", "", "", "No such unit.", 400},
    {"unavailable", "Status 503", "", "", "", "", "Closed for stocktaking.", 503},
    {"cut-off", "A connection that breaks", "", "", "",
     "Location: {site}/ads/serve?ad=shop&truncate=300", "Moved.", 302},
    {"refresh-30", "Refreshed every 30 seconds", "shop", "{site}/ads/land/shop/", "",
     "X-Afma-Refresh-Rate: 30"},
    {"portrait", "Screens in portrait only", "film", "{site}/ads/app/film", "",
     "X-Afma-Orientation: portrait\nX-Afma-Click-Tracking-Urls: {site}/ads/click/{name}"},
    {"landscape", "Screens in landscape only", "music", "{site}/ads/app/music", "",
     "X-Afma-Orientation: landscape\nX-Afma-Click-Tracking-Urls: {site}/ads/click/{name}"},
    {"patience", "Sets a start-up time-out of 2.9 s", "shop", "{site}/ads/land/shop/", "",
     "X-Afma-Interstitial-Timeout: 2.9", "", 200, true},
    {"slow", "Answers after 20 seconds", "film", "", "",
     "Location: {site}/ads/serve?ad=film-screen&delay=20", "Moved.", 302, true},

    {"hangs", "A web app that never finishes loading", "film", "{site}/ads/app/hangs", "", clicks},
    {"endless", "A web app whose script never ends", "music", "{site}/ads/app/endless", "", clicks},
};

constexpr std::string_view inTurn[] = {"film", "music", "shop"};

const Ad* adNamed(std::string_view name) {
    const auto* found = std::find_if(std::begin(table), std::end(table),
                                     [&](const Ad& ad) { return ad.name == name; });
    return found == std::end(table) ? nullptr : found;
}
}

std::span<const Ad> ads() {
    return table;
}

const Ad& adFor(std::string_view name, bool fillsScreen, long long number) {
    if (const Ad* ad = adNamed(name))
        return *ad;
    const auto turn = static_cast<std::size_t>(number > 0 ? number - 1 : 0) % std::size(inTurn);
    return table[turn + (fillsScreen ? std::size(inTurn) : 0)];
}

}
