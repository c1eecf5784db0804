#include "audio/OvoAudioPlayerController.h"
#include "tests/downloads/LibraryTest.h"

namespace vistrel {
namespace {

class DownloadsTest : public LibraryTest {
protected:
    void openWith(const std::vector<std::string>& names) {
        put(names);
        open();
    }
    void select(NSIndexPath path) {
        library_->tableViewDidSelectRowAtIndexPath(table(), path);
        settle();
        ASSERT_TRUE(media().player());
    }
    void remove(NSIndexPath path) {
        library_->tableViewCommitEditingStyleForRowAtIndexPath(
            table(), UITableViewCellEditingStyle::Delete, path);
        settle();
    }
    /// The library's files by name, each with its contents.
    std::map<std::string, std::string> folder() { return files().contentsOfFolder(kFolder); }
};

using Files = std::map<std::string, std::string>;

TEST_F(DownloadsTest, OnlyTheSixSpellingsCountAndTheFoldersOrderIsKept) {
    files().putFolder(kFolder + "folder.mp4");
    openWith({"b.mp4", "Clip.MP4", "Clip.Mp4", "Clip.mov", "Song.mp3", "Song.m4a", "a.m4v", "A.M4V",
              "loud.MP3", "mp4", "x.mp4.part", "Show.S01E01.mp4", ".hidden.mp4"});
    EXPECT_THAT(library_->movieFiles(), ElementsAre("folder.mp4", "b.mp4", "Clip.MP4", "a.m4v",
                                                    "A.M4V", "Show.S01E01.mp4", ".hidden.mp4"));
    EXPECT_THAT(library_->musicFiles(), ElementsAre("Song.mp3", "loud.MP3"));
    EXPECT_EQ(cell({0, 5})->fileName(), "Show.S01E01");
    EXPECT_EQ(library_->tableViewTitleForHeaderInSection(table(), 0), "Videos");
    EXPECT_EQ(library_->tableViewTitleForHeaderInSection(table(), 1), "Music");
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(DownloadsTest, AFolderThatCannotBeReadIsEmptyAndSaidOnceInTheLog) {
    files().makeUnreadable("/var/mobile/Library/Downloads");
    openWith({"a.mp4"});
    EXPECT_EQ(rows(), " | ");
    EXPECT_EQ(logLines().size(), 1U);
}

TEST_F(DownloadsTest, StrayFilesAreOfferedAtEveryAppearanceUntilTheyAreMoved) {
    files().put("/var/mobile/Media/Downloads/Song.mp3", "song");
    files().put("/var/root/Library/Downloads/Clip.MP4", "clip");
    files().put("/var/mobile/Downloads/notes.txt", "notes");
    open();
    EXPECT_EQ(alert(), "Detected Files | Vistrel has detected files you have downloaded stored in "
                       "a different directory, would you like to move these files to your "
                       "downloads folder so you can play them with Vistrel?");
    ASSERT_TRUE(tapAlertButton("No"));
    EXPECT_EQ(folder(), Files());
    EXPECT_TRUE(files().contents("/var/mobile/Media/Downloads/Song.mp3"));
    EXPECT_EQ(alertCount(), 0);

    openAgain();
    ASSERT_TRUE(tapAlertButton("Yes"));
    EXPECT_EQ(folder(), (Files{{"Song.mp3", "song"}, {"Clip.MP4", "clip"}}));
    EXPECT_TRUE(files().contents("/var/mobile/Downloads/notes.txt"));
    EXPECT_EQ(rows(), "Clip | Song") << "shown without a further appearance";
    EXPECT_TRUE(library_->view()->isUserInteractionEnabled());

    openAgain();
    EXPECT_EQ(alertCount(), 0);
}

TEST_F(DownloadsTest, StrayFilesThatCannotBeMovedStayAndTheOthersMove) {
    const std::string earlier = "/var/root/Library/Downloads/";
    files().put("/var/mobile/Media/Downloads/Clip.mp4", "later");
    files().put(earlier + "Clip.mp4", "earlier");
    files().put(earlier + "stuck.mp4", "stuck");
    files().put(earlier + "free.mp4", "free");
    files().failMove(earlier + "stuck.mp4", EXDEV);
    open();
    ASSERT_TRUE(tapAlertButton("Yes"));
    EXPECT_EQ(alertCount(), 0);
    EXPECT_EQ(folder(), (Files{{"Clip.mp4", "earlier"}, {"free.mp4", "free"}}));
    EXPECT_EQ(files().contentsOfFolder(earlier), (Files{{"stuck.mp4", "stuck"}}));
    EXPECT_EQ(files().contents("/var/mobile/Media/Downloads/Clip.mp4"), "later");

    files().clearFaults();
    openAgain();
    ASSERT_TRUE(tapAlertButton("Yes"));
    openAgain();
    EXPECT_EQ(alertTitle(), "Detected Files") << "the taken name keeps the question coming back";
}

TEST_F(DownloadsTest, DeletingRemovesTheFileAndItsRowUnlessItCannotBeDeleted) {
    openWith({"a.mp4", "b.mp4", "c.mp3"});
    remove({0, 0});
    EXPECT_EQ(rows(), "b | c");
    remove({1, 0});
    EXPECT_EQ(rows(), "b | ");
    EXPECT_EQ(folder(), (Files{{"b.mp4", "b.mp4"}}));
    files().makeReadOnly("/var/mobile/Library/Downloads");
    remove({0, 0});
    EXPECT_EQ(rows(), "b | ");
    EXPECT_EQ(alertCount(), 0);
}

TEST_F(DownloadsTest, RowsNameTheirFilesWhenTheFolderListsThemInAnotherOrder) {
    openWith({"a.mp4", "b.mp4", "c.mp4", "x.mp3", "y.mp3"});
    for (const char* name : {"a.mp4", "x.mp3"}) {
        ASSERT_TRUE(files().remove(kFolder + name).ok());
        put({name});
    }
    remove({0, 1});
    EXPECT_EQ(rows(), "c, a | y, x");
    remove({0, 1});
    EXPECT_EQ(rows(), "c | y, x");
    EXPECT_FALSE(files().contents(kFolder + "a.mp4"));
}

TEST_F(DownloadsTest, ContentStandsThirtyPointsToTheRightOnlyWhileEditing) {
    openWith({"a.mp4"});
    const auto row = cell({0, 0});
    for (const auto& [edits, confirms] :
         {std::pair(false, false), {true, false}, {true, true}, {true, false}, {false, false}}) {
        library_->setEditing(edits, false);
        row->setShowingDeleteConfirmation(confirms, false);
        row->setNeedsLayout();
        row->layoutIfNeeded();
        EXPECT_EQ(row->contentView()->frame(),
                  CGRectMake(edits && !confirms ? 0 : -30, 0, 350, 60));
    }
}

TEST_F(DownloadsTest, AVideoRowPlaysItsFile) {
    openWith({"Zwei Würfel.mp4"});
    EXPECT_TRUE(media().isWarm) << "before a row is touched";
    select({0, 0});
    EXPECT_EQ(media().player()->url(),
              "file:///var/mobile/Library/Downloads/Zwei%20W%C3%BCrfel.mp4");
    put({"new.mp4"});
    media().player()->end();
    settle();
    EXPECT_EQ(rows(), "Zwei Würfel, new | ") << "the folder is read again behind the player";
}

TEST_F(DownloadsTest, AMusicRowPlaysItInTheMidstOfAllTheMusic) {
    openWith({"b.mp3", "Clip.mp4", "A Song.MP3", "c.mp3"});
    select({1, 2});
    const auto player = presented<OvoAudioPlayerController>();
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

    put({"new.mp3"});
    player->dismissAudioPlayer();
    settle();
    EXPECT_EQ(rows(), "Clip | b, A Song, c, new") << "the folder is read again behind the player";
}

}
}
