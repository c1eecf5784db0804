#include "web/FileDownloadViewController.h"

#include "platform/foundation/NSURLConnection.h"
#include "platform/foundation/NSURLResponse.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UIProgressView.h"
#include "tests/support/ui/ScreenTest.h"

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
    support::ScriptedAnswer& answer() { return network().at(kAddress).type("video/mp4"); }
    std::string buttonTitle(const FileDownloadViewController& screen) {
        return screen.downloadButton()->currentTitle();
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
    EXPECT_EQ(alertCount(), 1);
    EXPECT_EQ(alertTitle(), "Download Succeeded");
    EXPECT_EQ(alertMessage(), "The file has been saved as /var/mobile/Library/Downloads/film.mp4");
    EXPECT_EQ(files().contents(kPath)->size(), 2'097'152U);
    EXPECT_EQ(files().openStreams(), 0);
    EXPECT_EQ(logLines().back(), "Created File");
    EXPECT_EQ(network().requests().back().timeout, 45.0);
    EXPECT_TRUE(network().requests().back().ignoresCache);
}

/// What the delegate's callbacks do, driven chunk by chunk.
struct Arithmetic {
    const char* name;
    std::int64_t expected;
    std::vector<std::int64_t> chunks;
    int alerts;
    float percent;
    const char* text;
};

TEST_F(FileDownloadTest, ProgressIsReckonedInSinglePrecision) {
    const Arithmetic cases[] = {
        {"exact", 1000, {500, 500}, 1, 100.0F, "Received 0.00MB of 0.00MB"},
        {"half way", 4'194'304, {2'097'152}, 0, 50.0F, "Received 2.00MB of 4.00MB"},
        {"more than announced", 1000, {1000, 10, 10}, 3, 100.0F, "Received 0.00MB of 0.00MB"},
        {"one byte short of 16 MiB and one",
         16'777'217,
         {16'777'216, 1},
         2,
         100.0F,
         "Received 16.00MB of 16.00MB"},
        {"below 16 MiB every byte counts",
         16'777'216,
         {16'777'215, 1},
         1,
         100.0F,
         "Received 16.00MB of 16.00MB"},
        {"no length", -1, {1000, 1000}, 0, 0.0F, ""},
    };
    for (const Arithmetic& each : cases) {
        SCOPED_TRACE(each.name);
        const auto screen = open();
        NSURLConnection& none = *NSURLConnection::withRequestDelegate(
            screen->downloadRequest(), screen, NSURLConnection::StartsImmediately::No);
        screen->connectionDidReceiveResponse(
            none,
            NSURLResponse(*NSURL::URLWithString(kAddress), 200, {}, "video/mp4", each.expected));
        int alerts = 0;
        for (const std::int64_t size : each.chunks) {
            const std::vector<std::byte> bytes(static_cast<std::size_t>(size));
            screen->connectionDidReceiveData(none, bytes);
            alerts = alertCount();
        }
        EXPECT_EQ(alerts, each.alerts);
        EXPECT_EQ(screen->percentComplete(), each.percent);
        EXPECT_EQ(screen->progressLabel()->text(), each.text);
        while (alertCount() > 0)
            tapAlertButton("OK");
        navigation().popViewControllerAnimated(false);
        settle();
    }
}

TEST_F(FileDownloadTest, AFailedTransferSaysWhyAndKeepsWhatHasCome) {
    answer()
        .body(std::string(1000, 'v'))
        .failsAfter(400, host::TransferErrorKind::ConnectionLost, "The connection was lost");
    const auto screen = open();
    tap(*screen->downloadButton());
    advance(60);

    EXPECT_EQ(alertTitle(), "Failed to Download File");
    EXPECT_EQ(alertMessage(), "The connection was lost");
    EXPECT_EQ(screen->progressLabel()->text(), "Failed: The connection was lost");
    EXPECT_EQ(screen->progressLabel()->textColor(), UIColor::redColor());
    EXPECT_EQ(buttonTitle(*screen), "Failed");
    EXPECT_FALSE(screen->downloadButton()->isEnabled());
    EXPECT_EQ(files().contents(kPath)->size(), 400U);
}

