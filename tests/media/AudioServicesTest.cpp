#include "platform/media/AudioFile.h"
#include "platform/media/AudioFormat.h"
#include "tests/media/MediaTest.h"

namespace vistrel {
namespace {

class AudioServicesTest : public MediaTest {
protected:
    /// A file with these tags, opened.
    AudioFileID opened(const host::AudioFileReader::Info& info,
                       const std::vector<std::byte>& tag = {}) {
        media().setTags("/var/a b.mp3", info, tag);
        AudioFileID file;
        EXPECT_EQ(AudioFileOpenURL(NSURL::fileURLWithPath("/var/a b.mp3"), file), noErr);
        return file;
    }
};

std::vector<std::byte> bytes(const std::string& text) {
    const auto view = std::as_bytes(std::span(text));
    return {view.begin(), view.end()};
}

/// An ID3 header: version, flags and four bytes of size.
std::vector<std::byte> header(std::string numbers) {
    return bytes("ID3" + numbers.insert(1, 1, '\0'));
}

TEST_F(AudioServicesTest, TheInfoDictionaryContainsOnlyTheFilesValues) {
    std::optional<Value> info;
    ASSERT_EQ(AudioFileGetProperty(opened({"Song", "", "Album", 245.7}),
                                   kAudioFilePropertyInfoDictionary, info),
              noErr);
    EXPECT_EQ(*info, Value(Value::Dictionary{{"title", "Song"},
                                             {"album", "Album"},
                                             {"approximate duration in seconds", "245.700"}}));
    ASSERT_EQ(AudioFileGetProperty(opened({}), kAudioFilePropertyInfoDictionary, info), noErr);
    EXPECT_TRUE(info->dictionary().empty());
}

TEST_F(AudioServicesTest, TheRawTagNeedsABufferOfItsSize) {
    const auto tag = bytes(std::string("ID3\4\0\0\0\0\0\2ab", 12));
    const AudioFileID file = opened({}, tag);
    std::uint32_t size = 0;
    ASSERT_EQ(AudioFileGetPropertyInfo(file, kAudioFilePropertyID3Tag, size), noErr);
    EXPECT_EQ(size, 12u);
    std::vector<std::byte> buffer(12);
    ASSERT_EQ(AudioFileGetProperty(file, kAudioFilePropertyID3Tag, buffer, size), noErr);
    EXPECT_EQ(buffer, tag);
    buffer.resize(11);
    EXPECT_EQ(AudioFileGetProperty(file, kAudioFilePropertyID3Tag, buffer, size),
              kAudioFileBadPropertySizeError);
}

TEST_F(AudioServicesTest, EveryStepFailsWithoutAFile) {
    AudioFileID file;
    EXPECT_EQ(AudioFileOpenURL(NSURL::fileURLWithPath("/none.mp3"), file),
              kAudioFileFileNotFoundError);
    EXPECT_EQ(file, nullptr);
    std::uint32_t size = 99;
    EXPECT_EQ(AudioFileGetPropertyInfo(file, kAudioFilePropertyID3Tag, size),
              kAudioFileNotOpenError);
    EXPECT_EQ(size, 0u);
    EXPECT_EQ(AudioFileGetProperty(file, kAudioFilePropertyID3Tag, {}, size),
              kAudioFileNotOpenError);
    std::optional<Value> info = Value("old");
    EXPECT_EQ(AudioFileGetProperty(file, kAudioFilePropertyInfoDictionary, info),
              kAudioFileNotOpenError);
    EXPECT_FALSE(info);
    EXPECT_EQ(AudioFileGetPropertyInfo(opened({}), kAudioFilePropertyID3Tag, size),
              kAudioFileUnsupportedPropertyError);
}

TEST_F(AudioServicesTest, TheFormatServiceReadsATagsSizeOrReportsWhatIsWrong) {
    const struct {
        const char* name;
        std::vector<std::byte> specifier;
        OSStatus status;
        std::uint32_t size;
        std::uint32_t room = 4; ///< for the result
        AudioFormatPropertyID property = kAudioFormatProperty_ID3TagSize;
    } cases[] = {
        {"plain", header({3, 0, 0, 0, 2, 1}), noErr, 10 + 257},
        {"with footer", header({4, 0x10, 0, 0, 0, 5}), noErr, 25},
        {"footer bit of an older version", header({3, 0x10, 0, 0, 0, 5}), noErr, 15},
        {"largest", header({2, 0, 0x7F, 0x7F, 0x7F, 0x7F}), noErr, 268435465},
        {"nothing", {}, kAudioFormatBadSpecifierSizeError, 0},
        {"nine bytes", header({3, 0, 0, 0, 2}), kAudioFormatBadSpecifierSizeError, 0},
        {"no tag", bytes("TAG and so on"), kAudioFormatUnknownFormatError, 0},
        {"future version", header({5, 0, 0, 0, 2, 1}), kAudioFormatUnsupportedDataFormatError, 0},
        {"high bits", header({3, 0, 0, '\x80', 2, 1}), kAudioFormatUnspecifiedError, 0},
        {"too much room", header({3, 0, 0, 0, 2, 1}), kAudioFormatBadPropertySizeError, 0, 8},
        {"another property", header({3, 0, 0, 0, 2, 1}), kAudioFormatUnsupportedPropertyError, 0, 4,
         fourCharCode("none")},
    };
    for (const auto& one : cases) {
        std::uint32_t room = one.room;
        std::uint32_t result = 0;
        EXPECT_EQ(AudioFormatGetProperty(one.property, one.specifier, room, result), one.status)
            << one.name;
        EXPECT_EQ(result, one.size) << one.name;
    }
}

TEST_F(AudioServicesTest, TheSessionMustBeInitialisedOnce) {
    std::string route;
    EXPECT_EQ(AudioSessionGetProperty(kAudioSessionProperty_AudioRoute, route),
              kAudioSessionNotInitialized);
    EXPECT_EQ(AudioSessionInitialize(nullptr, nullptr), noErr);
    EXPECT_EQ(AudioSessionInitialize(nullptr, nullptr), kAudioSessionAlreadyInitialized);
    EXPECT_EQ(AudioSessionSetActive(true), noErr);
    EXPECT_EQ(AudioSessionSetProperty(kAudioSessionProperty_AudioCategory,
                                      kAudioSessionCategory_MediaPlayback),
              noErr);
    media().setAudioRoute(std::string("Headphone"));
    EXPECT_EQ(AudioSessionGetProperty(kAudioSessionProperty_AudioRoute, route), noErr);
    EXPECT_EQ(route, "Headphone");
    media().setAudioRoute(host::Failure{ENODEV, "no device"});
    EXPECT_EQ(AudioSessionGetProperty(kAudioSessionProperty_AudioRoute, route),
              kAudioSessionUnspecifiedError);
}

}
}
