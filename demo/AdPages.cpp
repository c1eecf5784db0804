#include "demo/AdCampaigns.h"
#include "demo/AdTable.h"
#include "demo/Page.h"
#include "demo/Pages.h"
#include "demo/Site.h"

#include <fstream>
#include <iterator>

namespace vistrel::demo {
namespace {
std::string withPlacesFilled(std::string_view text, const Request& request, std::string_view name) {
    const std::pair<std::string_view, std::string> places[] = {
        {"{site}", "http://" + std::string(request.header("Host"))},
        {"{name}", std::string(name)},
    };
    std::string filled(text);
    for (const auto& [place, value] : places)
        for (size_t at = filled.find(place); at != std::string::npos;
             at = filled.find(place, at + value.size()))
            filled.replace(at, place.size(), value);
    return filled;
}

HeaderLines headersFrom(std::string_view lines) {
    HeaderLines headers;
    while (!lines.empty()) {
        const std::string_view line = lines.substr(0, lines.find('\n'));
        const size_t colon = line.find(": ");
        headers.emplace_back(line.substr(0, colon), line.substr(colon + 2));
        lines.remove_prefix(std::min(lines.size(), line.size() + 1));
    }
    return headers;
}

std::string pageOf(const Ad& ad, const Request& request) {
    const std::string link = withPlacesFilled(ad.link, request, ad.name);
    const std::string script = withPlacesFilled(ad.script, request, ad.name);
    const Campaign* campaign = campaignNamed(ad.campaign);
    if (!campaign)
        return stripPage(ad.title, link, script);
    return ad.fillsScreen ? posterPage(*campaign, posterButton(link, "Find out more"), script)
                          : bannerPage(*campaign, link, script);
}

// What follows "/ads/KIND/" in an address.
std::string_view restOf(const Request& request, std::string_view before) {
    return std::string_view(request.path).substr(before.size());
}

Answer page(std::string html) {
    Answer answer;
    answer.body = Body(std::move(html));
    return answer;
}

// What an ad's page requests to report an event: an empty response.
Answer emptyAnswer() {
    Answer answer = textAnswer({});
    answer.headers.emplace_back("Cache-Control", "no-store");
    return answer;
}

constexpr std::string_view webAppScript = R"(
function say(what){document.getElementById('event').textContent=what}
function AFMA_ReceiveMessage(name,answer){
  if(name==='onshow')say('Shown by '+answer.version+' on '+answer.device);
  new Image().src='/ads/event/'+name+'?'+Math.random();
}
function inOpener(){location="gmsg://ads/evalInOpener?js="+
  encodeURIComponent("document.querySelector('.mark').textContent='Seen'")}
)";

std::string webAppOf(const Campaign& campaign, const Request& request) {
    const std::string rows =
        "<p id=\"event\"></p>" +
        posterButton(withPlacesFilled("gmsg://ads/open?a=browser&u={site}%2Fads%2Fland%2F{name}%2F",
                                      request, campaign.name),
                     "Open the web site") +
        posterButton("javascript:inOpener()", "Mark the banner as seen") +
        posterButton("gmsg://ads/close", "Not now");
    return posterPage(campaign, rows, webAppScript);
}
}

Answer serveAd(Site& site, const Request& request) {
    const std::string name = request.parameter("ad").value_or("");
    if (name == "own" && !site.ownAdFile.empty()) {
        std::ifstream stream(site.ownAdFile, std::ios::binary);
        return stream ? page({std::istreambuf_iterator<char>(stream), {}})
                      : errorAnswer(404, "The file of the ad cannot be read.");
    }
    const bool fillsScreen = request.parameter("format") == "interstitial_mb";
    const Ad& ad = adFor(name, fillsScreen, numberFrom(request.parameter("preqs").value_or(""), 1));
    Answer answer =
        page(ad.body.empty() ? pageOf(ad, request) : withPlacesFilled(ad.body, request, ad.name));
    answer.status = ad.status;
    answer.headers = headersFrom(withPlacesFilled(ad.headers, request, ad.name));
    return answer;
}

Answer adLandingPage(Site& /*site*/, const Request& request) {
    const std::string_view rest = restOf(request, "/ads/land/");
    const Campaign* campaign = campaignNamed(rest.substr(0, rest.find('/')));
    if (!campaign)
        return errorAnswer(404, "This campaign has no landing page.");
    const bool isFirst = rest.ends_with('/');
    const std::string home = "/ads/land/" + std::string(campaign->name) + "/";
    return page(posterPage(*campaign,
                           isFirst ? posterButton(home + "more", campaign->button)
                                   : posterButton(home, "Back to the start") +
                                         posterButton("tel:+15550100", "Call us"),
                           {}));
}

Answer adWebApp(Site& /*site*/, const Request& request) {
    const std::string_view name = restOf(request, "/ads/app/");
    if (name == "hangs")
        return page(posterPage(campaigns()[0], "<img src=\"/ads/event/never?delay=99999\">", {}));
    if (name == "endless")
        return page(posterPage(campaigns()[1], {}, "setTimeout(function(){for(;;);},300)"));
    const Campaign* campaign = campaignNamed(name);
    return campaign ? page(webAppOf(*campaign, request))
                    : errorAnswer(404, "There is no such web app.");
}

Answer adFrame(Site& /*site*/, const Request& request) {
    constexpr std::string_view commands =
        "setTimeout(function(){location='gmsg://ads/log?string=From%20a%20frame'},300);"
        "setTimeout(function(){location='gmsg://ads/open?a=browser&u={site}%2Fads%2Fland%2Ffilm%2F'"
        "},900)";
    return page(stripPage(
        "Commands from a frame",
        withPlacesFilled("gmsg://ads/open?a=browser&u={site}%2Fads%2Fland%2Ffilm%2F", request, {}),
        withPlacesFilled(commands, request, {})));
}

Answer adPing(Site& /*site*/, const Request& /*request*/) {
    return emptyAnswer();
}

// Click counters redirect, as usual.
Answer adClickPing(Site& /*site*/, const Request& request) {
    return redirectAnswer("/ads/clicked/" + std::string(restOf(request, "/ads/click/")));
}

Answer adLogPage(Site& site, const Request& /*request*/) {
    return textAnswer(site.adLog.text());
}

Answer adsPage(Site& /*site*/, const Request& /*request*/) {
    Page page("Ads");
    page.paragraph("The ad server's ads. An application names one as its ad unit.");
    page.link("/ads/log", "The requests so far", "/ads/log");
    for (const Ad& ad : ads())
        page.link("/ads/serve?ad=" + std::string(ad.name), ad.title, ad.name);
    return page.answer();
}
}
