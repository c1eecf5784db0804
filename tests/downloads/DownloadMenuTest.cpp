#include "downloads/DownloadsFolder.h"
#include "platform/graphics/UIStringDrawing.h"
#include "platform/uikit/UIActionSheet.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UITextField.h"
#include "tests/downloads/LibraryTest.h"

namespace vistrel {
namespace {

class DownloadMenuTest : public LibraryTest {
protected:
    DownloadMenuTest() {
        put({"Film.mp4", "Other.mp4", "Song.MP3"});
        open();
    }
    /// Opens the menu of a row and chooses from it.
    void choose(const std::string& choice, NSIndexPath row = {0, 0}) {
        library_->tableViewShowMenuForRowAtIndexPath(table(), row);
        settle();
        EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, choice)) << choice;
        EXPECT_EQ(UIActionSheet::visibleSheet(), nullptr);
    }
    UITextField& field() { return *UIAlertView::visibleAlerts().back()->textFieldAtIndex(0); }
    void answer(const std::string& name) {
        field().setText(name);
        ASSERT_TRUE(tapAlertButton("Rename"));
    }
    /// Names of the buttons on the sheet.
    std::vector<std::string> choices() {
        return labels(UIAccessibilityRole::Button, *screen().subviews().back());
    }
};

TEST_F(DownloadMenuTest, ALongPressTheOtherButtonAndTheMenuKeyOfferFourThingsAndCancel) {
    for (const char* way :
         {"down 160,100; wait 0.6; up 160,100", "second 160,100", "key Down; key Menu"}) {
        act(way);
        settle();
        const auto sheet = UIActionSheet::visibleSheet();
        ASSERT_TRUE(sheet) << way;
        EXPECT_EQ(sheet->title(), "Film.mp4");
        EXPECT_THAT(choices(),
                    ElementsAre("Open With…", "Show in Folder", "Rename…", "Delete", "Cancel"));
        EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Cancel"));
        EXPECT_FALSE(media().player()) << "the row is not opened as well";
    }
    EXPECT_THAT(desktop().handedOver, IsEmpty());
    EXPECT_EQ(alertCount(), 0);
}

TEST_F(DownloadMenuTest, AnExtensionStandsBehindANameOfAnyDirection) {
    const UIFont font = UIFont::systemFontOfSize(17);
    const double extension = sizeWithFont(".mp4", font).width;
    for (const std::string name :
         {"plain", "مسلسل (2) HD", "שיר", "映画", "\u202Egpm", "🎬 פרק 12"}) {
        const std::string shown = shownName(name + ".mp4");
        const double dot = caretPositionInLine(shown, font, shown.rfind('.'));
        EXPECT_NEAR(dot, sizeWithFont(shown, font).width - extension, 2) << name;
        EXPECT_NEAR(dot, sizeWithFont(name, font).width, 2) << name;
    }
    put({"שיר.mp3"});
    library_->refresh();
    library_->tableViewShowMenuForRowAtIndexPath(table(), {1, 1});
    EXPECT_EQ(UIActionSheet::visibleSheet()->title(), shownName("שיר.mp3"));
}

TEST_F(DownloadMenuTest, MarksThatTurnANameAroundAreNotShown) {
    put({"A\u202E3pm\u2069.\u2067mp4.m4v"});
    library_->refresh();
    settle();
    EXPECT_TRUE(find(UIAccessibilityRole::Row, "A3pm.mp4"));
    choose("Rename…", {0, 2});
    EXPECT_EQ(field().text(), "A3pm.mp4");
    EXPECT_TRUE(tapAlertButton("Cancel"));
    act("second 160,220");
    EXPECT_EQ(UIActionSheet::visibleSheet()->title(), "A3pm.mp4.m4v");
}

TEST_F(DownloadMenuTest, OtherProgramsGetTheMachinesFileAndAFailureIsExplained) {
    choose("Open With…");
    choose("Show in Folder", {1, 0});
    EXPECT_THAT(desktop().handedOver,
                ElementsAre("open " + files().machinePath(kFolder + "Film.mp4"),
                            "show " + files().machinePath(kFolder + "Song.MP3")));
    EXPECT_EQ(alertCount(), 0);
    for (const std::string reason : {"", "Gone astray"}) {
        desktop().handOverFailure = {ENOENT, reason};
        choose("Open With…");
        EXPECT_EQ(alert(), "Cannot Be Opened | " + (reason.empty() ? "Film.mp4" : reason));
        EXPECT_TRUE(tapAlertButton("OK"));
    }
}

