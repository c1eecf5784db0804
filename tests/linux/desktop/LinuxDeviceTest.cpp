#include "platform/linux/desktop/LinuxDevice.h"

#include "tests/support/TemporaryFolder.h"

#include <sys/utsname.h>

namespace vistrel {
namespace {

/// Of a machine that has these files.
host::DeviceIdentity identityOf(const std::map<std::string, std::string>& files) {
    const support::TemporaryFolder folder;
    for (const auto& [name, text] : files)
        folder.put(name, text);
    return LinuxDevice({folder.path("id"), folder.path("os-release"), folder.path("model"),
                        folder.path("product"), folder.path("chassis")})
        .identity();
}

TEST(LinuxDeviceTest, ComputersAndDeviceTreesAreDescribedAndSilentMachinesHaveAnIdentity) {
    const auto computer = identityOf({{"os-release", "PRETTY_NAME=\"Debian 12\"\n"
                                                     "NAME=\"Debian GNU/Linux\"\n"
                                                     "VERSION_ID=\"12\"\n"},
                                      {"product", "Vendor Book 7\n"},
                                      {"chassis", "10\n"}});
    EXPECT_EQ(computer.model, "Laptop");
    EXPECT_EQ(computer.machine, "Vendor Book 7");
    EXPECT_EQ(computer.systemName, "Debian GNU/Linux");
    EXPECT_EQ(computer.systemVersion, "12");

    const auto phone = identityOf({{"model", std::string("Pocket Phone 2\0", 15)}});
    EXPECT_EQ(phone.model, "Handset");
    EXPECT_EQ(phone.machine, "Pocket Phone 2");

    const auto silent = identityOf({});
    EXPECT_EQ(silent.systemName, "Linux");
    EXPECT_FALSE(silent.machine.empty());
    EXPECT_EQ(silent.uniqueIdentifier, "");
    EXPECT_FALSE(silent.languages.empty());
}

TEST(LinuxDeviceTest, ASystemWithoutReleasesHasItsKernelsVersion) {
    const auto versionOf = [](const std::string& release) {
        return identityOf({{"os-release", release}}).systemVersion;
    };
    EXPECT_EQ(versionOf("VERSION_ID=v23.12\n"), "23.12");
    EXPECT_EQ(versionOf("VERSION_ID=\"23.05.1-rc2\"\n"), "23.05.1");
    utsname kernel{};
    ASSERT_EQ(uname(&kernel), 0);
    for (const char* release : {"NAME=Rolling\n", "VERSION_ID=edge\n", "VERSION_ID=\n", ""}) {
        const std::string version = versionOf(release);
        EXPECT_THAT(version, testing::MatchesRegex("[0-9]+[0-9.]*")) << release;
        EXPECT_THAT(kernel.release, testing::StartsWith(version)) << release;
    }
}

TEST(LinuxDeviceTest, TheIdentifierIsAKeyedDigestOfTheMachines) {
    // printf %s 0123456789abcdef0123456789abcdef |
    //     openssl dgst -sha256 -hmac org.vistrel.Vistrel/device-identifier/1
    EXPECT_EQ(identityOf({{"id", "0123456789abcdef0123456789abcdef\n"}}).uniqueIdentifier,
              "f16177fad3f1fafbbdcdce81f0d2b9bbbf82cde1");
}

TEST(LinuxDeviceTest, LanguagesAreCodesInTheLocalesOrder) {
    EXPECT_THAT(languagesFrom({"de_AT.UTF-8", "de_AT", "de.UTF-8", "de", "fr", "C"}),
                ElementsAre("de", "fr", "en"));
    EXPECT_THAT(languagesFrom({"C"}), ElementsAre("en"));
    EXPECT_THAT(languagesFrom({}), ElementsAre("en"));
}

}
}
