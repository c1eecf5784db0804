#pragma once
#include <string>

namespace vistrel {

/// The texts of the help menu's alerts. Not translated.
std::string howToUseText();
std::string shortFAQText();
/// The short one, preceded by a paragraph about the content site being down.
std::string longFAQText();
std::string supportText();
std::string socialNetworkText();

/// What a support mail says about the application and the machine.
struct SupportMailFacts {
    std::string bundleVersion;
    std::string machine;
    std::string systemVersion;
    std::string uniqueIdentifier;
};

std::string supportMailBody(const SupportMailFacts& facts);

}
