#include "demo/AdCampaigns.h"

#include "demo/Text.h"

#include <array>

namespace vistrel::demo {
namespace {
constexpr std::string_view filmPicture = R"(
<rect width="50" height="50" fill="#10203f"/><circle cx="43" cy="12" r="4.5" fill="#f4e9c1"/>
<circle cx="45" cy="11" r="4" fill="#10203f"/><g fill="#cfd9ee"><circle cx="5" cy="9" r=".5"/>
<circle cx="16" cy="8" r=".4"/><circle cx="27" cy="7" r=".5"/><circle cx="36" cy="8.500" r=".4"/></g>
<path d="M8 42V15M36 42V15" stroke="#32456f" stroke-width="1.6"/>
<rect x="6" y="12" width="32" height="20" rx="1.2" fill="#f7f3e4"/>
<rect x="8" y="14" width="28" height="16" fill="#e9a64a"/><path d="M8 30v-6l8-5 7 5 6-3 7 5v4z" fill="#a5502f"/>
<circle cx="29" cy="18" r="2" fill="#fff3cf"/><rect y="39" width="50" height="11" fill="#0b1730"/>
<g stroke="#e9a64a" stroke-width=".9" opacity=".7"><path d="M12 42h20M9 45h9M23 45h12M16 48h12"/></g>
<g fill="#060d1d"><circle cx="13" cy="38" r="2"/><circle cx="20" cy="39" r="2"/><circle cx="27" cy="38" r="2"/>
<path d="M10 43a3 3 0 0 1 6 0zM17 44a3 3 0 0 1 6 0zM24 43a3 3 0 0 1 6 0z"/></g>)";

constexpr std::string_view musicPicture = R"(
<rect width="50" height="50" fill="#c8452d"/><path d="M0 50 50 0v50z" fill="#b23a25"/>
<circle cx="25" cy="25" r="20" fill="#17130f"/><g fill="none" stroke="#3a332c" stroke-width=".6">
<circle cx="25" cy="25" r="17.5"/><circle cx="25" cy="25" r="15"/><circle cx="25" cy="25" r="12.5"/>
<circle cx="25" cy="25" r="10"/></g><path d="M25 25 14 8.5A20 20 0 0 1 21 5.4z" fill="#fff" opacity=".16"/>
<path d="M25 25 36 41.5A20 20 0 0 1 29 44.6z" fill="#fff" opacity=".16"/>
<circle cx="25" cy="25" r="7.5" fill="#f3c45b"/><path d="M19.5 25h11M20.5 22.2h9" stroke="#8a5a17" stroke-width=".9"/>
<circle cx="25" cy="25" r="1.3" fill="#17130f"/>
<path d="M46 6 43 20l-8 5" fill="none" stroke="#ded8cc" stroke-width="1.8" stroke-linecap="round"/>
<circle cx="46" cy="6" r="2.4" fill="#ded8cc"/>)";

constexpr std::string_view shopPicture = R"(
<rect width="50" height="50" fill="#dfe8cf"/><circle cx="25" cy="27" r="21" fill="#cbdab4"/>
<g fill="none" stroke="#fff" stroke-width="1.7" stroke-linecap="round">
<path d="M20 12c-3-3 3-5 0-8M26 12c-3-3 3-5 0-8"/></g>
<path d="M36 24c9-2 9 12-1 10" fill="none" stroke="#2f6f57" stroke-width="3"/>
<path d="M12 26 4 20l-1 2 8 11z" fill="#2f6f57"/>
<path d="M11 23h26c1 10-4 18-13 18S10 33 11 23z" fill="#3b8a6b"/>
<path d="M13 25c0 7 2 11 5 13-4-7-4-10-3-13z" fill="#8fc7ab"/>
<path d="M13 22c2-5 20-5 22 0z" fill="#2f6f57"/><circle cx="24" cy="17.500" r="2" fill="#e2b93f"/>
<path d="M24 35c-4-2-4-6 0-9 4 3 4 7 0 9z" fill="#e8f0da"/><path d="M24 35v-7" stroke="#3b8a6b" stroke-width=".8"/>
<rect x="6" y="43" width="38" height="2.500" rx="1.200" fill="#a98b52"/>)";

constexpr std::array<Campaign, 3> all = {{
    {"film", "Harbour Film Week", "Open-air cinema by the sea", "Programme",
     "linear-gradient(#24406f,#10203f)", "#f2b455", "#d98a1f", filmPicture,
     "Bring a blanket. From Friday the old fish hall shows one film a night on a screen above the "
     "water, and the ferry brings you home."},
    {"music", "Slow Train Sisters", "The new record, out on vinyl", "Listen",
     "linear-gradient(#e0603c,#b4371f)", "#fbe3a2", "#f0b93f", musicPicture,
     "Eleven songs written between two stations, played on a piano that missed its tuner. Out on "
     "vinyl with a download inside the sleeve."},
    {"shop", "Kettle &amp; Daughter", "First-flush teas have landed", "Shop now",
     "linear-gradient(#f7f5e6,#d8e2c4)", "#4da07f", "#2f6f57", shopPicture,
     "Picked in March, on our shelf in April. Order before four and the postman brings it "
     "tomorrow, with a biscuit."},
}};

