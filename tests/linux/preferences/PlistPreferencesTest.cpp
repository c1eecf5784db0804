#include "platform/linux/preferences/PlistPreferences.h"

#include "platform/linux/preferences/PropertyList.h"
#include "tests/support/TemporaryFolder.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <random>
#include <thread>

namespace vistrel {
namespace {

namespace fs = std::filesystem;

class PlistPreferencesTest : public ::testing::Test {
protected:
    support::TemporaryFolder folder_;
    std::string path_ = folder_.path("Library/store.plist");
};

TEST_F(PlistPreferencesTest, EveryKindOfValueIsRestored) {
    const Value dictionary(Value::Dictionary{
        {"yes", Value(true)},
        {"no", Value(false)},
        {"zero", Value(0)},
        {"negative", Value(-123456789012345)},
        {"float", Value(static_cast<double>(0.7F))},
        {"double", Value(0.1 + 0.2)},
        {"small", Value(5e-324)},
        {"text", Value("Grüße 🎵 <&>\n")},
        {"empty", Value("")},
        {"date", Value::date(1'300'000'000.5)},
        {"data", Value::data({std::byte{0}, std::byte{255}, std::byte{7}})},
        {"array", Value(Value::Array{1, "two", Value::Dictionary{{"three", 3.5}}})},
        {"nothing in it", Value(Value::Dictionary())},
    });
    PlistPreferences preferences(path_);
    ASSERT_TRUE(preferences.save(dictionary));
    const auto loaded = PlistPreferences(path_).load();
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded.value(), dictionary);
}

TEST_F(PlistPreferencesTest, AMissingStoreIsEmptyAndADamagedOneIsMovedAside) {
    PlistPreferences preferences(path_);
    ASSERT_TRUE(preferences.load());
    EXPECT_TRUE(preferences.load().value().dictionary().empty());

    fs::create_directories(folder_.path("Library"));
    std::ofstream(path_) << "bplist00 and then nothing that makes sense";
    EXPECT_FALSE(preferences.load());
    EXPECT_TRUE(fs::exists(path_ + ".damaged"));
    EXPECT_TRUE(preferences.load()) << "the next start finds no file";
    EXPECT_TRUE(preferences.save(Value(Value::Dictionary{{"a", Value(1)}})));
    EXPECT_TRUE(preferences.load().value().find("a"));
}

TEST_F(PlistPreferencesTest, ReadsTheXMLFormOfAPropertyList) {
    folder_.put("Info.plist",
                "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
                "<key>CFBundleVersion</key><string>1.0</string>"
                "<key>Flag</key><true/><key>Count</key><integer>-3</integer></dict></plist>\n");
    PlistPreferences preferences(path_);
    const auto info = preferences.readPropertyList(folder_.path("Info.plist"));
    ASSERT_TRUE(info);
    EXPECT_EQ(info.value(),
              Value(Value::Dictionary{
                  {"CFBundleVersion", Value("1.0")}, {"Flag", Value(true)}, {"Count", Value(-3)}}));
    EXPECT_EQ(preferences.readPropertyList(folder_.path("none")).failure().code, ENOENT);
}

/// Saves counts forever and reports each through the pipe once it is saved.
[[noreturn]] void saveCounts(const std::string& path, int pipe) {
    PlistPreferences preferences(path);
    for (std::int64_t count = 1;; ++count) {
        Value dictionary(
            Value::Dictionary{{"count", Value(count)}, {"padding", Value(std::string(2000, 'p'))}});
        if (!preferences.save(dictionary) || ::write(pipe, &count, sizeof count) != sizeof count)
            ::_exit(1);
    }
}

TEST_F(PlistPreferencesTest, AKillAtAnyMomentLosesNothingThatWasSaved) {
    constexpr int kKills = 200;
    std::mt19937 random(20100401);
    std::uniform_int_distribution<int> microseconds(0, 6000);
    for (int round = 0; round < kKills; ++round) {
        int ends[2];
        ASSERT_EQ(::pipe(ends), 0);
        const pid_t child = ::fork();
        if (child == 0)
            saveCounts(path_, ends[1]);
        ::close(ends[1]);
        std::int64_t reported = 0;
        ASSERT_EQ(::read(ends[0], &reported, sizeof reported), ssize_t{sizeof reported});
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        std::int64_t next = 0;
        while (::read(ends[0], &next, sizeof next) == ssize_t{sizeof next})
            reported = next;
        ::close(ends[0]);

        const auto loaded = PlistPreferences(path_).load();
        ASSERT_TRUE(loaded) << "round " << round << ": " << loaded.failure().message;
        const Value* count = loaded.value().find("count");
        ASSERT_NE(count, nullptr) << "round " << round;
        EXPECT_GE(count->integerValue(), reported) << "round " << round;
        EXPECT_LE(count->integerValue(), reported + 1) << "round " << round;
        EXPECT_EQ(loaded.value().find("padding")->string().size(), 2000U);
    }
}

}
}
