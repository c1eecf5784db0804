#include "shell/SocialProfileAddresses.h"

#include "settings/Settings.h"

namespace vistrel {

std::vector<std::string> socialProfileClientAddresses(const std::string& userName) {
    const std::string webProfile = "http://" + settingValue(kTwitterWebHost) + "/" + userName;
    return {
        "tweetie://user?screen_name=" + userName, "x-birdfeed://user?screen_name=" + userName,
        "twitterrific://account/" + userName,     "twit:///user?screen_name=" + userName,
        "icebird://user?screen_name=" + userName, "fluttr://user/" + userName,
        "simplytweet:?link=" + webProfile,        "tweetings:///user?screen_name=" + userName,
        "echofon:///user_timeline?" + userName,
    };
}

std::string socialProfileWebAddress(const std::string& userName) {
    return "http://" + settingValue(kTwitterMobileWebHost) + "/" + userName;
}

}
