// Tags and raw ID3 bytes of real files.
#include "tests/linux/media/PlaybackFixture.h"

#include <cstring>
#include <ctime>

namespace vistrel {
namespace {

class AudioFileTest : public PlaybackFixture {
protected:
    AudioFileTest() { std::filesystem::create_directories(std::string(SAMPLES_FOLDER) + "/made"); }

    /// Writes a file and returns its device path.
    static std::string made(const std::string& bytes) {
        std::ofstream(std::string(SAMPLES_FOLDER) + "/made/file.mp3", std::ios::binary) << bytes;
        return "/made/file.mp3";
    }

    static std::string sized(std::size_t size) {
        return {static_cast<char>(size >> 21 & 0x7F), static_cast<char>(size >> 14 & 0x7F),
                static_cast<char>(size >> 7 & 0x7F), static_cast<char>(size & 0x7F)};
    }

    /// An ID3v2 tag with one title frame and `padding` zero bytes.
    static std::string tag(int version, const std::string& content, std::size_t padding = 0,
                           char flags = 0) {
        std::string frame = version == 2 ? "TT2" : "TIT2";
        if (version == 2)
            frame += {0, 0, static_cast<char>(content.size())};
        else if (version == 3)
            frame += std::string{0, 0, 0, static_cast<char>(content.size()), 0, 0};
        else
            frame += sized(content.size()) + std::string(2, '\0');
        frame += content + std::string(padding, '\0');
        return "ID3" + std::string{static_cast<char>(version), 0, flags} + sized(frame.size()) +
               frame;
    }

    std::unique_ptr<host::AudioFileReader> open(const std::string& path) {
        auto reader = media_->openAudioFile(path);
        return reader ? std::move(reader.value()) : nullptr;
    }
};

TEST_F(AudioFileTest, TagsOfEveryVersionAndEncodingAreRead) {
    const std::string sound = sample("untagged.mp3");
    std::string label = "TAG" + std::string(125, '\0');
    label.replace(3, 9, "Old Label");
    const std::string utf16("\x01\xFF\xFE\x08\x26g\0", 7); // ☈g, little-endian with mark
    const std::tuple<const char*, std::string, const char*> files[] = {
        {"none", sound, ""},
        {"version 1", sound + label, "Old Label"},
        {"version 2.2 Latin-1", tag(2, std::string("\0Gr\xFC\xDF", 5)) + sound, "Grüß"},
        {"version 2.3 UTF-16", tag(3, utf16) + sound, "☈g"},
        {"version 2.4 UTF-8", tag(4, "\x03Grüße") + sound, "Grüße"},
        {"half a surrogate pair", tag(3, std::string("\x01\xFF\xFE\x3D\xD8g\0", 7)) + sound,
         "\xEF\xBF\xBDg"},
        {"unsynchronised", tag(3, std::string("\0a\xFF\0b", 5), 0, '\x80') + sound, "aÿb"},
        {"both", tag(4, "\x03New") + sound + label, "New"},
        {"the first half of a file that tells its length", sound.substr(0, sound.size() / 2 + 7),
         ""},
    };
    for (const auto& [name, bytes, title] : files) {
        const auto info = open(made(bytes))->info().value();
        EXPECT_EQ(info.title, title) << name;
        EXPECT_NEAR(info.duration, 3, 0.09) << name;
    }
}

TEST_F(AudioFileTest, TheRawTagIsReturnedByteForByte) {
    const std::string sound = sample("untagged.mp3");
    std::string tooLarge = tag(3, std::string("\0X", 2)) + std::string(100, '\0');
    tooLarge.replace(6, 4, sized(200u << 20));
    for (const std::string& expected :
         {std::string(), tag(4, "\x03Small", 64), tag(3, std::string("\0Large", 6), 16u << 20)}) {
        const auto bytes = open(made(expected + sound))->id3Tag();
        ASSERT_TRUE(bytes.ok());
        EXPECT_TRUE(bytes.value().size() == expected.size() &&
                    !std::memcmp(bytes.value().data(), expected.data(), expected.size()))
            << bytes.value().size();
    }
    if (const auto reader = open(made(tooLarge + sound))) {
        EXPECT_LE(reader->id3Tag().value().size(), tooLarge.size() + sound.size());
    }
}

TEST_F(AudioFileTest, TheContentDecidesTheKindAndLengthsAreWithinOnePercent) {
    // With an old tag at the end and rubbish in the middle.
    std::string odd = sample("headerless.mp3");
    odd.insert(odd.size() / 2, 3000, 'x').append("TAG" + std::string(125, '\0'));
    const struct {
        std::string path;
        double seconds;
        const char* title = "";
    } files[] = {
        {"/ogg.mp3", 2, "Foreign"}, {"/flac.mp3", 2, "Foreign"}, {"/ipod.mp3", 2, "Foreign"},
        {"/wav.mp3", 2, nullptr}, // whether it is read is up to the age of the library
        {"/headerless.mp3", 40},    {"/varying.mp3", 20},        {made(odd), 40}};
    for (const auto& file : files) {
        const auto info = open(file.path)->info().value();
        EXPECT_NEAR(info.duration, file.seconds, file.seconds * 0.01 + 0.08) << file.path;
        if (file.title) {
            EXPECT_EQ(info.title, file.title) << file.path;
        }
    }
}

TEST_F(AudioFileTest, AFileThatCannotBeReadFailsQuicklyWithAReason) {
    const std::clock_t before = std::clock();
    const std::pair<const char*, int> files[] = {{"/missing.mp3", ENOENT},
                                                 {"/made", EISDIR},
                                                 {"/text.mp3", EINVAL},
                                                 {"/empty.mp3", EINVAL},
                                                 {"/frameless.mp3", EINVAL}}; // 128 megabytes
    for (const auto& [path, code] : files)
        EXPECT_EQ(media_->openAudioFile(path).failure().code, code) << path;
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 10);
}

}
}
