#include "tour/MainJobTour.h"

#include "downloads/DownloadsFolder.h"
#include "downloads/DownloadsViewController.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSRunLoop.h"
#include "platform/host/Display.h"
#include "platform/host/Host.h"
#include "platform/media/MPMoviePlayerController.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UIWebView.h"
#include "tour/TourHands.h"
#include "tour/TourStage.h"
#include "web/FileDownloadViewController.h"
#include "web/WebBrowserViewController.h"

#include <cstdio>
#include <memory>
#include <set>

namespace vistrel {

namespace {

using Role = UIAccessibilityRole;

constexpr const char* kFilmName = "partner1-2.mp4";
constexpr const char* kFilmTitle = "partner1-2";
constexpr const char* kStrayName = "Stray Clip.mp4";
constexpr double kWatchedSeconds = 5.5; ///< longer than the controls stay visible

/// What the steps share.
struct Notes {
    std::set<std::string> progressTexts;
    unsigned framesAtStart = 0;
    double movieBegan = 0;
    int rowsBefore = 0;
};

std::function<void()> tapOn(Role role, const char* label) {
    return [role, label] {
        TourHands::tap(role, label);
    };
}

int rowCount() {
    const auto screen = TourStage::downloadsScreen();
    return screen ? static_cast<int>(screen->movieFiles().size() + screen->musicFiles().size()) : 0;
}

std::string countText(const char* format, long long value) {
    char text[96];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

void addStart(std::vector<TourStep>& steps) {
    steps.push_back({"splash",
                     "the launch picture covers the first frame",
                     {},
                     [] { return host::current().display->framesDrawn() > 0; },
                     {},
                     5,
                     0.05});
    steps.push_back({"menu",
                     "the splash has gone, the main menu is there with sharp icons",
                     {},
                     [] {
                         return TourHands::find(Role::Row, "Downloads").has_value() &&
                                TourStage::areMenuIconsSharp();
                     },
                     [] { return countText("%lld visible rows", TourHands::count(Role::Row)); },
                     5,
                     0.8});
    steps.push_back({"menu-end",
                     "a drag scrolls to the partner sites",
                     [] {
                         TourHands::drag({160, 400}, {160, 60}, 0.25);
                     },
                     [] { return TourHands::find(Role::Row, "Open Reel").has_value(); },
                     {},
                     5,
                     2});
}

void addBrowsing(std::vector<TourStep>& steps) {
    steps.push_back({"page", "a tap on a web row opens its page", tapOn(Role::Row, "Open Reel"),
                     [] {
                         const auto browser = TourStage::browser();
                         return browser && browser->webView() && !browser->download() &&
                                !browser->webView()->isLoading() &&
                                browser->webView()->URLString().ends_with("/partner/1/");
                     },
                     [] { return "address " + TourStage::browser()->webView()->URLString(); }, 30,
                     1.5});
    steps.push_back(
        {"caught", "a link to a video opens the download screen",
         [] {
             TourStage::browser()->webView()->stringByEvaluatingJavaScriptFromString(
                 "document.querySelectorAll('a.row')[1].click()");
         },
         [] { return TourStage::downloadScreen() != nullptr; },
         [] {
             return "file " +
                    TourStage::downloadScreen()->downloadRequest().URL()->absoluteString();
         },
         20, 0.8});
}

void addDownload(std::vector<TourStep>& steps, const std::shared_ptr<Notes>& notes) {
    const auto note = [notes] {
        const std::string text = TourHands::labelContaining(Role::Label, "Received ");
        if (!text.empty())
            notes->progressTexts.insert(text);
    };
    steps.push_back({"progress", "a tap on Download; the received megabytes grow",
                     tapOn(Role::Button, "Download"),
                     [notes, note] {
                         note();
                         return notes->progressTexts.size() >= 3;
                     },
                     [] { return TourHands::labelContaining(Role::Label, "Received "); }, 20, 0});
    steps.push_back({"saved", "an alert announces the file, equal to the site's to the byte",
                     [] { TourStage::askSiteForDigest(std::string("/files/") + kFilmName); },
                     [note] {
                         note();
                         const std::string digest = TourStage::siteDigest();
                         return TourHands::find(Role::Button, "OK") && digest.size() == 64 &&
                                digest == TourStage::digestOfFile(pathOfDownload(kFilmName));
                     },
                     [notes] {
                         return countText("%lld bytes, ",
                                          TourStage::sizeOfFile(pathOfDownload(kFilmName))) +
                                "sha256 " + TourStage::siteDigest().substr(0, 12) + "..., " +
                                countText("%lld progress texts",
                                          static_cast<long long>(notes->progressTexts.size()));
                     },
                     40, 0.6});
    steps.push_back(
        {"done", "OK closes the alert; the button reads Done!", tapOn(Role::Button, "OK"),
         [] {
             return !TourHands::find(Role::Button, "OK") && TourHands::find(Role::Button, "Done!");
         }});
    steps.push_back({"back-page",
                     "back to the page",
                     tapOn(Role::Button, "Open Reel"),
                     [] { return TourStage::browser() != nullptr; },
                     {},
                     5,
                     0.8});
    steps.push_back({"back-menu",
                     "back to the menu",
                     tapOn(Role::Button, "Vistrel"),
                     [] { return TourStage::isMenuOnTop(); },
                     {},
                     5,
                     0.8});
}

void addLibrary(std::vector<TourStep>& steps, const std::shared_ptr<Notes>& notes) {
    steps.push_back({"menu-top",
                     "the list rolls back to its top",
                     [] {
                         TourHands::drag({160, 120}, {160, 440}, 0.25);
                     },
                     [] { return TourHands::find(Role::Row, "Downloads").has_value(); },
                     {},
                     5,
                     2});
    steps.push_back({"stray-question",
                     "Downloads finds a file in another tool's folder and asks",
                     [] {
                         TourStage::putFile(std::string("/var/mobile/Media/Downloads/") +
                                                kStrayName,
                                            "not a film");
                         TourHands::tap(Role::Row, "Downloads");
                     },
                     [] { return TourHands::find(Role::Button, "Yes").has_value(); },
                     {},
                     5,
                     0.8});
    steps.push_back({"list", "Yes moves it in; the folder is listed", tapOn(Role::Button, "Yes"),
                     [] {
                         return TourHands::find(Role::Row, "Stray Clip") &&
                                TourHands::find(Role::Row, kFilmTitle);
                     },
                     [] { return countText("%lld rows", rowCount()); }, 5, 0.8});
    steps.push_back(
        {"video", "a video plays full screen in landscape, its picture moving",
         [notes] {
             notes->movieBegan = 0;
             TourHands::tap(Role::Row, kFilmTitle);
         },
         [notes] {
             const auto movie = TourStage::movie();
             if (!movie || movie->framesShown() == 0)
                 return false;
             if (notes->movieBegan == 0) {
                 notes->movieBegan = NSRunLoop::now();
                 notes->framesAtStart = movie->framesShown();
             }
             return NSRunLoop::now() - notes->movieBegan > kWatchedSeconds &&
                    movie->currentPlaybackTime() > 1;
         },
         [notes] {
             const auto movie = TourStage::movie();
             return countText("%lld frames in ", movie->framesShown() - notes->framesAtStart) +
                    countText("%lld ms", static_cast<long long>(
                                             1000 * (NSRunLoop::now() - notes->movieBegan)));
         },
         20, 0});
    steps.push_back({"video-controls",
                     "a touch brings the controls back",
                     [] {
                         TourHands::tap(CGPoint{160, 240});
                     },
                     [] { return TourHands::find(Role::Button, "Done").has_value(); },
                     {},
                     8,
                     0.5});
    steps.push_back(
        {"video-closed",
         "Done closes it, back in portrait",
         tapOn(Role::Button, "Done"),
         [] { return !TourStage::movie() && TourHands::find(Role::Row, kFilmTitle).has_value(); },
         {},
         8,
         0.8});
}

void addNoVideo(std::vector<TourStep>& steps) {
    steps.push_back(
        {"no-video",
         "a file that is not a video is reported",
         tapOn(Role::Row, "Stray Clip"),
         [] { return !TourHands::labelContaining(Role::Alert, "Failed to Play").empty(); },
         {},
         20,
         0.8});
    steps.push_back({"no-video-closed",
                     "OK; the list is back",
                     tapOn(Role::Button, "OK"),
                     [] { return !TourStage::movie() && TourHands::find(Role::Row, "Stray Clip"); },
                     {},
                     8,
                     0.8});
}

void addDeleting(std::vector<TourStep>& steps, const std::shared_ptr<Notes>& notes) {
    const auto fewer = [notes] {
        return rowCount() == notes->rowsBefore - 1;
    };
    const auto rows = [] {
        return countText("%lld rows left", rowCount());
    };
    steps.push_back(
        {"swipe",
         "a swipe over a row offers Delete",
         [notes] {
             notes->rowsBefore = rowCount();
             if (const auto row = TourHands::find(Role::Row, "Stray Clip"))
                 TourHands::drag({280, row->frame.midY()}, {120, row->frame.midY()}, 0.2);
         },
         [] { return TourHands::find(Role::Button, "Delete").has_value(); },
         {},
         5,
         0.6});
    steps.push_back({"swipe-deleted", "Delete removes the file and its row",
                     tapOn(Role::Button, "Delete"), fewer, rows, 5, 0.8});
    steps.push_back({"editing",
                     "Edit shows the red circles",
                     tapOn(Role::Button, "Edit"),
                     [notes] {
                         notes->rowsBefore = rowCount();
                         return TourHands::find(Role::Button, "Done").has_value();
                     },
                     {},
                     5,
                     0.8});
    steps.push_back({"circle",
                     "a tap on a circle asks to confirm",
                     [] {
                         if (const auto row = TourHands::find(Role::Row, kFilmTitle))
                             TourHands::tap(CGPoint{22, row->frame.midY()});
                     },
                     [] { return TourHands::find(Role::Button, "Delete").has_value(); },
                     {},
                     5,
                     0.6});
    steps.push_back({"circle-deleted", "Delete, then Done", tapOn(Role::Button, "Delete"), fewer,
                     rows, 5, 0.8});
    steps.push_back({"end", "editing ends", tapOn(Role::Button, "Done"), [] {
                         return TourHands::find(Role::Button, "Edit").has_value();
                     }});
}

}

std::vector<TourStep> mainJobTour() {
    // Makes a tour on a used device start from the same state.
    (void)NSFileManager::defaultManager().removeItemAtPath(pathOfDownload(kStrayName));
    (void)NSFileManager::defaultManager().removeItemAtPath(pathOfDownload(kFilmName));
    const auto notes = std::make_shared<Notes>();
    std::vector<TourStep> steps;
    addStart(steps);
    addBrowsing(steps);
    addDownload(steps, notes);
    addLibrary(steps, notes);
    addNoVideo(steps);
    addDeleting(steps, notes);
    return steps;
}

}
