#include "downloads/FileImport.h"

#include "downloads/DownloadsViewController.h"
#include "platform/foundation/NSURL.h"
#include "tests/support/ui/ScreenTest.h"

#include <gmock/gmock.h>

#include <cerrno>

namespace vistrel {
namespace {

const std::string kFolder = "/var/mobile/Library/Downloads/";

class FileImportTest : public support::ScreenTest {
protected:
    FileImportTest() {
        files().putFolder("/var/mobile/Library/Downloads");
        push(std::make_shared<UIViewController>());
        settle();
    }
    void offer(const char* address) {
        FileImport::offer(*NSURL::URLWithString(address), navigation());
        settle();
    }
    std::shared_ptr<DownloadsViewController> library() {
        return std::dynamic_pointer_cast<DownloadsViewController>(navigation().topViewController());
    }
};

TEST_F(FileImportTest, AFileIsCopiedUnderAFreeNameAndShown) {
    files().put(kFolder + "A Film.mp4", "an older one");
    offer("file:///home/ann/A%20Film.MP4");
    EXPECT_EQ(alertTitle(), "Copy to Downloads?");
    EXPECT_EQ(alertMessage(), "A Film.MP4");
    EXPECT_TRUE(desktop().copies().empty());
    ASSERT_TRUE(tapAlertButton("Copy"));
    settle();
    ASSERT_EQ(desktop().copies().size(), 1U);
    EXPECT_EQ(desktop().copies()[0].url, "file:///home/ann/A%20Film.MP4");
    EXPECT_EQ(desktop().copies()[0].machinePath, files().machinePath(kFolder + "A Film.MP4"));
    desktop().copies()[0].progress(0.42);
    EXPECT_TRUE(find(UIAccessibilityRole::Label, "Copying 42 %"));

    // The same name again, while the first copy is on its way.
    offer("file:///mnt/A%20Film.MP4");
    ASSERT_TRUE(tapAlertButton("Copy"));
    settle();
    ASSERT_EQ(desktop().copies().size(), 2U);
    EXPECT_EQ(desktop().copies()[1].machinePath, files().machinePath(kFolder + "A Film 2.MP4"));

    files().put(kFolder + "A Film.MP4", "film");
    desktop().copies()[0].done(host::Done{});
    settle();
    ASSERT_TRUE(library());
    EXPECT_THAT(library()->movieFiles(), testing::Contains("A Film.MP4"));
    files().put(kFolder + "A Film 2.MP4", "film");
    display().setInFront(false);
    desktop().copies()[1].done(host::Done{});
    settle();
    EXPECT_THAT(library()->movieFiles(), testing::Contains("A Film 2.MP4")) << "refreshed";
    EXPECT_FALSE(find(UIAccessibilityRole::Label, "Copying 42 %"));
    EXPECT_THAT(desktop().notifications(), testing::ElementsAre("Copied: A Film 2.MP4"));
}

TEST_F(FileImportTest, NothingHappensWithoutAYesAndAFailureIsExplained) {
    offer("file:///home/ann/song.mp3");
    ASSERT_TRUE(tapAlertButton("Cancel"));
    settle();
    EXPECT_TRUE(desktop().copies().empty());

    offer("file:///home/ann/song.mp3");
    ASSERT_TRUE(tapAlertButton("Copy"));
    settle();
    display().setInFront(false);
    desktop().copies().at(0).done(host::Failure{ENOSPC, "No space left on device"});
    settle();
    EXPECT_THAT(desktop().notifications(), testing::ElementsAre("Not Copied: song.mp3"));
    EXPECT_EQ(alertTitle(), "Not Copied");
    EXPECT_EQ(alertMessage(), "No space left on device");
    EXPECT_FALSE(library());
}

TEST_F(FileImportTest, OnlyWhatTheLibraryListsIsOffered) {
    const std::pair<const char*, const char*> cases[] = {
        {"file:///a/Clip.Mp4", "Clip.mp4"},
        {"file:///a/notes.txt", ""},
        {"file:///a/mp4", ""},
    };
    for (const auto& [address, name] : cases) {
        offer(address);
        EXPECT_EQ(alertTitle(), *name ? "Copy to Downloads?" : "Cannot Be Played") << address;
        if (*name) {
            EXPECT_EQ(alertMessage(), name);
        }
        EXPECT_TRUE(tapAlertButton(*name ? "Cancel" : "OK"));
        settle();
    }
}

}
}
