#include "platform/linux/files/DeviceFiles.h"

#include "platform/linux/files/DeviceRoot.h"
#include "platform/linux/files/NewFile.h"
#include "platform/linux/files/StrayFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vistrel {
namespace {

namespace fs = std::filesystem;
using support::contentsOf;

void put(const std::string& path, const std::string& text = {}) {
    std::ofstream(path, std::ios::binary) << text;
}

std::vector<std::string> names(const std::string& folder) {
    std::vector<std::string> found;
    for (const auto& entry : fs::directory_iterator(folder))
        found.push_back(entry.path().filename());
    return found;
}

struct stat attributesOf(const std::string& path) {
    struct stat attributes {};
    EXPECT_EQ(::lstat(path.c_str(), &attributes), 0) << path;
    return attributes;
}

int codeOf(const host::Status& status) {
    return status ? 0 : status.failure().code;
}

std::span<const std::byte> bytesOf(const std::string& text) {
    return std::as_bytes(std::span(text));
}

/// Files cannot grow beyond 100,000 bytes while this lives.
class FullDisk {
public:
    FullDisk() {
        ::getrlimit(RLIMIT_FSIZE, &before_);
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit small{100'000, before_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &before_); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit before_{};
};

/// Each test runs with both ways of walking paths.
class DeviceFilesTest : public ::testing::TestWithParam<PathResolver::Walk> {
protected:
    std::string at(const std::string& path) const { return root_ + path; }
    /// Next to the device; a secret is in it.
    std::string folderOutside() const {
        fs::create_directory(base_.path("outside"));
        base_.put("outside/secret", "secret");
        return base_.path("outside");
    }

    support::TemporaryFolder base_;
    std::string root_ = base_.path("device");
    bool made_ = prepareDeviceRoot(root_).ok();
    DeviceFiles files_{root_, GetParam()};
    /// Another file system, and the machine's root as the device's: tests may not mount.
    support::TemporaryFolder inbox_{"/dev/shm"};
    DeviceFiles whole_{"/", GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Walks, DeviceFilesTest,
                         ::testing::Values(PathResolver::Walk::ByKernel,
                                           PathResolver::Walk::ByComponents));

TEST_P(DeviceFilesTest, APreparedDeviceHasTheShippedFoldersButNoDownloads) {
    ASSERT_TRUE(made_);
    EXPECT_TRUE(files_.info("/var/mobile/Library/Caches").value().isDirectory);
    EXPECT_TRUE(files_.info("/var/root/Library").value().isDirectory);
    EXPECT_EQ(files_.info("/var/mobile/Library/Downloads").failure().code, ENOENT);
    put(at("/var/mobile/Media/kept"), "kept");
    EXPECT_TRUE(prepareDeviceRoot(root_));
    EXPECT_EQ(contentsOf(at("/var/mobile/Media/kept")), "kept");
}

TEST_P(DeviceFilesTest, ListsNamesAsBytesInTheFoldersOrder) {
    for (const char* name : {"b.mp4", "a.mp3", ".hidden", "bad\xff.mp4"})
        put(at("/var/mobile/Media/") + name);
    fs::create_directory(at("/var/mobile/Media/folder.mp4"));
    const auto order = names(at("/var/mobile/Media"));
    EXPECT_EQ(files_.list("/var/mobile/Media/").value(), order);
    EXPECT_EQ(order.size(), 5U);
    EXPECT_EQ(files_.list("/nowhere").failure().code, ENOENT);
    EXPECT_EQ(files_.list("/var/mobile/Media/b.mp4").failure().code, ENOTDIR);
}

TEST_P(DeviceFilesTest, NothingIsCreatedOrReadThroughALinkThatLeadsOut) {
    const std::string outside = folderOutside();
    fs::create_directory_symlink(outside, at("/var/mobile/Library/Downloads"));
    fs::create_directory_symlink("../../../../../outside", at("/var/mobile/Media/relative"));
    fs::create_symlink(outside + "/secret", at("/var/mobile/Media/link.mp4"));
    for (const char* path :
         {"/var/mobile/Library/Downloads/x.mp4", "/var/mobile/Media/relative/x.mp4",
          "/../../outside/x.mp4", "/var/../../../outside/x.mp4"}) {
        SCOPED_TRACE(path);
        (void)files_.createFile(path);
        (void)files_.createDirectory(path, true);
        (void)files_.writeAtomically(path, bytesOf("x"));
        EXPECT_FALSE(files_.openForUpdating(path));
    }
    EXPECT_FALSE(files_.read("/var/mobile/Library/Downloads/secret"));
    EXPECT_FALSE(files_.read("/var/mobile/Media/link.mp4"));
    EXPECT_FALSE(files_.openForUpdating("/var/mobile/Media/link.mp4"));
    EXPECT_THAT(names(outside), ElementsAre("secret"));
    EXPECT_EQ(contentsOf(outside + "/secret"), "secret");
}

TEST_P(DeviceFilesTest, ACreatedFileReplacesWhateverHadItsName) {
    const std::string path = "/var/mobile/Media/clip.mp4";
    put(at("/var/mobile/Media/target"), "target");
    put(at(path), "an old, long and executable content");
    ::chmod(at(path).c_str(), 0755);
    fs::create_hard_link(at(path), at("/var/mobile/Media/other-name"));
    ASSERT_TRUE(files_.createFile(path));
    EXPECT_EQ(attributesOf(at(path)).st_size, 0);
    EXPECT_EQ(attributesOf(at(path)).st_mode & 0111U, 0U) << "never executable";
    EXPECT_EQ(contentsOf(at("/var/mobile/Media/other-name")),
              "an old, long and executable content");

    fs::remove(at(path));
    fs::create_symlink("target", at(path));
    ASSERT_TRUE(files_.createFile(path));
    for (const std::string text : {"one ", "two"}) {
        auto stream = files_.openForUpdating(path);
        ASSERT_TRUE(stream);
        EXPECT_EQ(stream.value()->seekToEnd().value(), text == "two" ? 4 : 0);
        ASSERT_TRUE(stream.value()->write(bytesOf(text)));
        EXPECT_TRUE(stream.value()->close());
    }
    EXPECT_EQ(contentsOf(at("/var/mobile/Media/target")), "target");
    EXPECT_EQ(contentsOf(at(path)), "one two");

    fs::create_directory(at("/var/mobile/Media/folder.mp4"));
    EXPECT_EQ(codeOf(files_.createFile("/var/mobile/Media/folder.mp4")), EISDIR);
    EXPECT_EQ(codeOf(files_.createFile("/var/mobile/Missing/a.mp4")), ENOENT);
    for (const char* none : {"/", "/var/..", "/var/.", ""})
        EXPECT_NE(codeOf(files_.createFile(none)), 0) << none;
    EXPECT_THAT(names(at("/var/mobile/Media")),
                UnorderedElementsAre("clip.mp4", "other-name", "target", "folder.mp4"))
        << "no temporary file stays behind";
}

TEST_P(DeviceFilesTest, OnlyRegularFilesAreOpenedAndAPipeDoesNotBlock) {
    ASSERT_EQ(::mkfifo(at("/tmp/pipe").c_str(), 0600), 0);
    EXPECT_FALSE(files_.openForUpdating("/tmp/pipe"));
    EXPECT_FALSE(files_.read("/tmp/pipe"));
    EXPECT_EQ(files_.read("/tmp").failure().code, EISDIR);
    EXPECT_EQ(files_.openForUpdating("/tmp/none").failure().code, ENOENT);
}

TEST_P(DeviceFilesTest, AFullDiskIsReportedByTheWriteThatDidNotFit) {
    ASSERT_TRUE(files_.createFile("/tmp/film"));
    auto stream = files_.openForUpdating("/tmp/film");
    ASSERT_TRUE(stream);
    const std::string chunk(60'000, 'x');
    const FullDisk disk;
    EXPECT_TRUE(stream.value()->write(bytesOf(chunk)));
    EXPECT_EQ(codeOf(stream.value()->write(bytesOf(chunk))), EFBIG);
}

TEST_P(DeviceFilesTest, AMoveNeverReplacesAFile) {
    put(at("/tmp/a.mp4"), "mine");
    put(at("/var/mobile/Media/a.mp4"), "yours");
    EXPECT_EQ(codeOf(files_.move("/tmp/a.mp4", "/var/mobile/Media/a.mp4")), EEXIST);
    EXPECT_EQ(contentsOf(at("/tmp/a.mp4")), "mine");
    EXPECT_EQ(contentsOf(at("/var/mobile/Media/a.mp4")), "yours");
    EXPECT_TRUE(files_.move("/tmp/a.mp4", "/var/mobile/Media/b.mp4"));
    EXPECT_EQ(contentsOf(at("/var/mobile/Media/b.mp4")), "mine");
    EXPECT_EQ(codeOf(files_.move("/tmp/a.mp4", "/var/mobile/Media/c.mp4")), ENOENT);
}

TEST_P(DeviceFilesTest, RemovesFoldersWithTheirContentsAndLinksWithoutTheirTargets) {
    const std::string outside = folderOutside();
    fs::create_directories(at("/tmp/folder.mp4/deep/deeper"));
    put(at("/tmp/folder.mp4/deep/file"));
    fs::create_directory_symlink(outside, at("/tmp/folder.mp4/link"));
    EXPECT_TRUE(files_.remove("/tmp/folder.mp4/"));
    EXPECT_THAT(names(at("/tmp")), IsEmpty());
    EXPECT_THAT(names(outside), ElementsAre("secret"));
    EXPECT_EQ(codeOf(files_.remove("/tmp/none")), ENOENT);
    EXPECT_NE(codeOf(files_.remove("/")), 0);
    EXPECT_NE(codeOf(files_.remove("/tmp/..")), 0);
    EXPECT_TRUE(files_.info("/var").value().isDirectory);
}

TEST_P(DeviceFilesTest, WritesAtomicallyReadsBackAndSetsTimes) {
    const std::string folder = "/var/mobile/Library/Caches/new/host";
    const std::string path = folder + "/page";
    EXPECT_EQ(codeOf(files_.writeAtomically(path, bytesOf("x"))), ENOENT);
    EXPECT_EQ(codeOf(files_.createDirectory(folder, false)), ENOENT);
    EXPECT_TRUE(files_.createDirectory(folder, true));
    EXPECT_TRUE(files_.createDirectory(folder, true));
    EXPECT_EQ(codeOf(files_.createDirectory(folder, false)), EEXIST);
    EXPECT_TRUE(files_.info(folder).value().isDirectory);
    const std::string text("zero \0 and more", 15);
    ASSERT_TRUE(files_.writeAtomically(path, bytesOf("old")));
    ASSERT_TRUE(files_.writeAtomically(path, bytesOf(text)));
    EXPECT_TRUE(std::ranges::equal(files_.read(path).value(), bytesOf(text)));
    ASSERT_TRUE(files_.setTimes(path, 1'234'567'890));
    EXPECT_EQ(files_.info(path).value().modificationTime, 1'234'567'890);
    EXPECT_EQ(files_.info(path).value().size, 15);
    EXPECT_EQ(files_.machinePath(path), at(path));
    EXPECT_EQ(files_.machinePath("/../../etc/passwd"), at("/etc/passwd"));
}

TEST_P(DeviceFilesTest, AMoveFromAnotherFileSystemIsWholeAndKeepsTheTime) {
    ASSERT_NE(attributesOf(root_).st_dev, attributesOf(inbox_.path()).st_dev)
        << "/dev/shm and the temporary folder must differ";
    std::string body(3'000'000, 'v');
    body[2'000'000] = '\0';
    const std::string source = inbox_.put("clip.mp4", body);
    const std::string target = at("/var/mobile/Media/clip.mp4");
    ::chmod(source.c_str(), 0755);
    const timespec times[2] = {{1'200'000'000, 0}, {1'200'000'000, 0}};
    ::utimensat(AT_FDCWD, source.c_str(), times, 0);
    EXPECT_TRUE(whole_.move(source, target));
    EXPECT_FALSE(fs::exists(source));
    EXPECT_EQ(contentsOf(target), body);
    EXPECT_EQ(attributesOf(target).st_mtime, 1'200'000'000);
    EXPECT_EQ(attributesOf(target).st_mode & 0111U, 0U);

    put(source, "another");
    EXPECT_EQ(codeOf(whole_.move(source, target)), EEXIST);
    EXPECT_EQ(contentsOf(source), "another");
    EXPECT_EQ(contentsOf(target), body);
    EXPECT_THAT(names(at("/var/mobile/Media")), ElementsAre("clip.mp4"));
}

TEST_P(DeviceFilesTest, AMoveThatDoesNotFitLeavesTheFileWhole) {
    const std::string source = inbox_.put("clip.mp4", std::string(300'000, 'v'));
    {
        const FullDisk disk;
        EXPECT_EQ(codeOf(whole_.move(source, at("/var/mobile/Media/clip.mp4"))), EFBIG);
    }
    EXPECT_EQ(fs::file_size(source), 300'000U);
    EXPECT_THAT(names(at("/var/mobile/Media")), IsEmpty());
}

TEST_P(DeviceFilesTest, AFolderMovesToAnotherFileSystemWithItsContents) {
    const std::string source = inbox_.path("series.mp4");
    fs::create_directories(source + "/one/two");
    put(source + "/one/two/a", "a");
    fs::create_symlink("b", source + "/link");
    EXPECT_TRUE(whole_.move(source, at("/var/mobile/Media/series.mp4")));
    EXPECT_FALSE(fs::exists(source));
    EXPECT_EQ(contentsOf(at("/var/mobile/Media/series.mp4/one/two/a")), "a");
    EXPECT_EQ(fs::read_symlink(at("/var/mobile/Media/series.mp4/link")), "b");
}

TEST(StrayFiles, WhatKilledProcessesLeftIsRemovedAndNothingElse) {
    const support::TemporaryFolder temporary;
    const std::string& root = temporary.path();
    const std::string downloads = temporary.path("var/mobile/Library/Downloads");
    fs::create_directories(downloads + "/.vistrel-12-1/inside");
    put(downloads + "/.vistrel-12-1/inside/film.mp4", "film");
    const std::string own = (testing::Message() << ".vistrel-" << ::getpid() << "-1").GetString();
    for (const std::string& kept : {own, std::string(".vistrel-"), std::string(".vistrel-notes"),
                                    std::string(".vistrel-1-x"), std::string("a.vistrel-1-1")})
        put(fs::path(downloads) / kept);
    // A process that is killed while it writes.
    const pid_t child = ::fork();
    if (child == 0) {
        const FileDescriptor folder(::open(root.c_str(), O_RDONLY | O_DIRECTORY));
        const auto file = NewFile::createIn(folder.number());
        ::kill(::getpid(), SIGKILL);
    }
    ::waitpid(child, nullptr, 0);
    ASSERT_EQ(names(root).size(), 2U);

    removeStrayFiles(root);
    EXPECT_THAT(names(root), ElementsAre("var"));
    EXPECT_THAT(names(downloads), UnorderedElementsAre(own, ".vistrel-", ".vistrel-notes",
                                                       ".vistrel-1-x", "a.vistrel-1-1"));
}

}
}
