#include "tests/resources/SourceTexts.h"
#include <filesystem>
#include <gmock/gmock.h>
#include <sstream>

namespace vistrel {
namespace {

using testing::ElementsAre;
using testing::IsSupersetOf;

constexpr const char* kScreenFolders[] = {"shell", "catalogue", "web", "downloads", "audio"};

TEST(NamesInSources, AreFoundInEachFormInWhichTheyAreWritten) {
    EXPECT_THAT(
        picturesNamedIn(R"(UIImage::imageNamed("TV.png"); bundle.pathForResourceOfType("About",
        "jpg"); picture("AudioPlayerPlay"); title("Play.pngs");)"),
        ElementsAre("About.jpg", "AudioPlayerPlay.png", "TV.png"));
    EXPECT_THAT(textsLookedUpIn(R"(localizedStringForKeyValue("Edit"), localizedStringForKeyValue(
        "To:", ""); localizedStringForKeyValue(title); translated("Send"))"),
                ElementsAre("Edit", "Send", "To:"));
}

TEST(NamesInSources, EveryPictureThatAScreenNamesIsInTheBundleAtThreeScales) {
    for (const auto* folder : kScreenFolders) {
        for (const auto& name : picturesNamedIn(sourcesOfFolder(folder))) {
            const auto dot = name.find('.');
            for (const auto* scale : {"", "@2x", "@3x"}) {
                const auto file = name.substr(0, dot) + scale + name.substr(dot);
                EXPECT_TRUE(std::filesystem::exists(std::string(VISTREL_BUNDLE_DIR "/") + file))
                    << folder << " names " << file;
            }
        }
    }
}

/// The keys of a catalogue file; without those that have no translation when `translated`.
std::set<std::string> keysOf(const std::string& file, bool translated) {
    std::set<std::string> keys;
    std::istringstream lines(contentsOfFile(VISTREL_SOURCE_DIR "/resources/po/" + file));
    std::string key;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("msgid \"")) {
            key = line.substr(7, line.size() - 8);
        } else if (line.starts_with("msgstr \"") && !key.empty() &&
                   !(translated && line == "msgstr \"\"")) {
            keys.insert(key);
        }
    }
    return keys;
}

TEST(NamesInSources, EveryTextThatIsLookedUpStandsInTheTemplateAndEveryEntryInASource) {
    std::set<std::string> texts;
    std::string sources;
    for (const auto* folder : {"shell", "catalogue", "web", "downloads", "audio", "platform"}) {
        const std::string source = sourcesOfFolder(folder);
        texts.merge(textsLookedUpIn(source));
        sources += source;
    }
    const auto keys = keysOf("vistrel.pot", false);
    EXPECT_THAT(keys, IsSupersetOf(texts));
    for (const std::string& key : keys)
        EXPECT_NE(sources.find('"' + key + '"'), std::string::npos) << key;
}

TEST(NamesInSources, EveryTextOfTheTemplateIsTranslated) {
    const auto texts = keysOf("vistrel.pot", false);
    ASSERT_TRUE(texts.contains("VIP Login"));
    EXPECT_EQ(keysOf("de.po", true), texts);
    EXPECT_EQ(keysOf("fr.po", true), texts);
}

} // namespace
} // namespace vistrel
