#include "downloads/DownloadsViewController.h"

#include "audio/OvoAudioPlayerController.h"
#include "catalogue/ABTableViewCellOpaqueView.h"
#include "downloads/DownloadsTableViewCell.h"
#include "platform/uikit/UITableView.h"
#include "tests/support/ui/ScreenTest.h"

#include <cerrno>

#include <gmock/gmock.h>

namespace vistrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string kFolder = "/var/mobile/Library/Downloads/";

class DownloadsTest : public support::ScreenTest {
protected:
    DownloadsTest() { files().putFolder("/var/mobile/Library/Downloads"); }

    void put(const std::vector<std::string>& names) {
        for (const std::string& name : names)
            files().put(kFolder + name);
    }
    std::shared_ptr<DownloadsViewController> open() {
        auto screen = std::make_shared<DownloadsViewController>();
        push(screen);
        settle();
        return screen;
    }
    void openAgain(const std::shared_ptr<DownloadsViewController>& screen) {
        navigation().popViewControllerAnimated(false);
        push(screen);
        settle();
    }
    std::shared_ptr<DownloadsTableViewCell> cell(const DownloadsViewController& screen, int section,
                                                 int row) {
        return std::dynamic_pointer_cast<DownloadsTableViewCell>(
            screen.tableView()->cellForRowAtIndexPath({section, row}));
    }
    void select(DownloadsViewController& screen, NSIndexPath path) {
        screen.tableViewDidSelectRowAtIndexPath(*screen.tableView(), path);
        settle();
        ASSERT_TRUE(media().player());
    }
    void commitDelete(DownloadsViewController& screen, NSIndexPath path) {
        screen.tableViewCommitEditingStyleForRowAtIndexPath(
            *screen.tableView(), UITableViewCellEditingStyle::Delete, path);
        settle();
    }
};

