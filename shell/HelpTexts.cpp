#include "shell/HelpTexts.h"

#include "settings/Settings.h"

namespace vistrel {

namespace {

constexpr const char* kHowToUse =
    "Please also read FAQ page by pressing the button below.\n\nRequirements:\nSafari "
    "Download Plugin\niMobileCinema\n(Both Available in Cydia)\n\nHow To Use:\nSelect "
    "any Movie or TV Show to watch and choose the Download link NOT the Stream link and "
    "press the \"Watch on MegaVideo\". Then press the circle with a play icon in it and "
    "the Video will begin playing.\n\nNOTE:\nSome videos may not work. The reason for "
    "this is because both iMobile Cinema and Safari Download Plugin are not perfect and "
    "can't play the videos";

constexpr const char* kQuestions =
    "How do I Watch Videos I have downloaded?\n\nGo the Main Page and select the "
    "Downloads page, then simply tap on the name of whatever video you want to play "
    "(Make sure 'Watch' mode is switched on by pressing the button below the Navigation "
    "Bar)\n\nWhy do I get an error saying \"Movie Format is not supported\"?\n\nThe "
    "iPhones movie player often has problems playing MP4 files as it is more suited to "
    "playing Quicktime MOV files, however unfortunately there is no way of fixing this "
    "error other than downloading the video again\n\nHow do I delete Videos?\n\nGo to "
    "the Downloads Section and press the edit tab at the top, then tap the red circle "
    "beside the video you want to delete followed by the red delete button.\n\nCan you "
    "add this show to the Website for me?\n\nIf you want to request a show you have to "
    "get in contact with the Website Owner, ";

constexpr const char* kSiteIsDown =
    "Nothing will load, all I see is a white screen or \"Your Account has been "
    "suspended\" the Application won't work!\n\nThis means website is just down "
    "temporarily, However it may take a while for it to work again, you'll just have to "
    "wait. Unfortunately this is a problem only the website owner can fix, as it is a "
    "problem with the website NOT the application.";

constexpr const char* kWhichSupport =
    "PLEASE READ:\nIf the Application is crashing or you are experiencing any other "
    "problems ONLY within the Application, select Application Support.\nHowever, if the "
    "website won't load, or if you want to report a dead link, request a new show or "
    "report a problem with the website select Website Support.\n\nPlease read the FAQ "
    "before requesting support.";

}

std::string howToUseText() {
    return kHowToUse;
}

std::string shortFAQText() {
    return kQuestions + settingValue(kWebsiteOwnerName) + ".\nHis email is " +
           settingValue(kWebsiteSupportRecipient) + ".\n\n" +
           "If you still have anymore questions after reading this please feel free to contact me.";
}

std::string longFAQText() {
    return kSiteIsDown + std::string("\n\n") + shortFAQText();
}

std::string supportText() {
    return kWhichSupport;
}

std::string socialNetworkText() {
    return "For fast assistance I recommend you send me a message on Twitter (@" +
           settingValue(kSupportTwitterHandle) +
           ") as I check it far more freqently. However please still feel free to send me an "
           "email if you would prefer";
}

std::string supportMailBody(const SupportMailFacts& facts) {
    return "Please Describe Your Problem Here:\n\n\nVistrel Version: " + facts.bundleVersion +
           "\n\n" + facts.machine + "-" + facts.systemVersion + ":\n" + facts.uniqueIdentifier;
}

}
