#include "ads/Network/GADCachedFile.h"

#include "platform/host/Host.h"
#include "platform/linux/files/DeviceFiles.h"
#include "platform/linux/loop/GLibEventLoop.h"
#include "platform/linux/network/CurlNetwork.h"
#include "tests/linux/MainLoop.h"
#include "tests/linux/network/LoopbackServer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>

namespace vistrel {
namespace {

class RecordingDelegate : public GADCachedFileDelegate {
public:
    void cachedFileDownloadDidEnd(GADCachedFile&) override { events.emplace_back("end"); }
    void cachedFileDownloadDidFail(GADCachedFile&, const NSError* error) override {
        events.push_back(error ? "fail " + std::to_string(error->code()) : "fail");
    }
    std::optional<NSError> cachedFileShouldRedirectToURL(GADCachedFile&, const NSURL&) override {
        return std::nullopt;
    }

    std::vector<std::string> events;
};

/// Cached files over real connections to this machine and a real folder.
class CachedFileOverLoopback : public ::testing::Test {
protected:
    CachedFileOverLoopback() {
        host_.loop = &loop_;
        host_.files = &files_;
        host_.network = &network_;
        host::install(&host_);
    }
    ~CachedFileOverLoopback() override {
        host::install(nullptr);
        std::filesystem::remove_all(root_);
    }

    void fetch(GADCachedFile& file) {
        delegate_->events.clear();
        file.validate();
        const bool isOver = turnUntil([&] { return !delegate_->events.empty(); });
        file.cancel();
        ASSERT_TRUE(isOver);
    }
    std::shared_ptr<GADCachedFile> fileAt(const std::string& path) {
        return GADCachedFile::withDelegateURL(delegate_, *NSURL::URLWithString(server_.url(path)));
    }
    struct stat statOf(GADCachedFile& file) {
        struct stat status {};
        EXPECT_EQ(::stat((root_ + file.filePath()).c_str(), &status), 0);
        return status;
    }

    static std::string temporaryFolder() {
        std::string pattern = std::filesystem::temp_directory_path() / "vistrel-caches-XXXXXX";
        return ::mkdtemp(pattern.data());
    }

    std::string root_ = temporaryFolder();
    GLibEventLoop loop_;
    DeviceFiles files_{root_};
    CurlNetwork network_{loop_};
    LoopbackServer server_;
    host::Host host_;
    std::shared_ptr<RecordingDelegate> delegate_ = std::make_shared<RecordingDelegate>();
};

TEST_F(CachedFileOverLoopback, AFetchedCopyIsRevalidatedByItsTime) {
    const auto file = fileAt("/script");
    server_.at("/script", "HTTP/1.1 200 OK\r\nLast-Modified: Sat, 01 Jan 2011 12:00:00 GMT\r\n"
                          "Content-Length: 6\r\n\r\nvar a;");
    fetch(*file);
    EXPECT_THAT(delegate_->events, ::testing::ElementsAre("end"));
    EXPECT_EQ(statOf(*file).st_mtime, 1293883200);
    EXPECT_EQ(statOf(*file).st_atime, 1293883200);
    EXPECT_EQ(file->content(), "var a;");
    EXPECT_THAT(server_.requests().back(),
                ::testing::Not(::testing::HasSubstr("If-Modified-Since")));

    server_.at("/script", "HTTP/1.1 304 Not Modified\r\n\r\n");
    fetch(*file);
    EXPECT_THAT(server_.requests().back(),
                ::testing::HasSubstr("If-Modified-Since: Sat, 01 Jan 2011 12:00:00\r\n"));
    EXPECT_THAT(delegate_->events, ::testing::ElementsAre("end"));
    EXPECT_EQ(file->httpStatusCode(), 304);
    EXPECT_EQ(file->content(), "var a;");

    server_.at("/script", "HTTP/1.1 200 OK\r\nLast-Modified: Sun, 02 Jan 2011 12:00:00 GMT\r\n"
                          "Content-Length: 6\r\n\r\nvar b;");
    fetch(*file);
    EXPECT_EQ(file->content(), "var b;");
    EXPECT_EQ(statOf(*file).st_mtime, 1293883200 + 86400);
    EXPECT_EQ(server_.requests().size(), 3U);
}

}
}
