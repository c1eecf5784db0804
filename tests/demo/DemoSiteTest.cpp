#include "settings/Settings.h"
#include "tests/demo/DemoSiteProcess.h"
#include "tests/demo/MediaFiles.h"
#include "tests/demo/WireClient.h"

#include <gmock/gmock.h>

#include <sstream>

namespace vistrel::demo {
namespace {

using testing::HasSubstr;

TEST(DemoSite, EveryAddressOfTheApplicationLeadsToAPage) {
    DemoSiteProcess list({"--list"});
    std::istringstream lines(list.firstLine() + "\n" + list.restOfOutput());
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count) {
        const std::string address = line.substr(0, line.find_first_of("\t#"));
        const bool redirects = address.starts_with("/r/") && address != "/r/";
        const int expected = address == "/vip/members-only.mp4" ? 4 : redirects ? 3 : 2;
        EXPECT_EQ(ask(address).status / 100, expected) << address;
    }
    EXPECT_GT(count, 146 + 29 + 8);
    for (const PartnerSite& site : kPartnerSites)
        EXPECT_THAT(ask(site.address.defaultValue).body, HasSubstr(site.title.defaultValue));
    EXPECT_EQ(ask("/nowhere").status, 404);
}

/// What the tests and benchmarks of transfers rely on.
TEST(DemoSite, AFileIsSentAsBadlyAsAskedFor) {
    const std::string bytes = mediaBytes("short-signal.mp3");
    const size_t size = bytes.size();
    struct Case {
        const char* query;
        std::string announced;
        size_t received;
        Reply::End end;
    };
    const std::vector<Case> cases = {
        {"", std::to_string(size), size, Reply::End::Closed},
        {"truncate=1000", std::to_string(size), 1000, Reply::End::Closed},
        {"nolength", "", size, Reply::End::Closed},
        {"nolength&truncate=1000", "", 1000, Reply::End::Closed},
        {"wronglength=500", std::to_string(size + 500), size, Reply::End::Closed},
        {"wronglength=-500", std::to_string(size - 500), size, Reply::End::Closed},
        {"more=5000", std::to_string(size), size + 5000, Reply::End::Closed},
        {"reset=1000", std::to_string(size), 1000, Reply::End::Reset},
        {"stall=1000", std::to_string(size), 1000, Reply::End::Silence},
        {"slow=128", std::to_string(size), size, Reply::End::Closed},
    };
    for (const Case& one : cases) {
        const Reply reply =
            ask(Query{.address = std::string("/media/short-signal.mp3?") + one.query,
                      .silenceMilliseconds = 1000});
        EXPECT_EQ(reply.status, 200) << one.query;
        EXPECT_EQ(reply.header("Content-Type"), "audio/mpeg") << one.query;
        EXPECT_EQ(reply.header("Content-Length"), one.announced) << one.query;
        EXPECT_EQ(reply.body.size(), one.received) << one.query;
        EXPECT_TRUE(reply.body.substr(0, size) == bytes.substr(0, one.received)) << one.query;
        EXPECT_EQ(reply.end, one.end) << one.query;
    }
}

}
}
