#include "shell/MissingSite.h"

#include "tests/support/ui/ScreenTest.h"

#include <filesystem>
#include <fstream>

namespace vistrel {
namespace {

class MissingSiteTest : public support::ScreenTest {
protected:
    MissingSiteTest() { deterministicHost().host.settingsFile = file_; }
    ~MissingSiteTest() override { std::filesystem::remove_all(folder_); }

    std::string folder_ = testing::TempDir() + "missing-site";
    std::string file_ = folder_ + "/vistrel/vistrel.ini";
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
    std::string text;
    std::getline(std::ifstream(file_), text, '\0');
    EXPECT_THAT(text, HasSubstr("[site]\n"));
}

TEST_F(MissingSiteTest, AnExistingFileIsKeptAndItsPathShownWhenNothingOpensIt) {
    std::filesystem::create_directories(folder_ + "/vistrel");
    std::ofstream(file_) << "[mail]\n";
    remindOfMissingSite();
    EXPECT_TRUE(tapAlertButton("Set Site"));
    EXPECT_EQ(alertMessage(), file_);
    EXPECT_THAT(desktop().openedURLs(), IsEmpty());
    EXPECT_EQ(std::filesystem::file_size(file_), 7U);
}

}
}
