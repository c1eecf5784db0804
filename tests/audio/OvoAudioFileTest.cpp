#include "audio/OvoAudioFile.h"

#include "audio/OvoAudioFileReading.h"
#include "platform/graphics/UIImage.h"
#include "tests/support/HostTest.h"

namespace vistrel {
namespace {

class OvoAudioFileTest : public support::HostTest {
protected:
    static constexpr const char* kSong = "/var/mobile/Library/Downloads/My Song.mp3";

    static std::vector<std::byte> bytes(const std::string& text) {
        const auto* first = reinterpret_cast<const std::byte*>(text.data());
        return {first, first + text.size()};
    }
    static std::vector<std::byte> goodTag() {
        return bytes(std::string("ID3\3\0\0\0\0\0\4abcd", 14));
    }
    std::shared_ptr<OvoAudioFile> song() {
        return OvoAudioFile::withPath(NSURL::fileURLWithPath(kSong));
    }
    /// "Song by Singer on Record, 245.7 s, 4:05"
    static std::string described(const OvoAudioFile& file) {
        std::ostringstream text;
        text << file.title() << " by " << file.artist() << " on " << file.album() << ", "
             << file.duration() << " s, " << file.durationInMinutes();
        return text.str();
    }
    std::shared_ptr<OvoAudioFile> songWith(const char* key, Value value) {
        auto file = song();
        file->setFileInfoDict(Value(Value::Dictionary{{key, std::move(value)}}));
        return file;
    }
};

TEST_F(OvoAudioFileTest, TagsAreReadWithoutLogging) {
    media().setTags(kSong, {"Song", "Singer", "Record", 245.7}, goodTag());
    EXPECT_EQ(described(*song()), "Song by Singer on Record, 245.7 s, 4:05");
    EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(OvoAudioFileTest, AFileThatCannotBeOpenedFailsInEveryStepAndHasDefaults) {
    const auto file = song();
    EXPECT_THAT(
        logLines(),
        ElementsAre("AudioFileOpenURL failed", "AudioFileGetPropertyInfo failed for ID3 tag",
                    "AudioFileGetPropertyID3Tag failed", "AudioFormatGetProperty_ID3TagSize failed",
                    "Error: audio format bad specifier size error",
                    "AudioFileGetProperty failed for property info dictionary"));
    EXPECT_FALSE(file->fileInfoDict());
    EXPECT_EQ(described(*file), "My%20Song.mp3 by  on , 0 s, 0:00");
}

TEST_F(OvoAudioFileTest, AnInvalidTagIsLoggedAndTheRestIsRead) {
    const std::pair<std::string, const char*> rows[] = {
        {"RIFF and so on", "Error: audio format unknown format error"},
        {std::string("ID3\11\0\0\0\0\0\4abcd", 14),
         "Error: audio format unsupported data format error"},
        {std::string("ID3\3\0\0\x80\0\0\4abcd", 14), "Error: audio format unspecified error"},
        {"ID3", "Error: audio format bad specifier size error"},
    };
    for (const auto& [tag, line] : rows) {
        logLines().clear();
        media().setTags(kSong, {"Song", "", "", 10}, bytes(tag));
        EXPECT_EQ(song()->title(), "Song") << line;
        EXPECT_THAT(logLines(), ElementsAre("AudioFormatGetProperty_ID3TagSize failed", line));
    }
}

TEST_F(OvoAudioFileTest, ALengthIsTheNumberAtTheStartOfItsText) {
    const std::tuple<const char*, float, const char*> rows[] = {
        {"59.9", 59.9F, "0:59"}, {"3725", 3725, "62:05"}, {"12.5 seconds", 12.5F, "0:12"},
        {" +7", 7, "0:07"},      {"", 0, "0:00"},         {"long", 0, "0:00"},
        {"inf", 0, "0:00"},      {"1e99", 0, "0:00"}};
    for (const auto& [text, seconds, minutes] : rows) {
        const auto file = songWith("approximate duration in seconds", text);
        EXPECT_FLOAT_EQ(file->duration(), seconds) << text;
        EXPECT_EQ(file->durationInMinutes(), minutes) << text;
    }
}

TEST_F(OvoAudioFileTest, TheFallbackTitleIsTheLastPartOfTheURL) {
    const std::tuple<const char*, const char*> rows[] = {{"/a/My Song.mp3", "My%20Song.mp3"},
                                                         {"/a/100%.mp3", "100%25.mp3"},
                                                         {"/a/.mp3", ".mp3"},
                                                         {"/a/", ""}};
    for (const auto& [path, title] : rows)
        EXPECT_EQ(OvoAudioFile(NSURL::fileURLWithPath(path)).title(), title);
    EXPECT_EQ(songWith("title", "")->title(), "") << "an empty title is still a title";
}

TEST_F(OvoAudioFileTest, EveryFileHasTheSameCover) {
    deterministicHost().host.resourcePath = RESOURCES_FOLDER;
    const auto a = song()->coverImage();
    const auto b = OvoAudioFile::withPath(NSURL::fileURLWithPath("/other.mp3"))->coverImage();
    ASSERT_TRUE(a && b);
    EXPECT_EQ(a->size(), (CGSize{320, 320}));
    EXPECT_EQ(a->bitmap(), b->bitmap());
}

TEST_F(OvoAudioFileTest, AListIsReadInPiecesOnceAndCanBeCancelled) {
    std::vector<std::shared_ptr<OvoAudioFile>> files;
    for (int i = 0; i < 2000; ++i) {
        const std::string path = "/" + std::to_string(i) + ".mp3";
        if (i % 2 == 0)
            media().setTags(path, {"Title " + std::to_string(i), "", "", 1}, goodTag());
        files.push_back(std::make_shared<OvoAudioFile>(NSURL::fileURLWithPath(path),
                                                       OvoAudioFile::Reading::WhenAsked));
    }
    EXPECT_EQ(files[1000]->title(), "Title 1000") << "asked for before its turn";
    EXPECT_THAT(logLines(), IsEmpty());

    auto reading = std::make_unique<OvoAudioFileReading>(files);
    turn();
    EXPECT_FALSE(files[0]->isRead()) << "not before the screen has been shown";
    advance(0.013);
    EXPECT_TRUE(files[0]->isRead());
    reading.reset();
    advance(10);
    EXPECT_FALSE(files[1999]->isRead()) << "cancelled";
    const OvoAudioFileReading again(files);
    ASSERT_TRUE(runUntil([&] { return files[1999]->isRead(); }, 10));
    EXPECT_EQ(logLines().size(), 1000U * 6) << "each unreadable file once, line by line";
    media().setTags("/0.mp3", {"Changed", "", "", 1});
    EXPECT_EQ(files[0]->title(), "Title 0") << "as it was when the list was read";
    turn();
    EXPECT_EQ(loop().pendingWork(), 0U);
}

}
}
