#pragma once
#include <array>
#include <string>

namespace vistrel {

/// One setting: its place in the settings file and its default.
struct Setting {
    const char* group;
    const char* key;
    const char* defaultValue;
};

/// Scheme and host of the application's own content site, without a trailing slash.
inline constexpr Setting kContentSiteBaseURL{"site", "base-url", "http://vistrel.example"};

/// The content site owner's public name.
inline constexpr Setting kWebsiteOwnerName{"support", "website-owner", "the Vistrel site team"};
/// Receives website support mails.
inline constexpr Setting kWebsiteSupportRecipient{"support", "website-recipient",
                                                  "website@vistrel.example"};
/// Receives application support mails.
inline constexpr Setting kApplicationSupportRecipient{"support", "application-recipient",
                                                      "support@vistrel.example"};
/// The maker's user name on the social network, without an at sign.
inline constexpr Setting kSupportTwitterHandle{"support", "twitter-handle", "vistrelapp"};
/// Hosts of the social network's web pages and of its mobile pages.
inline constexpr Setting kTwitterWebHost{"support", "twitter-web-host", "twitter.com"};
inline constexpr Setting kTwitterMobileWebHost{"support", "twitter-mobile-host",
                                               "mobile.twitter.com"};

/// Host of the payment service that takes donations, the payee's account there, and the payee's
/// name.
inline constexpr Setting kDonationHost{"donation", "host", "donations.vistrel.example"};
inline constexpr Setting kDonationBusiness{"donation", "business", "VISTRELDONATE"};
inline constexpr Setting kDonationItemName{"donation", "item-name", "Vistrel Development"};

/// Identifies the main menu's banner to the ad server.
inline constexpr Setting kBannerAdUnitID{"ads", "ad-unit", "a149d3f2c8b7e61"};

/// "yes" makes every choice of Manners.h the careful one.
inline constexpr Setting kCarefulManners{"manners", "careful", "no"};

/// A partner site's row: its name and its home page. An address that begins with "/" is on the
/// content site.
struct PartnerSite {
    Setting title;
    Setting address;
};

inline constexpr std::array<PartnerSite, 8> kPartnerSites{{
    {{"partner-1", "title", "Open Reel"}, {"partner-1", "address", "/partner/1/"}},
    {{"partner-2", "title", "Silver Lantern"}, {"partner-2", "address", "/partner/2/"}},
    {{"partner-3", "title", "Matinee Box"}, {"partner-3", "address", "/partner/3/"}},
    {{"partner-4", "title", "Night Owl Cinema"}, {"partner-4", "address", "/partner/4/"}},
    {{"partner-5", "title", "Short Film Corner"}, {"partner-5", "address", "/partner/5/"}},
    {{"partner-6", "title", "Old Time Radio Hall"}, {"partner-6", "address", "/partner/6/"}},
    {{"partner-7", "title", "Score Library"}, {"partner-7", "address", "/partner/7/"}},
    {{"partner-8", "title", "Backyard Sessions"}, {"partner-8", "address", "/partner/8/"}},
}};

/// The setting's value: from overrideSetting, else the settings file, else the default. An empty
/// value in the file counts as none.
std::string settingValue(const Setting& setting);
/// For command-line options; applies until the process ends.
void overrideSetting(const Setting& setting, std::string value);

/// kContentSiteBaseURL followed by `path`, which begins with "/".
std::string contentSiteAddress(const std::string& path);

}