TEST_F(DownloadsTest, OnlyTheSixSpellingsCountAndTheFoldersOrderIsKept) {
    put({"b.mp4", "Clip.MP4", "Clip.Mp4", "Clip.mov", "Song.mp3", "Song.m4a", "a.m4v", "A.M4V",
         "loud.MP3", "mp4", "x.mp4.part", "Show.S01E01.mp4"});
    files().putFolder(kFolder + "folder.mp4");
    files().put(kFolder + ".hidden.mp4");
    const auto screen = open();

    EXPECT_THAT(screen->movieFiles(), ElementsAre("b.mp4", "Clip.MP4", "a.m4v", "A.M4V",
                                                  "Show.S01E01.mp4", "folder.mp4", ".hidden.mp4"));
    EXPECT_THAT(screen->musicFiles(), ElementsAre("Song.mp3", "loud.MP3"));
    EXPECT_EQ(cell(*screen, 0, 4)->fileName(), "Show.S01E01");
    auto& table = *screen->tableView();
    EXPECT_EQ(screen->tableViewTitleForHeaderInSection(table, 0), "Videos");
    EXPECT_EQ(screen->tableViewTitleForHeaderInSection(table, 1), "Music");
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(DownloadsTest, AFolderThatCannotBeReadIsEmptyAndSaidOnceInTheLog) {
    files().put(kFolder + "a.mp4");
    files().makeUnreadable("/var/mobile/Library/Downloads");
    const auto screen = open();
    EXPECT_THAT(screen->movieFiles(), IsEmpty());
    EXPECT_EQ(logLines().size(), 1U);
}

TEST_F(DownloadsTest, StrayFilesAreOfferedAtEveryAppearanceUntilTheyAreMoved) {
    files().put("/var/mobile/Media/Downloads/Song.mp3", "song");
    files().put("/var/root/Library/Downloads/Clip.MP4", "clip");
    files().put("/var/mobile/Downloads/notes.txt", "notes");
    const auto screen = open();
    EXPECT_EQ(alertTitle(), "Detected Files");
    EXPECT_EQ(alertMessage(),
              "Vistrel has detected files you have downloaded stored in a different directory, "
              "would you like to move these files to your downloads folder so you can play them "
              "with Vistrel?");
    ASSERT_TRUE(tapAlertButton("No"));
    EXPECT_TRUE(files().contents("/var/mobile/Media/Downloads/Song.mp3"));
    EXPECT_EQ(alertCount(), 0);

    openAgain(screen);
    ASSERT_TRUE(tapAlertButton("Yes"));
    EXPECT_EQ(files().contents(kFolder + "Song.mp3"), "song");
    EXPECT_EQ(files().contents(kFolder + "Clip.MP4"), "clip");
    EXPECT_TRUE(files().contents("/var/mobile/Downloads/notes.txt"));
    EXPECT_TRUE(cell(*screen, 0, 0)) << "shown without a further appearance";
    EXPECT_TRUE(cell(*screen, 1, 0));
    EXPECT_TRUE(screen->view()->isUserInteractionEnabled());

    openAgain(screen);
    EXPECT_EQ(alertCount(), 0);
}

TEST_F(DownloadsTest, OfTwoStrayFilesWithOneNameTheEarlierFoldersIsMoved) {
    files().put("/var/mobile/Media/Downloads/Clip.mp4", "later");
    files().put("/var/root/Library/Downloads/Clip.mp4", "earlier");
    const auto screen = open();
    ASSERT_TRUE(tapAlertButton("Yes"));
    EXPECT_EQ(files().contents(kFolder + "Clip.mp4"), "earlier");
    EXPECT_EQ(files().contents("/var/mobile/Media/Downloads/Clip.mp4"), "later");

    openAgain(screen);
    EXPECT_EQ(alertTitle(), "Detected Files") << "the other keeps the question coming back";
}

TEST_F(DownloadsTest, AStrayFileThatCannotBeMovedStaysAndTheOthersMove) {
    files().put("/var/root/Library/Downloads/stuck.mp4", "stuck");
    files().put("/var/root/Library/Downloads/free.mp4", "free");
    files().failMove("/var/root/Library/Downloads/stuck.mp4", EXDEV);
    open();
    ASSERT_TRUE(tapAlertButton("Yes"));
    EXPECT_EQ(files().contents("/var/root/Library/Downloads/stuck.mp4"), "stuck");
    EXPECT_EQ(files().contents(kFolder + "free.mp4"), "free");
    EXPECT_EQ(alertCount(), 0);
}

TEST_F(DownloadsTest, DeletingRemovesTheFileAndItsRowUnlessItCannotBeDeleted) {
    put({"a.mp4", "b.mp4", "c.mp3"});
    const auto screen = open();
    commitDelete(*screen, {0, 0});
    EXPECT_FALSE(files().contents(kFolder + "a.mp4"));
    EXPECT_EQ(screen->tableView()->numberOfRowsInSection(0), 1);
    EXPECT_EQ(cell(*screen, 0, 0)->fileName(), "b");
    commitDelete(*screen, {1, 0});
    EXPECT_FALSE(files().contents(kFolder + "c.mp3"));
    EXPECT_EQ(screen->tableView()->numberOfRowsInSection(1), 0);
    files().makeReadOnly("/var/mobile/Library/Downloads");
    commitDelete(*screen, {0, 0});
    EXPECT_EQ(screen->tableView()->numberOfRowsInSection(0), 1);
    EXPECT_TRUE(cell(*screen, 0, 0));
    EXPECT_EQ(alertCount(), 0);
}

TEST_F(DownloadsTest, RowsNameTheirFilesWhenTheFolderListsThemInAnotherOrder) {
    put({"a.mp4", "b.mp4", "c.mp4", "x.mp3", "y.mp3"});
    const auto screen = open();
    const auto listLast = [&](const std::string& name) {
        ASSERT_TRUE(files().remove(kFolder + name).ok());
        files().put(kFolder + name);
    };
    listLast("a.mp4");
    listLast("x.mp3");
    commitDelete(*screen, {0, 1});
    ASSERT_THAT(screen->movieFiles(), ElementsAre("c.mp4", "a.mp4"));
    EXPECT_EQ(cell(*screen, 0, 0)->fileName(), "c");
    EXPECT_EQ(cell(*screen, 0, 1)->fileName(), "a");
    EXPECT_EQ(cell(*screen, 1, 0)->fileName(), "y");
    commitDelete(*screen, {0, 1});
    EXPECT_FALSE(files().contents(kFolder + "a.mp4"));
    EXPECT_TRUE(files().contents(kFolder + "c.mp4"));
}

TEST_F(DownloadsTest, ContentStandsThirtyPointsToTheRightOnlyWhileEditing) {
    put({"a.mp4"});
    const auto screen = open();
    const auto row = cell(*screen, 0, 0);
    for (const auto& [edits, confirms] :
         {std::pair(false, false), {true, false}, {true, true}, {true, false}, {false, false}}) {
        screen->setEditing(edits, false);
        row->setShowingDeleteConfirmation(confirms, false);
        row->setNeedsLayout();
        row->layoutIfNeeded();
        EXPECT_EQ(row->contentView()->frame(),
                  CGRectMake(edits && !confirms ? 0 : -30, 0, 350, 60));
    }
}

TEST_F(DownloadsTest, AVideoRowPlaysItsFile) {
    files().put(kFolder + "Zwei Würfel.mp4");
    const auto screen = open();
    EXPECT_TRUE(media().isWarm) << "before a row is touched";
    select(*screen, {0, 0});
    EXPECT_EQ(media().player()->url(),
              "file:///var/mobile/Library/Downloads/Zwei%20W%C3%BCrfel.mp4");
    files().put(kFolder + "new.mp4");
    media().player()->end();
    settle();
    EXPECT_EQ(screen->movieFiles().size(), 2U) << "the folder is read again behind the player";
}

TEST_F(DownloadsTest, AMusicRowPlaysItInTheMidstOfAllTheMusic) {
    put({"b.mp3", "Clip.mp4", "A Song.MP3", "c.mp3"});
    const auto screen = open();
    select(*screen, {1, 2});
    const auto player =
        std::dynamic_pointer_cast<OvoAudioPlayerController>(navigation().modalViewController());
    ASSERT_TRUE(player);
    std::vector<std::string> queue;
    for (const auto& file : player->soundFiles())
        queue.push_back(file->filePath().absoluteString());
    EXPECT_THAT(queue, ElementsAre("file:///var/mobile/Library/Downloads/b.mp3",
                                   "file:///var/mobile/Library/Downloads/A%20Song.MP3",
                                   "file:///var/mobile/Library/Downloads/c.mp3"));
    EXPECT_EQ(player->soundFilesPath(), kFolder);
    EXPECT_EQ(player->selectedIndex(), 2U);
    EXPECT_EQ(media().player()->url(), queue[2]);
    EXPECT_TRUE(media().player()->isPlaying());

    files().put(kFolder + "new.mp3");
    player->dismissAudioPlayer();
    settle();
    EXPECT_EQ(screen->musicFiles().size(), 4U) << "the folder is read again behind the player";
}

}
}
