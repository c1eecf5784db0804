#include "shell/MissingSite.h"

#include "tests/support/TemporaryFolder.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

class MissingSiteTest : public support::ScreenTest {
protected:
    MissingSiteTest() { deterministicHost().host.settingsFile = file_; }

    support::TemporaryFolder folder_;
    std::string file_ = folder_.path("vistrel/vistrel.ini");
};

TEST_F(MissingSiteTest, TheSettingsFileIsCreatedAndOpenedUnlessTheSiteIsSet) {
    deterministicHost().settings["site/base-url"] = "http://films.example";
    remindOfMissingSite();
    EXPECT_EQ(alertCount(), 0);

    deterministicHost().settings.clear();
    desktop().schemes().insert("file");
    remindOfMissingSite();
    EXPECT_TRUE(tapAlertButton("Set Site"));
    EXPECT_EQ(alertCount(), 0);
    EXPECT_THAT(desktop().openedURLs(), ElementsAre("file://" + file_));
    EXPECT_THAT(support::contentsOf(file_), HasSubstr("[site]\n"));
}

TEST_F(MissingSiteTest, AnExistingFileIsKeptAndItsPathShownWhenNothingOpensIt) {
    std::filesystem::create_directories(folder_.path("vistrel"));
    folder_.put("vistrel/vistrel.ini", "[mail]\n");
    remindOfMissingSite();
    EXPECT_TRUE(tapAlertButton("Set Site"));
    EXPECT_EQ(alertMessage(), file_);
    EXPECT_THAT(desktop().openedURLs(), IsEmpty());
    EXPECT_EQ(support::contentsOf(file_), "[mail]\n");
}

}
}
