#include "downloads/FileImport.h"

#include "tests/downloads/LibraryTest.h"

namespace vistrel {
namespace {

class FileImportTest : public LibraryTest {
protected:
    FileImportTest() {
        library_ = std::make_shared<DownloadsViewController>();
        show<UIViewController>();
    }
    void offer(std::initializer_list<const char*> addresses) {
        for (const char* address : addresses)
            FileImport::offer(*NSURL::URLWithString(address), navigation(), library_);
        settle();
    }
    void copy(const char* address) {
        offer({address});
        ASSERT_TRUE(tapAlertButton("Copy"));
    }
    std::vector<std::string> shownFiles() {
        const auto library = top<DownloadsViewController>();
        return library ? library->movieFiles() : std::vector<std::string>();
    }
};

TEST_F(FileImportTest, AFileIsCopiedUnderAFreeNameAndShown) {
    const auto& copies = desktop().copies;
    files().put(kFolder + "A Film.mp4", "an older one");
    offer({"file:///home/ann/A%20Film.MP4"});
    EXPECT_EQ(alert(), "Copy to Downloads? | A Film.MP4");
    EXPECT_TRUE(copies.empty());
    ASSERT_TRUE(tapAlertButton("Copy"));
    ASSERT_EQ(copies.size(), 1U);
    EXPECT_EQ(copies[0].url, "file:///home/ann/A%20Film.MP4");
    EXPECT_EQ(copies[0].machinePath, files().machinePath(kFolder + "A Film.MP4"));
    copies[0].progress(0.42);
    EXPECT_TRUE(find(UIAccessibilityRole::Label, "Copying 42 %"));

    // The same name again, while the first copy is on its way.
    copy("file:///mnt/A%20Film.MP4");
    ASSERT_EQ(copies.size(), 2U);
    EXPECT_EQ(copies[1].machinePath, files().machinePath(kFolder + "A Film 2.MP4"));

    put({"A Film.MP4"});
    copies[0].done(host::Done{});
    settle();
    EXPECT_THAT(shownFiles(), ElementsAre("A Film.mp4", "A Film.MP4"));
    put({"A Film 2.MP4"});
    display().setInFront(false);
    copies[1].done(host::Done{});
    settle();
    EXPECT_THAT(shownFiles(), Contains("A Film 2.MP4")) << "refreshed";
    EXPECT_FALSE(find(UIAccessibilityRole::Label, "Copying 42 %"));
    EXPECT_THAT(desktop().notifications(), ElementsAre("Copied: A Film 2.MP4"));
}

TEST_F(FileImportTest, NothingHappensWithoutAYesAndAFailureIsExplained) {
    offer({"file:///home/ann/song.mp3"});
    ASSERT_TRUE(tapAlertButton("Cancel"));
    EXPECT_TRUE(desktop().copies.empty());

    copy("file:///home/ann/song.mp3");
    display().setInFront(false);
    desktop().copies.at(0).done(host::Failure{ENOSPC, "No space left on device"});
    settle();
    EXPECT_THAT(desktop().notifications(), ElementsAre("Not Copied: song.mp3"));
    EXPECT_EQ(alert(), "Not Copied | No space left on device");
    EXPECT_FALSE(top<DownloadsViewController>());
}

TEST_F(FileImportTest, FilesOfOneDropShareAQuestionAndAFailureStopsNone) {
    push(library_);
    show<UIViewController>();
    offer({"file:///a/one.mp3", "file:///a/notes.txt", "file:///a/two.mp3", "file:///a/three.mp3"});
    EXPECT_EQ(alert(), "Copy to Downloads? | one.mp3\ntwo.mp3\nthree.mp3");
    ASSERT_TRUE(tapAlertButton("Copy"));
    EXPECT_EQ(alert(), "Cannot Be Played | notes.txt");
    ASSERT_TRUE(tapAlertButton("OK"));
    for (const char* progress : {"Copying 17 %", "Copying 50 %", "Copying 83 %"}) {
        const auto copy = desktop().copies.back();
        copy.progress(0.5);
        EXPECT_TRUE(find(UIAccessibilityRole::Label, progress));
        copy.done(copy.url.ends_with("two.mp3") ? host::Status(host::Failure{EIO, "No disk"})
                                                : host::Done{});
    }
    settle();
    EXPECT_EQ(desktop().copies.size(), 3U) << "one after the other";
    EXPECT_EQ(alert(), "Not Copied | two.mp3: No disk");
    EXPECT_EQ(navigation().topViewController(), library_) << "the one that was open already";
    EXPECT_EQ(navigation().viewControllers().size(), 3U);
}

TEST_F(FileImportTest, OnlyWhatTheLibraryListsIsOffered) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"file:///a/Clip.Mp4", "Copy to Downloads? | Clip.mp4", "Cancel"},
        {"file:///a/notes.txt", "Cannot Be Played | notes.txt", "OK"},
        {"file:///a/mp4", "Cannot Be Played | mp4", "OK"},
    };
    for (const auto& [address, question, button] : cases) {
        offer({address});
        EXPECT_EQ(alert(), question);
        EXPECT_TRUE(tapAlertButton(button));
    }
}

}
}