TEST_F(DownloadMenuTest, WhereTheDesktopCannotAskTheSheetListsThePrograms) {
    desktop().programs = {"Player", "Editor"};
    for (const char* answer : {"Cancel", "Editor"}) {
        act("second 160,100");
        settle();
        tapButton("Open With…");
        settle();
        EXPECT_THAT(choices(), ElementsAre("Player", "Editor", "Cancel"));
        EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, answer));
    }
    EXPECT_THAT(desktop().handedOver,
                ElementsAre("Editor " + files().machinePath(kFolder + "Film.mp4")));
    choose("Rename…");
    EXPECT_EQ(alertTitle(), "Rename") << "the menu is itself again";
}

TEST_F(DownloadMenuTest, ARenamedFileKeepsItsExtension) {
    choose("Rename…", {1, 0});
    EXPECT_EQ(field().text(), "Song");
    EXPECT_TRUE(find(UIAccessibilityRole::Field, "Name"));
    answer("  Nico & die Würfel.mp4 ");
    EXPECT_EQ(files().contents(kFolder + "Nico & die Würfel.mp4.MP3"), "Song.MP3");
    EXPECT_EQ(rows(), "Film, Other | Nico & die Würfel.mp4");
    EXPECT_EQ(alertCount(), 0);
}

TEST_F(DownloadMenuTest, ANameThatCannotBeUsedIsAskedForAgainWithTheReason) {
    const DownloadFile coming("Coming.mp4", DownloadFile::Existing::Keep);
    const char* rules = "A name cannot be empty, begin with a dot or contain a slash.";
    const char* taken = "A file with this name already exists.";
    const std::pair<std::string, std::string> cases[] = {
        {"", rules},           {"   ", rules},   {".Film", rules},  {" .. ", rules},
        {"../../Film", rules}, {"Other", taken}, {"Coming", taken},
    };
    choose("Rename…");
    EXPECT_EQ(alert(), "Rename");
    for (const auto& [typed, reason] : cases) {
        answer(typed);
        EXPECT_EQ(alert(), "Rename | " + reason) << typed;
        EXPECT_EQ(alertCount(), 1);
        EXPECT_EQ(field().text(), typed);
    }
    files().failMove(kFolder + "Film.mp4", ENAMETOOLONG);
    answer("A name that the disk refuses");
    EXPECT_FALSE(alertMessage().empty());
    EXPECT_TRUE(tapAlertButton("Cancel"));
    EXPECT_EQ(rows(), "Film, Other | Song");
    EXPECT_EQ(files().contents(kFolder + "Other.mp4"), "Other.mp4");
}

TEST_F(DownloadMenuTest, AnUnfinishedDownloadKeepsItsNameAndTheSameNameAsksNothing) {
    std::optional<DownloadFile> running(std::in_place, "Film.mp4", DownloadFile::Existing::Replace);
    choose("Rename…");
    answer("Film");
    EXPECT_EQ(alertCount(), 0);
    choose("Rename…");
    answer("New");
    EXPECT_EQ(alertMessage(), "This file is still being downloaded.");
    running.reset();
    answer("New");
    EXPECT_EQ(alertCount(), 0);
    EXPECT_TRUE(files().contents(kFolder + "New.mp4"));
}

TEST_F(DownloadMenuTest, TheKeyboardReturnsToItsRowFromTheMenuAndFollowsTheRenamedFile) {
    const std::string menu = "key Down; key Menu; show 1; ";
    const auto row = [this] {
        return application().events().focusedPart()->accessibilityElement().label;
    };
    act(menu + "key Escape; show 1");
    EXPECT_EQ(row(), "Film");
    act(menu + "key Escape; show 1");
    EXPECT_EQ(row(), "Other");
    act("key Up; key Menu; show 1; key Down 3; key Enter; show 1");
    field().setText("Zebra");
    act("key Enter; show 1");
    EXPECT_EQ(rows(), "Other, Zebra | Song");
    EXPECT_EQ(row(), "Zebra");
    act("key Delete; key Enter; show 1");
    EXPECT_EQ(row(), "Other");
}

TEST_F(DownloadMenuTest, TheMouseTakesTheRowsFileOut) {
    act("down 160,160");
    EXPECT_EQ(application().events().dragFileOut(), kFolder + "Other.mp4");
    act("up 400,160");
    EXPECT_FALSE(media().player());
}

TEST_F(DownloadMenuTest, DeletingAsksOnTheRowAsAfterASwipe) {
    choose("Delete", {0, 1});
    EXPECT_EQ(table().indexPathForDeleteConfirmation(), (NSIndexPath{0, 1}));
    EXPECT_TRUE(files().contents(kFolder + "Other.mp4"));
    act("key Escape");
    EXPECT_EQ(table().indexPathForDeleteConfirmation(), std::nullopt);
    act("key Down 2; key Menu; show 1; key Down 4; key Enter; show 1; key Enter; show 1");
    EXPECT_FALSE(files().contents(kFolder + "Other.mp4"));
    EXPECT_TRUE(files().contents(kFolder + "Film.mp4"));
}

}
}
