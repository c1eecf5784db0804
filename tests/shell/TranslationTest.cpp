#include "ads/Browser/GADBrowserController.h"
#include "ads/WebApp/GADWebAppViewController.h"
#include "catalogue/MoviesViewController.h"
#include "catalogue/TVShowsViewController.h"
#include "downloads/FileImport.h"
#include "platform/foundation/NSURL.h"
#include "platform/uikit/MFMailComposeViewController.h"
#include "platform/uikit/UIAccessibilityTree.h"
#include "platform/uikit/UICommand.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UITableView.h"
#include "shell/AboutPageViewController.h"
#include "shell/HelpTexts.h"
#include "shell/RootViewController.h"
#include "tests/support/ui/ScreenTest.h"
#include "web/FileDownloadViewController.h"

#include <cctype>
#include <fstream>

namespace vistrel {
namespace {

const std::string kMark = "*";
constexpr const char* kFilm = "http://site.example/film.mp4";

/// The phone's own texts, which are in English everywhere, and names.
const std::set<std::string> kSameEverywhere{
    "Choose a Section", "Members",   "More Sites", "Open Reel", "Vistrel", "Help",
    "Credits",          "Downloads", "Videos",     "Music",     "1 of 1"};

/// Numbers, times and addresses are in no language.
bool hasWords(const std::string& text) {
    return std::ranges::any_of(text, [](unsigned char c) { return std::isalpha(c) != 0; }) &&
           !text.starts_with("http://");
}

class TranslationTest : public support::ScreenTest {
protected:
    /// Every text of the template is translated by a mark in front of it.
    TranslationTest() {
        std::ifstream pot(std::string(RESOURCES_FOLDER) + "/po/vistrel.pot");
        for (std::string line; std::getline(pot, line);) {
            if (line.starts_with("msgid \"") && line.size() > 8) {
                const std::string key = line.substr(7, line.size() - 8);
                deterministicHost().translations[key] = kMark + key;
            }
        }
        deterministicHost().settings["site/base-url"] = "http://site.example";
        files().put("/var/mobile/Library/Downloads/*1.mp4");
        files().put("/var/mobile/Library/Downloads/*2.mp3");
        menu_ = show<RootViewController>();
        look();
    }

    /// Collects what the screen now says in English.
    void look() {
        settle();
        for (const auto& seen : accessibilityTree(screen())) {
            for (const std::string& text : {seen.element.label, seen.element.value}) {
                if (hasWords(text) && text.find(kMark) == std::string::npos &&
                    !kSameEverywhere.contains(text))
                    english_.insert(text);
            }
        }
    }
    void tapAndLook(const std::string& label,
                    UIAccessibilityRole role = UIAccessibilityRole::Button) {
        EXPECT_TRUE(tapElement(role, label)) << label;
        look();
    }
    void select(int section, int row) {
        menu_->tableViewDidSelectRowAtIndexPath(*menu_->tableView(), {section, row});
        look();
    }

    std::shared_ptr<RootViewController> menu_;
    std::set<std::string> english_;
};

TEST_F(TranslationTest, TheLibraryAndThePlayersAreTranslated) {
    select(1, 3);
    FileImport::offer(*NSURL::URLWithString("file:///home/ann/*A.mp4"), navigation(),
                      menu_->downloads());
    settle();
    look();
    tapAndLook("*Cancel");
    act("second 160,120");
    look();
    tapAndLook("*Rename…");
    tapAndLook("*Rename");
    tapAndLook("*Edit");
    tapAndLook("*Delete *1");
    tapAndLook("*Done");
    tapAndLook("*2", UIAccessibilityRole::Row);
    for (const char* button : {"*Cover", "*Repeat", "*Repeat", "*Shuffle", "*Tracks"})
        tapAndLook(button);
    tapAndLook("*Done");
    tapAndLook("*1", UIAccessibilityRole::Row);
    EXPECT_TRUE(find(UIAccessibilityRole::Slider, "*Volume"));
    EXPECT_THAT(english_, IsEmpty());
}

TEST_F(TranslationTest, TheBrowserAndTheMailScreenAreTranslated) {
    select(2, 0);
    application().events().sendCommand(UICommand::GoToAddress);
    look();
    EXPECT_EQ(alertTitle(), "*Go to Address");
    tapAndLook("*Cancel");
    const auto mail = std::make_shared<MFMailComposeViewController>();
    navigation().presentModalViewController(mail, false);
    look();
    tapAndLook("*Cancel");
    EXPECT_THAT(english_, IsEmpty());
}

TEST_F(TranslationTest, OtherScreensAreInEnglishOnlyWhereThePhoneWas) {
    network().at(kFilm).fails(host::TransferErrorKind::TimedOut, "The request timed out.");
    setManners(true);
    const auto shows = std::make_shared<TVShowsViewController>();
    const auto movies = std::make_shared<MoviesViewController>();
    const std::pair<std::shared_ptr<UIViewController>, std::vector<std::string>> screens[] = {
        {FileDownloadViewController::withURL(*NSURL::URLWithString(kFilm)), {"Download", "OK"}},
        {shows, {}},
        {movies, {}},
        {std::make_shared<AboutPageViewController>(), {}},
        {std::make_shared<GADBrowserController>(), {}},
        {std::make_shared<GADWebAppViewController>(), {}},
        {nullptr, {"Help", "How To Use", "FAQ", "Close"}}, // of the menu
        {nullptr, {"Help", "Support", "Application Support"}},
    };
    for (const auto& [screen, taps] : screens) {
        if (screen)
            navigation().presentModalViewController(screen, false);
        look();
        for (const std::string& tap : taps)
            tapAndLook(tap);
        if (screen)
            navigation().dismissModalViewControllerAnimated(false);
    }
    for (const auto& records : {shows->tvShowList(), movies->moviesList()})
        for (const CatalogueRecord& record : records)
            english_.erase(record.title);
    for (const std::string& text :
         {howToUseText(), shortFAQText(), supportText(), socialNetworkText()})
        std::erase_if(english_, [&](const std::string& seen) { return seen.ends_with(text); });
    EXPECT_THAT(english_, ElementsAre("Application Support", "Cancel", "Close", "Donate", "Done",
                                      "Download", "Email", "FAQ", "Failed to Download File",
                                      "Got it", "How To Use", "How To Use:", "OK", "Play",
                                      "Select a Show", "Support", "Twitter", "Website Support"));
}

}
}
