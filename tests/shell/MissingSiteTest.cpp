#include "shell/MissingSite.h"

#include "platform/uikit/UIAlertView.h"
#include "tests/support/ui/ScreenTest.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace vistrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MissingSiteTest : public support::ScreenTest {
protected:
    MissingSiteTest() { deterministicHost().host.settingsFile = file_; }
    ~MissingSiteTest() override { std::filesystem::remove_all(folder_); }

    void setSite() {
        settle();
        EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Set Site"));
        settle();
    }

    std::string folder_ = testing::TempDir() + "missing-site";
    std::string file_ = folder_ + "/vistrel/vistrel.ini";
};

TEST_F(MissingSiteTest, ASiteThatIsSetNeedsNoReminder) {
    deterministicHost().settings["site/base-url"] = "http://films.example";
    remindOfMissingSite();
    EXPECT_EQ(alertCount(), 0U);
}

TEST_F(MissingSiteTest, TheSettingsFileIsCreatedAndOpened) {
    desktop().schemes().insert("file");
    remindOfMissingSite();
    setSite();
    EXPECT_EQ(alertCount(), 0U);
    EXPECT_THAT(desktop().openedURLs(), ElementsAre("file://" + file_));
    std::string text;
    std::getline(std::ifstream(file_), text, '\0');
    EXPECT_THAT(text, testing::HasSubstr("[site]\n"));
}

TEST_F(MissingSiteTest, AFileThatIsThereIsKeptAndItsPathShownWhenNothingOpensIt) {
    std::filesystem::create_directories(folder_ + "/vistrel");
    std::ofstream(file_) << "[mail]\n";
    remindOfMissingSite();
    setSite();
    ASSERT_EQ(alertCount(), 1U);
    EXPECT_EQ(UIAlertView::visibleAlerts().back()->message(), file_);
    EXPECT_THAT(desktop().openedURLs(), IsEmpty());
    EXPECT_EQ(std::filesystem::file_size(file_), 7U);
}

}
}
