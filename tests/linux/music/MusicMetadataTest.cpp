#include "audio/OvoAudioFile.h"
#include "tests/linux/music/MusicTest.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace vistrel {
namespace {

class MusicMetadataTest : public MusicTest {
protected:
    static std::string sevenBits(std::size_t size) {
        return {static_cast<char>(size >> 21 & 0x7F), static_cast<char>(size >> 14 & 0x7F),
                static_cast<char>(size >> 7 & 0x7F), static_cast<char>(size & 0x7F)};
    }
    /// A tag of version 2.`version` with one title; `title` begins with its encoding byte.
    static std::string tag(int version, const std::string& title, char flags = 0) {
        const auto size = static_cast<char>(title.size());
        std::string frame = version == 2 ? std::string("TT2") + std::string{0, 0, size}
                                         : std::string("TIT2") + std::string{0, 0, 0, size, 0, 0};
        frame += title;
        return "ID3" + std::string{static_cast<char>(version), 0, flags} + sevenBits(frame.size()) +
               frame;
    }
    static std::string oldTag(const std::string& title) {
        std::string label = "TAG" + title;
        label.resize(128, '\0');
        return label;
    }
};

TEST_F(MusicMetadataTest, TitlesAndLengthsOfFilesOfEveryKind) {
    makeTone("plain.mp3", 3, "-b:a 64k -id3v2_version 0 -map_metadata -1");
    makeTone("varying.mp3", 20, "-q:a 5 -write_xing 0 -id3v2_version 0");
    const std::string sound = contents("plain.mp3");
    std::string tooLarge = tag(3, std::string("\0Large", 6)) + sound;
    tooLarge.replace(6, 4, sevenBits(200U << 20));
    const struct {
        const char* name;
        std::string bytes;
        const char* title; ///< null: the end of the address
        double seconds;    ///< negative: whatever it is
    } rows[] = {
        {"no tag", sound, nullptr, 3},
        {"version 1", sound + oldTag("Old"), "Old", 3},
        {"version 2.2, Latin-1", tag(2, std::string("\0Gr\xFC\xDF", 5)) + sound, "Grüß", 3},
        {"version 2.3, UTF-16", tag(3, std::string("\1\xFF\xFE\x08\x26g\0", 7)) + sound, "☈g", 3},
        {"version 2.4, UTF-8", tag(4, "\3Grüße") + sound, "Grüße", 3},
        {"unsynchronised", tag(3, std::string("\0a\xFF\0b", 5), '\x80') + sound, "aÿb", 3},
        {"larger than the file", tooLarge, nullptr, -1},
        {"variable rate without a header", contents("varying.mp3"), nullptr, 20},
        {"cut in the middle of a frame, told whole", sound.substr(0, sound.size() / 2 + 7), nullptr,
         3},
        {"empty", "", nullptr, 0},
        {"text", "This is no sound.", nullptr, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        write("A File.mp3", row.bytes);
        const OvoAudioFile file(url("A File.mp3"));
        if (row.seconds >= 0) {
            EXPECT_EQ(file.title(), row.title ? row.title : "A%20File.mp3");
            EXPECT_NEAR(file.duration(), row.seconds, row.seconds > 10 ? row.seconds / 100 : 0.1);
        }
    }
}

TEST_F(MusicMetadataTest, WhatCannotBeOpenedIsSaidAndAnsweredWithItsName) {
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

TEST_F(MusicMetadataTest, ATagOfSixteenMegabytesIsReadWhole) {
    makeTone("plain.mp3", 2, "-b:a 64k -id3v2_version 0 -map_metadata -1");
    const std::string title("\0Large", 6);
    std::string frames =
        std::string("TIT2") + std::string{0, 0, 0, static_cast<char>(title.size()), 0, 0} + title;
    frames.resize(16U << 20, '\0');
    write("large.mp3",
          "ID3" + std::string{3, 0, 0} + sevenBits(frames.size()) + frames + contents("plain.mp3"));
    const OvoAudioFile file(url("large.mp3"));
    EXPECT_TRUE(log_.empty()) << log_.front();
    EXPECT_EQ(file.title(), "Large");
    EXPECT_NEAR(file.duration(), 2, 0.1);
}

}
}
