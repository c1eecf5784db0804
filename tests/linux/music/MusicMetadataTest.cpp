#include "audio/OvoAudioFile.h"
#include "tests/linux/music/MusicTest.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace vistrel {
namespace {

using MusicMetadataTest = MusicTest;

TEST_F(MusicMetadataTest, AFilesTagsAndLengthAreRead) {
    makeTone("My Song.mp3", 3, "-metadata title=Grüße -metadata artist=Ä -metadata album=Tones");
    const OvoAudioFile file(url("My Song.mp3"));
    EXPECT_EQ(file.title(), "Grüße");
    EXPECT_EQ(file.artist(), "Ä");
    EXPECT_EQ(file.album(), "Tones");
    EXPECT_NEAR(file.duration(), 3, 0.1);
    write("A Text.mp3", "This is no sound.");
    const OvoAudioFile text(url("A Text.mp3"));
    EXPECT_EQ(text.title(), "A%20Text.mp3");
    EXPECT_EQ(text.duration(), 0);
}

TEST_F(MusicMetadataTest, AFileThatCannotBeOpenedIsLoggedAndGoesByItsName) {
    std::filesystem::create_directory(machinePath("folder.mp3"));
    const auto check = [&](const char* name) {
        log_.clear();
        const OvoAudioFile file(url(name));
        ASSERT_FALSE(log_.empty());
        EXPECT_EQ(log_.front(), "AudioFileOpenURL failed");
        EXPECT_EQ(log_.back(), "AudioFileGetProperty failed for property info dictionary");
        EXPECT_EQ(file.title(), name);
        EXPECT_EQ(file.durationInMinutes(), "0:00");
    };
    check("missing.mp3");
    check("folder.mp3");
    makeTone("secret.mp3", 1);
    ASSERT_EQ(chmod(machinePath("secret.mp3").c_str(), 0), 0);
    const bool asRoot = geteuid() == 0;
    if (asRoot) {
        ASSERT_EQ(chmod(machinePath("").c_str(), 0755), 0);
        ASSERT_EQ(seteuid(65534), 0);
    }
    check("secret.mp3");
    ASSERT_EQ(seteuid(asRoot ? 0 : geteuid()), 0);
}

}
}
