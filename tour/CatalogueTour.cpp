#include "tour/CatalogueTour.h"

#include "catalogue/TVShowsViewController.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UIWebView.h"
#include "settings/Settings.h"
#include "tour/TourHands.h"
#include "tour/TourStage.h"
#include "web/WebBrowserViewController.h"

#include <memory>
#include <string>

namespace vistrel {

namespace {

using Role = UIAccessibilityRole;

std::shared_ptr<TVShowsViewController> showsScreen() {
    return std::dynamic_pointer_cast<TVShowsViewController>(
        TourStage::navigation().topViewController());
}

std::function<void()> tapOn(Role role, const char* label) {
    return [role, label] {
        TourHands::tap(role, label);
    };
}

/// The browser shows the page at the path, under that title.
std::function<bool()> isPage(const char* title, const char* path) {
    return [title, path] {
        const auto browser = TourStage::browser();
        return browser && browser->webView() && !browser->download() &&
               !browser->webView()->isLoading() && browser->navigationBarTitle() == title &&
               browser->webView()->URLString() == contentSiteAddress(path);
    };
}

std::string pageAddress() {
    return "title " + TourStage::browser()->navigationBarTitle() + ", address " +
           TourStage::browser()->webView()->URLString();
}

void addShows(std::vector<TourStep>& steps) {
    steps.push_back({"shows",
                     "TV Shows opens the list on its television",
                     tapOn(Role::Row, "TV Shows"),
                     [] { return showsScreen() && TourHands::find(Role::Row, "24").has_value(); },
                     {},
                     8,
                     0.8});
    steps.push_back({"show-row",
                     "the tenth show, scrolled to",
                     [] {
                         showsScreen()->tableView()->scrollToRowAtIndexPath({0, 9}, true);
                     },
                     [] { return TourHands::find(Role::Row, "Better Off Ted").has_value(); },
                     {},
                     8,
                     2});
    steps.push_back({"show-page", "its page opens, which it shares with two other shows",
                     tapOn(Role::Row, "Better Off Ted"),
                     isPage("Better Off Ted", "/tvshows/boondocks.html"), pageAddress, 20, 1});
    steps.push_back({"show-return",
                     "back, and no row is selected",
                     tapOn(Role::Button, "TV Shows"),
                     [] {
                         const auto screen = showsScreen();
                         return screen && !screen->tableView()->indexPathForSelectedRow();
                     },
                     {},
                     8,
                     0.8});
    steps.push_back({"shows-end", "the list's end",
                     [] {
                         showsScreen()->tableView()->scrollToRowAtIndexPath({0, 145}, true);
                     },
                     [] { return TourHands::find(Role::Row, "WWE PPV Wrestling").has_value(); },
                     [] { return std::to_string(showsScreen()->tvShowList().size()) + " shows"; },
                     10, 1.2});
    steps.push_back({"shows-left",
                     "back to the menu",
                     tapOn(Role::Button, "Vistrel"),
                     [] { return TourStage::isMenuOnTop(); },
                     {},
                     8,
                     0.8});
}

void addMovies(std::vector<TourStep>& steps) {
    steps.push_back({"movies",
                     "Movies opens the cards",
                     tapOn(Role::Row, "Movies"),
                     [] { return TourHands::count(Role::Row) > 1 && !TourStage::isMenuOnTop(); },
                     {},
                     8,
                     0.8});
    steps.push_back({"movie-card",
                     "a drag brings the third card up",
                     [] {
                         TourHands::drag({150, 400}, {150, 250}, 1.2);
                     },
                     [] { return TourHands::find(Role::Row, "\"#\" Movies").has_value(); },
                     {},
                     8,
                     4});
    steps.push_back({"movie-page", "its page opens under the title with its quotation marks",
                     tapOn(Role::Row, "\"#\" Movies"), isPage("\"#\" Movies", "/mdb/number.html"),
                     pageAddress, 20, 1});
    steps.push_back({"movie-return",
                     "back to the cards",
                     tapOn(Role::Button, "Movies"),
                     [] { return !TourStage::browser(); },
                     {},
                     8,
                     0.8});
    steps.push_back({"movies-left",
                     "back to the menu",
                     tapOn(Role::Button, "Vistrel"),
                     [] { return TourStage::isMenuOnTop(); },
                     {},
                     8,
                     0.8});
}

}

std::vector<TourStep> catalogueTour() {
    std::vector<TourStep> steps;
    addShows(steps);
    addMovies(steps);
    return steps;
}

}
