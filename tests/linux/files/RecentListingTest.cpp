#include "platform/linux/files/RecentListing.h"

#include "platform/linux/files/FileDescriptor.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <stdlib.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <functional>
#include <thread>

namespace vistrel {
namespace {

namespace fs = std::filesystem;

constexpr double kSettling = 0.05;

class RecentListingTest : public ::testing::Test {
protected:
    RecentListingTest() {
        std::string pattern = (fs::temp_directory_path() / "listing-XXXXXX").string();
        path_ = ::mkdtemp(pattern.data());
        for (int index = 0; index < 1200; ++index)
            put("file " + std::to_string(index));
        folder_ = FileDescriptor(::open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    }
    ~RecentListingTest() override { fs::remove_all(path_); }

    void put(const std::string& name) const {
        const FileDescriptor file(
            ::open((path_ + "/" + name).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    }
    static void settle() {
        std::this_thread::sleep_for(std::chrono::duration<double>(kSettling * 2));
    }
    std::vector<std::string> list() {
        ::lseek(folder_.number(), 0, SEEK_SET);
        return listing_.namesIn(folder_.number()).value();
    }

    std::string path_;
    FileDescriptor folder_;
    RecentListing listing_{kSettling};
};

TEST_F(RecentListingTest, AnUnchangedFolderIsReadOnceAndListsAlike) {
    settle();
    EXPECT_FALSE(listing_.remembers(folder_.number()));
    const auto first = list();
    EXPECT_TRUE(listing_.remembers(folder_.number()));
    EXPECT_EQ(list(), first);
    EXPECT_EQ(first.size(), 1200U);
}

TEST_F(RecentListingTest, EveryKindOfChangeIsSeen) {
    const std::function<void()> changes[] = {
        [&] { put("new"); },
        [&] { fs::remove(path_ + "/new"); },
        [&] { fs::rename(path_ + "/file 7", path_ + "/renamed"); },
        [&] { fs::create_directory(path_ + "/folder"); },
        [&] { fs::create_symlink("nowhere", path_ + "/link"); },
    };
    for (const auto& change : changes) {
        settle();
        list();
        ASSERT_TRUE(listing_.remembers(folder_.number()));
        change();
        EXPECT_FALSE(listing_.remembers(folder_.number()));
        auto names = list();
        std::vector<std::string> there;
        for (const auto& entry : fs::directory_iterator(path_))
            there.push_back(entry.path().filename());
        std::ranges::sort(names);
        std::ranges::sort(there);
        EXPECT_EQ(names, there);
    }
}

TEST_F(RecentListingTest, AFolderThatHasJustChangedIsNotRemembered) {
    RecentListing careful(3600);
    ::lseek(folder_.number(), 0, SEEK_SET);
    EXPECT_EQ(careful.namesIn(folder_.number()).value().size(), 1200U);
    EXPECT_FALSE(careful.remembers(folder_.number()));
}

TEST_F(RecentListingTest, AnotherFolderIsAnotherList) {
    settle();
    list();
    const std::string other = path_ + "/../listing-other-" + std::to_string(::getpid());
    fs::create_directory(other);
    const FileDescriptor folder(::open(other.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    EXPECT_TRUE(listing_.namesIn(folder.number()).value().empty());
    fs::remove(other);
}

}
}
