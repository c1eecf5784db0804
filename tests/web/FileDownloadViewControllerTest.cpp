#include "web/FileDownloadViewController.h"

#include "platform/foundation/NSURLConnection.h"
#include "platform/foundation/NSURLResponse.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UIProgressView.h"
#include "tests/support/ui/ScreenTest.h"
#include "web/DownloadFile.h"

#include <cerrno>

namespace vistrel {
namespace {

constexpr const char* kAddress = "http://site.example/film.mp4";
constexpr const char* kPath = "/var/mobile/Library/Downloads/film.mp4";

class FileDownloadTest : public support::ScreenTest {
protected:
    FileDownloadTest() { files().putFolder("/var/mobile/Library/Downloads"); }

    std::shared_ptr<FileDownloadViewController> open() {
        auto screen = FileDownloadViewController::withURL(*NSURL::URLWithString(kAddress));
        push(screen);
        return screen;
    }
    /// Opens the screen and taps its button.
    std::shared_ptr<FileDownloadViewController> download(double seconds = 5) {
        auto screen = open();
        tap(*screen->downloadButton());
        advance(seconds);
        return screen;
    }
    support::ScriptedAnswer& answer() { return network().at(kAddress).type("video/mp4"); }
    std::map<std::string, std::string> folder() {
        return files().contentsOfFolder(kDownloadsFolder);
    }
    /// As before the first download.
    void startAgain() {
        while (alertCount() > 0)
            tapAlertButton("OK");
        back();
        files().clearFaults();
        EXPECT_TRUE(files().remove("/var/mobile/Library/Downloads"));
        files().putFolder("/var/mobile/Library/Downloads");
    }
    std::string buttonTitle(const FileDownloadViewController& screen) {
        return screen.downloadButton()->currentTitle();
    }
    /// How a download ended: "Download Succeeded, Done! film.mp4=contents", the alert's title, the
    /// button's and the files.
    std::string ending(const FileDownloadViewController& screen) {
        std::string text = alertTitle() + ", " + buttonTitle(screen);
        for (const auto& [name, contents] : folder())
            text.append(" ").append(name).append("=").append(contents);
        return text;
    }
};

TEST_F(FileDownloadTest, ADownloadEndsWithTheWholeFileAFullBarAndOneAlert) {
    answer().body(std::string(2'097'152, 'v')).secondsBetweenChunks(0.1);
    const auto screen = open();
    EXPECT_EQ(screen->navigationItem().title(), kAddress);
    EXPECT_FALSE(screen->progressLabel()->superview());
    tap(*screen->downloadButton());
    EXPECT_EQ(buttonTitle(*screen), "Downloading...");
    EXPECT_FALSE(screen->downloadButton()->isEnabled());
    EXPECT_TRUE(screen->progressLabel()->superview());
    advance(60);

    EXPECT_EQ(screen->progressLabel()->text(), "Received 2.00MB of 2.00MB");
    EXPECT_EQ(screen->percentComplete(), 100.0F);
    EXPECT_EQ(buttonTitle(*screen), "Done!");
    EXPECT_THAT(display().announcements, ElementsAre("50%", "75%"));
    EXPECT_EQ(alertCount(), 1);
    EXPECT_EQ(alert(), "Download Succeeded | The file has been saved as "
                       "/var/mobile/Library/Downloads/film.mp4");
    EXPECT_EQ(files().contents(kPath)->size(), 2'097'152U);
    EXPECT_EQ(files().openStreams(), 0);
    EXPECT_EQ(logLines().back(), "Created File");
    EXPECT_EQ(network().requests().back().timeout, 45.0);
    EXPECT_TRUE(network().requests().back().ignoresCache);
}

TEST_F(FileDownloadTest, ProgressIsReckonedInSinglePrecision) {
    // What the delegate's callbacks do, driven chunk by chunk.
    const struct {
        const char* name;
        std::int64_t expected;
        std::vector<std::size_t> chunks;
        int alerts;
        float percent;
        const char* text;
    } cases[] = {
        {"exact", 1000, {500, 500}, 1, 100, "Received 0.00MB of 0.00MB"},
        {"half way", 4'194'304, {2'097'152}, 0, 50, "Received 2.00MB of 4.00MB"},
        {"too much", 1000, {1000, 10, 10}, 3, 100, "Received 0.00MB of 0.00MB"},
        {"rounded", 16'777'217, {16'777'216, 1}, 2, 100, "Received 16.00MB of 16.00MB"},
        {"not rounded", 16'777'216, {16'777'215, 1}, 1, 100, "Received 16.00MB of 16.00MB"},
        {"no length", -1, {1000, 1000}, 0, 0, ""},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        const auto screen = open();
        NSURLConnection& none = *NSURLConnection::withRequestDelegate(
            screen->downloadRequest(), screen, NSURLConnection::StartsImmediately::No);
        screen->connectionDidReceiveResponse(
            none,
            NSURLResponse(*NSURL::URLWithString(kAddress), 200, {}, "video/mp4", each.expected));
        for (const std::size_t size : each.chunks)
            screen->connectionDidReceiveData(none, std::vector<std::byte>(size));
        EXPECT_EQ(alertCount(), each.alerts);
        EXPECT_EQ(screen->percentComplete(), each.percent);
        EXPECT_EQ(screen->progressLabel()->text(), each.text);
        startAgain();
    }
}

TEST_F(FileDownloadTest, BothMannersEndEachDownloadTheirOwnWay) {
    using Script = std::function<void(support::ScriptedAnswer&)>;
    const std::string whole = "Download Succeeded, Done! film.mp4=film";
    const std::string failed = "Failed to Download File, Failed";
    const std::string failedAgain = "Failed to Download File, Try Again";
    const auto status = [](int code) {
        return Script(
            [code](support::ScriptedAnswer& answer) { answer.status(code).body("film"); });
    };
    const struct {
        const char* name;
        Script script;
        std::string phone;
        std::string careful;
    } cases[] = {
        {"plain", status(200), whole, whole},
        {"not found", status(404), whole, failedAgain},
        {"server error", status(500), whole, failedAgain},
        {"no content", status(204), whole, failedAgain},
        {"not modified", status(304), whole, failedAgain},
        {"a part nobody asked for", status(206), whole, failedAgain},
        {"unknown length", [](auto& answer) { answer.body("film").announces(-1); },
         ", Downloading... film.mp4=film", whole},
        {"empty", [](auto& answer) { answer.body(""); },
         ", Downloading... film.mp4=", "Download Succeeded, Done! film.mp4="},
        {"a file that cannot be made",
         [this](auto& answer) {
             answer.body("film");
             files().makeReadOnly(kDownloadsFolder);
         },
         "Download Succeeded, Done!", failedAgain},
        {"an older file of that name",
         [this](auto& answer) {
             answer.body("film");
             files().put(kPath, "an older and longer film");
         },
         whole, "Download Succeeded, Done! film 2.mp4=film film.mp4=an older and longer film"},
        {"a full disk",
         [this](auto& answer) {
             answer.body("film").chunks({2, 2});
             files().failWritesFrom(2, ENOSPC);
         },
         failed + " film.mp4=fi", failedAgain + " film.mp4=fi"},
        {"a lost connection",
         [](auto& answer) {
             answer.body("film").failsAfter(2, host::TransferErrorKind::ConnectionLost, "It broke");
         },
         failed + " film.mp4=fi", failedAgain + " film.mp4=fi"},
        {"a disk that is full when the file is closed",
         [this](auto& answer) {
             answer.body("film");
             files().failClose(EDQUOT);
         },
         failed + " film.mp4=film", failedAgain + " film.mp4=film"},
    };
    for (const auto& each : cases) {
        for (const bool careful : {false, true}) {
            SCOPED_TRACE(std::string(each.name) + (careful ? ", careful" : ""));
            setManners(careful);
            each.script(answer());
            const auto screen = download();
            EXPECT_EQ(ending(*screen), careful ? each.careful : each.phone);
            if (alertTitle() == "Failed to Download File") {
                EXPECT_EQ(screen->progressLabel()->text(), "Failed: " + alertMessage());
                EXPECT_EQ(screen->downloadButton()->isEnabled(), careful);
            }
            EXPECT_EQ(files().openStreams(), 0);
            EXPECT_EQ(network().runningTransfers(), 0);
            startAgain();
        }
    }
}

TEST_F(FileDownloadTest, AFailedDownloadIsContinuedWhereItStopped) {
    const char* const succeeded = "Download Succeeded";
    const char* const failed = "Failed to Download File";
    const char* const all = "0123456789";
    const struct {
        const char* name;
        const char* tag;
        int status;
        const char* range; ///< Content-Range of the second answer
        const char* body;
        const char* asksFor;
        const char* alert;
        const char* file;
        const char* meanwhile = nullptr; ///< what somebody puts in place of the first part
        const char* thenAsksFor = "";    ///< after a second failure
    } cases[] = {
        {"continued", "\"a\"", 206, "bytes 4-9/10", "456789", "bytes=4-", succeeded, all},
        {"changed meanwhile", "\"a\"", 200, "", "abcdefghij", "bytes=4-", succeeded, "abcdefghij"},
        {"another part", "\"a\"", 206, "bytes 2-9/10", "23456789", "bytes=4-", failed, "0123"},
        {"too busy", "\"a\"", 503, "", "later", "bytes=4-", failed, "0123", nullptr, "bytes=4-"},
        {"login page", "\"a\"", 200, "", "<p>", "bytes=4-", failed, "0123", nullptr, "bytes=4-"},
        {"no mark", "", 200, "", all, "", succeeded, all},
        {"weak mark", "W/\"a\"", 200, "", all, "", succeeded, all},
        {"shortened", "\"a\"", 206, "bytes 4-9/10", "456", "bytes=4-", failed, "0123456", nullptr,
         "bytes=7-"},
        {"another file", "\"a\"", 200, "", all, "", succeeded, all, "012"},
    };
    setManners(true);
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        answer()
            .header("ETag", each.tag)
            .body("0123456789")
            .failsAfter(4, host::TransferErrorKind::ConnectionLost, "lost");
        auto& second = network().thenAt(kAddress).type("video/mp4").status(each.status);
        second.header("ETag", each.tag).header("Content-Range", each.range).body(each.body);
        if (std::string(each.name) == "shortened")
            second.announces(6);
        if (std::string(each.name) == "login page")
            second.type("text/html");
        const auto screen = download();
        ASSERT_TRUE(tapAlertButton("OK"));
        if (each.meanwhile)
            files().put(kPath, each.meanwhile);
        tap(*screen->downloadButton());
        advance(5);
        const auto& request = network().requests().back();
        EXPECT_EQ(support::ScriptedNetwork::header(request, "Range"), each.asksFor);
        EXPECT_EQ(support::ScriptedNetwork::header(request, "If-Range"),
                  *each.asksFor ? each.tag : "");
        EXPECT_EQ(alertTitle(), each.alert);
        EXPECT_EQ(screen->progressLabel()->textColor() == UIColor::redColor(),
                  each.alert == failed);
        EXPECT_EQ(files().contents(kPath), each.file);
        if (each.alert == failed) {
            ASSERT_TRUE(tapAlertButton("OK"));
            network().thenAt(kAddress).status(500);
            tap(*screen->downloadButton());
            advance(5);
            EXPECT_EQ(support::ScriptedNetwork::header(network().requests().back(), "Range"),
                      each.thenAsksFor);
        }
        startAgain();
    }
}

TEST_F(FileDownloadTest, BehindOtherWindowsANotificationTellsOfTheEnd) {
    for (const bool inFront : {true, false}) {
        display().setInFront(inFront);
        answer().body("film");
        download();
        EXPECT_EQ(desktop().notifications().empty(), inFront);
        startAgain();
    }
    EXPECT_THAT(desktop().notifications(),
                ElementsAre(StartsWith("Download Succeeded: The file has been saved as ")));
}

TEST_F(FileDownloadTest, TwoRunningDownloadsOfOneNameKeepTheirBytesApart) {
    answer().body("first").chunks({2, 3}).secondsBetweenChunks(5);
    const auto first = download(6);
    answer().body("second");
    const auto second = download(20);
    EXPECT_EQ(ending(*second), "Download Succeeded, Done! film 2.mp4=second film.mp4=first");
    EXPECT_EQ(alertCount(), 2);
}

TEST_F(FileDownloadTest, ADownloadGoesOnAfterTheUserHasLeft) {
    answer().body(std::string(1000, 'v')).chunks({500, 500}).secondsBetweenChunks(5);
    auto screen = download(1);
    navigation().popViewControllerAnimated(true);
    const std::weak_ptr<FileDownloadViewController> watch = screen;
    screen.reset();
    settle();
    EXPECT_FALSE(watch.expired()) << "the transfer keeps the screen";
    advance(30);
    EXPECT_EQ(alertTitle(), "Download Succeeded");
    EXPECT_EQ(files().contents(kPath)->size(), 1000U);
    EXPECT_TRUE(watch.expired()) << "and lets it go at its end";
}

TEST_F(FileDownloadTest, PlayStreamsTheAddressWhileTheTransferGoesOn) {
    answer().body(std::string(1000, 'v')).secondsBetweenChunks(5);
    const auto screen = download(0);
    EXPECT_TRUE(media().isWarm);
    tap(*screen->playButton());
    settle();
    ASSERT_TRUE(media().player());
    EXPECT_EQ(media().player()->url(), kAddress);
    EXPECT_EQ(network().runningTransfers(), 1);
    advance(1000);
}

}
}
