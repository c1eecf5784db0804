#pragma once
#include <string>

namespace vistrel {

/// What the help menu's alerts say. Not translated.
std::string howToUseText();
std::string shortFAQText();
/// The short one after a paragraph about the content site being down.
std::string longFAQText();
std::string supportText();
std::string socialNetworkText();

/// What a support mail tells of the application and the machine.
struct SupportMailFacts {
    std::string bundleVersion;
    std::string machine;
    std::string systemVersion;
    std::string uniqueIdentifier;
};

std::string supportMailBody(const SupportMailFacts& facts);

}