TEST_F(FileDownloadTest, AFullDiskEndsTheTransferWithTheFailureAndNoSuccess) {
    answer().body(std::string(100'000, 'v')).chunks({30'000, 30'000, 40'000});
    files().failWritesFrom(2, ENOSPC);
    const auto screen = open();
    tap(*screen->downloadButton());
    advance(60);

    EXPECT_EQ(alertCount(), 1);
    EXPECT_EQ(alertTitle(), "Failed to Download File");
    EXPECT_FALSE(alertMessage().empty());
    EXPECT_EQ(buttonTitle(*screen), "Failed");
    EXPECT_EQ(network().runningTransfers(), 0);
}

TEST_F(FileDownloadTest, AFileThatCannotBeCreatedChangesNothingOnTheScreen) {
    files().makeReadOnly("/var/mobile/Library/Downloads");
    answer().body("film");
    const auto screen = open();
    tap(*screen->downloadButton());
    advance(5);
    EXPECT_EQ(alertTitle(), "Download Succeeded");
    EXPECT_TRUE(logLines().empty());
    EXPECT_FALSE(files().contents(kPath));
}

TEST_F(FileDownloadTest, AFileOfTheSameNameIsReplaced) {
    files().put(kPath, "an older and longer film");
    answer().body("film");
    const auto screen = open();
    tap(*screen->downloadButton());
    advance(5);
    EXPECT_EQ(files().contents(kPath), "film");
}

TEST_F(FileDownloadTest, WithoutALengthTheFileIsWholeButNothingIsAnnounced) {
    answer().body("film").announces(-1);
    const auto screen = open();
    tap(*screen->downloadButton());
    advance(5);
    EXPECT_EQ(alertCount(), 0);
    EXPECT_EQ(buttonTitle(*screen), "Downloading...");
    EXPECT_EQ(screen->progressLabel()->text(), "");
    EXPECT_EQ(files().contents(kPath), "film");
    EXPECT_EQ(files().openStreams(), 0);
}

TEST_F(FileDownloadTest, ADownloadGoesOnAfterTheUserHasLeft) {
    answer().body(std::string(1000, 'v')).chunks({500, 500}).secondsBetweenChunks(5);
    auto screen = open();
    tap(*screen->downloadButton());
    advance(1);
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

TEST_F(FileDownloadTest, AStalledServerFailsAfterFortyFiveSilentSeconds) {
    answer().body(std::string(1000, 'v')).stallsAfter(400);
    const auto screen = open();
    tap(*screen->downloadButton());
    advance(44);
    EXPECT_EQ(alertCount(), 0);
    advance(3);
    EXPECT_EQ(alertTitle(), "Failed to Download File");
}

TEST_F(FileDownloadTest, ButtonsAndTextsStandInTheirPlaces) {
    const auto screen = open();
    EXPECT_EQ(screen->playButton()->frame(), CGRectMake(70, 20, 180, 44));
    EXPECT_EQ(screen->downloadButton()->frame(), CGRectMake(70, 82, 180, 44));
    EXPECT_EQ(screen->progressLabel()->frame(), CGRectMake(50, 180, 220, 21));
    EXPECT_EQ(screen->progressView()->frame(), CGRectMake(60, 205, 200, 9));
    EXPECT_EQ(screen->playButton()->currentTitle(), "Play");
    EXPECT_EQ(buttonTitle(*screen), "Download");
}

TEST_F(FileDownloadTest, PlayStreamsTheAddressWhileTheTransferGoesOn) {
    answer().body(std::string(1000, 'v')).secondsBetweenChunks(5);
    const auto screen = open();
    tap(*screen->downloadButton());
    tap(*screen->playButton());
    settle();
    ASSERT_TRUE(media().player());
    EXPECT_EQ(media().player()->url(), kAddress);
    EXPECT_EQ(network().runningTransfers(), 1);
    advance(1000);
}

}
}
