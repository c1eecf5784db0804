#include "platform/foundation/NSArrayPathUtilities.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSFileHandle.h"
#include "platform/foundation/NSFileManager.h"
#include "platform/foundation/NSUserDefaults.h"
#include "platform/foundation/UserLocale.h"
#include "tests/support/HostTest.h"

#include <cerrno>
#include <clocale>

namespace vistrel {
namespace {

std::span<const std::byte> bytesOf(std::string_view text) {
    return std::as_bytes(std::span(text.data(), text.size()));
}

TEST(NSArrayPathUtilitiesTest, AnExtensionIsWhatFollowsTheLastDot) {
    const std::pair<const char*, const char*> extensions[] = {
        {"a.mp4", "mp4"}, {"a.b.MP3", "MP3"}, {"none", ""},    {".mp4", ""},
        {"a.", ""},       {"", ""},           {"..mp4", "mp4"}};
    for (const auto& [name, extension] : extensions)
        EXPECT_EQ(pathExtension(name), extension) << name;
    EXPECT_EQ(stringByDeletingPathExtension("a.b.mp4"), "a.b");
    EXPECT_EQ(stringByDeletingPathExtension(".mp4"), ".mp4");
    const std::vector<std::string> names{"z.MP4", "a.Mp4",  "b.mp4",     "mp4",
                                         ".mp4",  "c.mp4 ", "d.mp4.txt", "bad\xff.m4v"};
    const std::string_view videos[] = {"m4v", "M4V", "mp4", "MP4"};
    EXPECT_THAT(pathsMatchingExtensions(names, videos),
                ElementsAre("z.MP4", "b.mp4", "bad\xff.m4v"));
    EXPECT_EQ(pathsMatchingExtensions(std::vector(names), videos),
              pathsMatchingExtensions(names, videos));
}

class FilesTest : public support::HostTest {};

TEST_F(FilesTest, EachFailureHasItsCodeAndLeavesTheFiles) {
    auto& manager = NSFileManager::defaultManager();
    const std::map<std::string, std::string> before{
        {"/in/a.mp4", "mine"}, {"/out/a.mp4", "yours"}, {"/locked/b.mp4", "b"}};
    for (const auto& [path, text] : before)
        files().put(path, text);
    files().makeReadOnly("/locked");
    files().makeUnreadable("/out");
    const auto code = [](const std::optional<NSError>& error) {
        return error ? error->code() : 0;
    };
    EXPECT_EQ(code(manager.moveItemAtPathToPath("/in/a.mp4", "/out/a.mp4")), EEXIST);
    EXPECT_EQ(code(manager.moveItemAtPathToPath("/in/none", "/out/b.mp4")), ENOENT);
    EXPECT_EQ(code(manager.moveItemAtPathToPath("/locked/b.mp4", "/in/b.mp4")), EROFS);
    EXPECT_EQ(code(manager.removeItemAtPath("/locked/b.mp4")), EROFS);
    EXPECT_EQ(code(manager.contentsOfDirectoryAtPath("/out").error), EACCES);
    EXPECT_THAT(manager.contentsOfDirectoryAtPath("/none").names, IsEmpty());
    EXPECT_FALSE(manager.createFileAtPath("/locked/new"));
    EXPECT_FALSE(manager.createFileAtPath("/none/new"));
    for (const auto& [path, text] : before)
        EXPECT_EQ(files().contents(path), text);
}

TEST_F(FilesTest, AHandleAppendsUntilTheDiskIsFull) {
    auto& manager = NSFileManager::defaultManager();
    files().putFolder("/d");
    EXPECT_EQ(NSFileHandle::fileHandleForUpdatingAtPath("/d/film"), nullptr);
    ASSERT_TRUE(manager.createFileAtPath("/d/film", bytesOf("one ")));
    const auto handle = NSFileHandle::fileHandleForUpdatingAtPath("/d/film");
    ASSERT_TRUE(handle);
    handle->seekToEndOfFile();
    EXPECT_FALSE(handle->writeData(bytesOf("two")));
    EXPECT_EQ(files().contents("/d/film"), "one two");
    files().failWritesFrom(2, ENOSPC);
    EXPECT_FALSE(handle->writeData(bytesOf("!")));
    const auto error = handle->writeData(bytesOf("?"));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->domain(), NSPOSIXErrorDomain);
    EXPECT_EQ(error->code(), ENOSPC);
    files().failClose(EIO);
    EXPECT_EQ(handle->closeFile()->code(), EIO);
    EXPECT_FALSE(handle->closeFile());
    EXPECT_EQ(handle->writeData(bytesOf("x"))->code(), EBADF);
    EXPECT_EQ(files().contents("/d/film"), "one two!");
    ASSERT_TRUE(manager.createFileAtPath("/d/film"));
    EXPECT_EQ(files().contents("/d/film"), "") << "a file of the same name is replaced";
}

class NSUserDefaultsTest : public support::HostTest {};

TEST_F(NSUserDefaultsTest, ChangesWithinOneTurnAreSavedTogether) {
    auto& defaults = NSUserDefaults::standardUserDefaults();
    for (int count = 0; count < 10'000; ++count)
        defaults.setFloatForKey(static_cast<float>(count) / 7, "PlayerVolume");
    defaults.setObjectForKey(Value("x"), "Other");
    EXPECT_EQ(defaults.floatForKey("PlayerVolume"), 9999.0F / 7);
    EXPECT_EQ(preferences().saves(), 0);
    turn();
    EXPECT_EQ(preferences().saves(), 1);
    defaults.setObjectForKey(Value("x"), "Other");
    turn();
    EXPECT_EQ(preferences().saves(), 1) << "the same value is no change";
    defaults.removeObjectForKey("Other");
    EXPECT_TRUE(defaults.synchronize());
    turn();
    EXPECT_EQ(preferences().saves(), 2);

    NSUserDefaults::resetStandardUserDefaults();
    auto& reread = NSUserDefaults::standardUserDefaults();
    EXPECT_EQ(reread.floatForKey("PlayerVolume"), 9999.0F / 7);
    EXPECT_TRUE(reread.objectForKey("Other").isNull());
    EXPECT_EQ(reread.floatForKey("None"), 0.0F);
}

TEST_F(NSUserDefaultsTest, RegisteredDefaultsStandInForAbsentValuesAndAreNotSaved) {
    auto& defaults = NSUserDefaults::standardUserDefaults();
    defaults.setFloatForKey(2, "timeout");
    defaults.registerDefaults({{"timeout", 5}, {"volume", 0.5}});
    defaults.registerDefaults({{"volume", 0.25}});
    EXPECT_EQ(defaults.floatForKey("timeout"), 2.0F);
    EXPECT_EQ(defaults.floatForKey("volume"), 0.25F);
    defaults.removeObjectForKey("timeout");
    EXPECT_EQ(defaults.objectForKey("timeout"), Value(5));
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(preferences().stored(), Value(Value::Dictionary()));
}

TEST_F(NSUserDefaultsTest, AFailedSaveIsLoggedAndRepeatedWithTheNext) {
    auto& defaults = NSUserDefaults::standardUserDefaults();
    preferences().setFailure(ENOSPC);
    defaults.setFloatForKey(0.5F, "PlayerVolume");
    turn();
    EXPECT_FALSE(defaults.synchronize());
    EXPECT_EQ(logLines().front().find("User defaults cannot be saved: "), 0U);
    preferences().setFailure(0);
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_EQ(preferences().stored().find("PlayerVolume")->doubleValue(), 0.5);
}

TEST_F(NSUserDefaultsTest, AStoreThatCannotBeReadStartsEmpty) {
    preferences().setStored(Value(Value::Dictionary{{"a", Value(1)}}));
    preferences().setFailure(EBADMSG);
    EXPECT_TRUE(NSUserDefaults::standardUserDefaults().objectForKey("a").isNull());
    EXPECT_EQ(logLines().size(), 1U);
}

TEST_F(FilesTest, TranslationsFallBackToTheValueThenTheKey) {
    deterministicHost().translations["Yes"] = "Ja";
    const NSBundle& bundle = NSBundle::mainBundle();
    EXPECT_EQ(bundle.localizedStringForKeyValue("Yes", "Yes!"), "Ja");
    EXPECT_EQ(bundle.localizedStringForKeyValue("No", "No!"), "No!");
    EXPECT_EQ(bundle.localizedStringForKeyValue("No"), "No");
    EXPECT_EQ(bundle.pathForResourceOfType("not there", "png"), "");
}

TEST(UserLocaleTest, AMissingLocaleIsNamedAndTheOthersAreAdopted) {
    using Variables = std::map<std::string, std::string>;
    const std::tuple<Variables, std::string, std::string> cases[] = {
        // and the missing locale, and that of the characters
        {{{"LC_ALL", "C.UTF-8"}, {"LANG", "tlh_XX"}}, "", "C.UTF-8"},
        {{{"LANG", "C.UTF-8"}}, "", "C.UTF-8"},
        {{{"LC_ALL", "tlh_XX.UTF-8"}, {"LANG", "C.UTF-8"}}, "tlh_XX.UTF-8", "C"},
        {{{"LC_MESSAGES", "tlh_XX"}, {"LANG", "C.UTF-8"}}, "tlh_XX", "C.UTF-8"},
        {{}, "", "C"},
    };
    for (const auto& [variables, missing, characters] : cases) {
        for (const char* name :
             {"LC_ALL", "LC_CTYPE", "LC_COLLATE", "LC_TIME", "LC_MONETARY", "LC_MESSAGES", "LANG"})
            ::unsetenv(name);
        for (const auto& [name, value] : variables)
            ::setenv(name.c_str(), value.c_str(), 1);
        std::setlocale(LC_ALL, "C");
        EXPECT_EQ(adoptUserLocale(), missing);
        EXPECT_EQ(std::setlocale(LC_CTYPE, nullptr), characters);
        EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
    }
    std::setlocale(LC_ALL, "C");
}

}
}
