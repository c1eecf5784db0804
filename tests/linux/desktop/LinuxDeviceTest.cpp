#include "platform/linux/desktop/LinuxDevice.h"

#include "tests/support/TemporaryFolder.h"

#include <sys/utsname.h>

namespace vistrel {
namespace {

/// Contents of a machine's files; those that are empty do not exist.
struct Machine {
    std::string machineID{};
    std::string osRelease{};
    std::string deviceTreeModel{};
    std::string productName{};
    std::string chassisType{};
};

host::DeviceIdentity identityOf(const Machine& machine) {
    const support::TemporaryFolder folder;
    const auto file = [&](const char* name, const std::string& text) {
        return text.empty() ? folder.path(name) : folder.put(name, text);
    };
    return LinuxDevice({file("id", machine.machineID), file("os-release", machine.osRelease),
                        file("model", machine.deviceTreeModel),
                        file("product", machine.productName), file("chassis", machine.chassisType)})
        .identity();
}

TEST(LinuxDeviceTest, ComputersAndDeviceTreesAreDescribedAndSilentMachinesHaveAnIdentity) {
    const auto computer = identityOf({.osRelease = "PRETTY_NAME=\"Debian 12\"\n"
                                                   "NAME=\"Debian GNU/Linux\"\nVERSION_ID=\"12\"\n",
                                      .productName = "Vendor Book 7\n",
                                      .chassisType = "10\n"});
    EXPECT_EQ(computer.model, "Laptop");
    EXPECT_EQ(computer.machine, "Vendor Book 7");
    EXPECT_EQ(computer.systemName, "Debian GNU/Linux");
    EXPECT_EQ(computer.systemVersion, "12");

    const auto phone = identityOf({.deviceTreeModel = std::string("Pocket Phone 2\0", 15)});
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
        return identityOf({.osRelease = release}).systemVersion;
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
    EXPECT_EQ(identityOf({.machineID = "0123456789abcdef0123456789abcdef\n"}).uniqueIdentifier,
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