constexpr std::string_view head = R"(<!DOCTYPE html><html lang="en"><head><meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1"><style>
*{box-sizing:border-box} html,body{margin:0;height:100%}
body{font:12px/1.25 "Liberation Sans",sans-serif;-webkit-user-select:none;cursor:default}
a{color:inherit;text-decoration:none}
.ad{display:flex;align-items:center;width:320px;height:50px;overflow:hidden;position:relative;
box-shadow:inset 0 1px 0 #ffffff55,inset 0 -1px 0 #00000055}
.ad svg{flex:none;width:50px;height:50px}.ad p{flex:1;margin:0 0 0 9px;white-space:nowrap}
.ad b{display:block;font-size:15px;letter-spacing:-.01em}
.go{flex:none;margin-right:16px;padding:6px 10px;border-radius:14px;font-weight:bold;font-size:12px;
border:1px solid #00000055;box-shadow:inset 0 1px 0 #ffffff88,0 1px 1px #0004}
.mark{position:absolute;right:2px;bottom:2px;font-size:7px;line-height:1;padding:1px 2px;border-radius:2px;
background:#0003;color:#fff}
.poster{min-height:100%;padding-bottom:18px}.poster svg{display:block;width:100%}
.poster h1{margin:14px 20px 4px;font-size:25px;letter-spacing:-.02em}
.poster p{margin:6px 20px 14px;font-size:15px;line-height:1.4}
.poster .go{display:block;margin:10px 20px;padding:13px;border-radius:10px;font-size:16px;text-align:center}
</style>)";

// Text colour on the campaign's background and button: dark on light.
bool hasLightGround(const Campaign& campaign) {
    return campaign.name == "shop";
}

std::string coloursOf(const Campaign& campaign) {
    const bool light = hasLightGround(campaign);
    return "<style>body{background:" + std::string(campaign.shade) +
           "}.ad,.poster{background:" + std::string(campaign.colours) +
           ";color:" + (light ? "#22382e" : "#fff") + ";text-shadow:0 " +
           (light ? "1px #fff9" : "-1px #0007") + "}.go{background:linear-gradient(" +
           std::string(campaign.accent) + "," + std::string(campaign.shade) +
           ");color:" + (light ? "#fff" : "#3a2408") + ";text-shadow:0 " +
           (light ? "-1px #0006" : "1px #fff6") + "}</style>";
}

std::string scriptOf(std::string_view script) {
    return script.empty() ? std::string() : "<script>" + std::string(script) + "</script>";
}

std::string strip(std::string_view colours, std::string_view inside, std::string_view link,
                  std::string_view script) {
    return std::string(head) + std::string(colours) +
           "</head><body><a class=\"ad\" id=\"ad\" href=\"" + escapedForHtml(link) + "\">" +
           std::string(inside) + "<span class=\"mark\">Ad</span></a>" + scriptOf(script) +
           "</body></html>\n";
}
}

std::span<const Campaign> campaigns() {
    return all;
}

const Campaign* campaignNamed(std::string_view name) {
    for (const Campaign& campaign : all)
        if (campaign.name == name)
            return &campaign;
    return nullptr;
}

std::string bannerPage(const Campaign& campaign, std::string_view link, std::string_view script) {
    const std::string inside = "<svg viewBox=\"0 0 50 50\">" + std::string(campaign.picture) +
                               "</svg><p><b>" + std::string(campaign.headline) + "</b>" +
                               std::string(campaign.line) + "</p><span class=\"go\">" +
                               std::string(campaign.button) + "</span>";
    return strip(coloursOf(campaign), inside, link, script);
}

std::string stripPage(std::string_view title, std::string_view link, std::string_view script) {
    constexpr std::string_view colours =
        "<style>.ad{background:linear-gradient(#5a6270,#363c47);color:#fff;text-shadow:0 -1px "
        "#0008}"
        ".ad p{overflow:hidden;text-overflow:ellipsis}.ad b{font-size:13px}"
        ".go{background:linear-gradient(#7fa7e0,#3f6db5)}</style>";
    const std::string shown(link.starts_with('#') ? std::string_view() : link);
    return strip(colours,
                 "<p><b>" + escapedForHtml(title) + "</b><span id=\"said\">" +
                     escapedForHtml(shown) + "</span></p><span class=\"go\">Try</span>",
                 link, script);
}

std::string posterPage(const Campaign& campaign, std::string_view rows, std::string_view script) {
    return std::string(head) + coloursOf(campaign) + "<title>" + std::string(campaign.headline) +
           "</title></head><body><div class=\"poster\"><svg viewBox=\"0 5 50 38\" "
           "preserveAspectRatio=\"xMidYMid slice\">" +
           std::string(campaign.picture) + "</svg><h1>" + std::string(campaign.headline) +
           "</h1><p>" + std::string(campaign.story) + "</p>" + std::string(rows) + "</div>" +
           scriptOf(script) + "</body></html>\n";
}

std::string posterButton(std::string_view link, std::string_view text) {
    return "<a class=\"go\" href=\"" + escapedForHtml(link) + "\">" + escapedForHtml(text) + "</a>";
}

}
