#include "settings/SettingsCheck.h"

#include "platform/foundation/HexDigits.h"
#include "platform/foundation/NSURL.h"
#include "platform/foundation/Trimmed.h"
#include "platform/host/Host.h"
#include "settings/Settings.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <utility>

namespace vistrel {

namespace {

bool isText(const std::string&) {
    return true;
}

bool isAddress(const std::string& value) {
    const auto url = NSURL::URLWithString(value);
    return url && url->isHTTP() && !url->host().empty();
}

bool isAddressOrPath(const std::string& value) {
    return value.starts_with('/') || isAddress(value);
}

bool isYesOrNo(const std::string& value) {
    return value == "yes" || value == "no";
}

bool isPort(const std::string& value) {
    unsigned port = 0;
    const char* end = value.data() + value.size();
    const auto read = std::from_chars(value.data(), end, port);
    return read.ec == std::errc() && read.ptr == end && port >= 1 && port <= 65535;
}

bool isMailSecurity(const std::string& value) {
    return value == "tls" || value == "starttls" || value == "none";
}

/// With an optional port.
bool isHost(const std::string& value) {
    return value.find('/') == value.npos && isAddress("http://" + value);
}

bool isAESKey(const std::string& value) {
    return value.size() == 32 && std::ranges::all_of(
                                     value, [](char c) { return hexDigitValue(c) >= 0; });
}

struct Kind {
    bool (*accepts)(const std::string& value);
    const char* description;
};

constexpr Kind kText{isText, "any text"};
constexpr Kind kAddress{isAddress, "an http or https address"};
constexpr Kind kAddressOrPath{isAddressOrPath,
                              "an http or https address, or a path that begins with '/'"};
constexpr Kind kYesOrNo{isYesOrNo, "'yes' or 'no'"};
constexpr Kind kPort{isPort, "a port number"};
constexpr Kind kHost{isHost, "a host's name"};
constexpr Kind kAESKey{isAESKey, "32 hexadecimal digits"};
constexpr Kind kMailSecurity{isMailSecurity, "'tls', 'starttls' or 'none'"};

using KnownSettings = std::vector<std::pair<Setting, Kind>>;

const KnownSettings& knownSettings() {
    static const KnownSettings known = [] {
        KnownSettings settings{
            {kContentSiteBaseURL, kAddress},
            {kWebsiteOwnerName, kText},
            {kWebsiteSupportRecipient, kText},
            {kApplicationSupportRecipient, kText},
            {kSupportTwitterHandle, kText},
            {kTwitterWebHost, kText},
            {kTwitterMobileWebHost, kText},
            {kDonationHost, kText},
            {kDonationBusiness, kText},
            {kDonationItemName, kText},
            {kBannerAdUnitID, kText},
            {{"ads", "enabled", ""}, kYesOrNo},
            {{"ads", "static-content-host", ""}, kHost},
            {{"ads", "ad-server-origin", ""}, kAddress},
            {{"ads", "reachability-host", ""}, kHost},
            {{"ads", "click-server-domain", ""}, kHost},
            {{"ads", "location-key", ""}, kAESKey},
            {kCarefulManners, kYesOrNo},
            {{"mail", "host", ""}, kText},
            {{"mail", "port", ""}, kPort},
            {{"mail", "security", ""}, kMailSecurity},
            {{"mail", "user", ""}, kText},
            {{"mail", "from", ""}, kText},
            {{"mail", "ca-file", ""}, kText},
        };
        for (const PartnerSite& site : kPartnerSites) {
            settings.emplace_back(site.title, kText);
            settings.emplace_back(site.address, kAddressOrPath);
        }
        return settings;
    }();
    return known;
}

/// Empty when the entry is valid.
std::string mistakeOf(const std::string& group, const std::string& key, const std::string& value) {
    const auto& known = knownSettings();
    const auto found = std::ranges::find_if(known, [&](const auto& each) {
        return each.first.group == group && each.first.key == key;
    });
    if (found == known.end())
        return "there is no setting '" + key + "' in [" + group + "]";
    const Kind& kind = found->second;
    return value.empty() || kind.accepts(value)
               ? ""
               : key + " needs " + kind.description + ", not '" + value + "'";
}

}

std::vector<std::string> settingMistakes(std::string_view text) {
    std::vector<std::string> mistakes;
    std::string group;
    for (int number = 1; !text.empty(); ++number) {
        const auto end = std::min(text.find('\n'), text.size());
        const std::string line(trimmed(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty() || line.front() == '#')
            continue;
        const auto equals = line.find('=');
        std::string mistake;
        if (line.front() == '[' && line.back() == ']')
            group = line.substr(1, line.size() - 2);
        else if (equals == line.npos)
            mistake = "'" + line + "' is neither [group] nor key=value";
        else
            mistake = mistakeOf(group, std::string(trimmed(line.substr(0, equals))),
                                std::string(trimmed(line.substr(equals + 1))));
        if (!mistake.empty())
            mistakes.push_back(std::to_string(number) + ": " + mistake);
    }
    return mistakes;
}

void reportSettingMistakes() {
    const host::Host& host = host::current();
    std::ifstream file(host.settingsFile, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    for (const std::string& mistake : settingMistakes(text))
        host.log(host.settingsFile + ":" + mistake);
}

}
