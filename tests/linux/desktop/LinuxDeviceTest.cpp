#include "platform/linux/desktop/LinuxDevice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdlib.h>
#include <sys/utsname.h>

#include <filesystem>
#include <fstream>

namespace vistrel {
namespace {

using ::testing::ElementsAre;

class LinuxDeviceTest : public ::testing::Test {
protected:
    LinuxDeviceTest() {
        std::string pattern = (std::filesystem::temp_directory_path() / "machine-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
    }
    ~LinuxDeviceTest() override { std::filesystem::remove_all(folder_); }

    std::string file(const std::string& name, const std::string& text) const {
        std::ofstream(folder_ + "/" + name, std::ios::binary) << text;
        return folder_ + "/" + name;
    }
    MachineFiles nothing() const {
        const std::string none = folder_ + "/none";
        return {none, none, none, none, none};
    }

    std::string folder_;
};

TEST_F(LinuxDeviceTest, ReadsAComputersTables) {
    MachineFiles files = nothing();
    files.osRelease = file("os-release", "PRETTY_NAME=\"Debian 12\"\nNAME=\"Debian GNU/Linux\"\n"
                                         "VERSION_ID=\"12\"\n");
    files.productName = file("product", "Vendor Book 7\n");
    files.chassisType = file("chassis", "10\n");
    LinuxDevice device(files);
    EXPECT_EQ(device.identity().model, "Laptop");
    EXPECT_EQ(device.identity().machine, "Vendor Book 7");
    EXPECT_EQ(device.identity().systemName, "Debian GNU/Linux");
    EXPECT_EQ(device.identity().systemVersion, "12");
}

TEST_F(LinuxDeviceTest, ASystemWithoutReleasesHasItsKernelsVersion) {
    const auto versionOf = [this](const std::string& release) {
        MachineFiles files = nothing();
        files.osRelease = file("os-release", release);
        return LinuxDevice(files).identity().systemVersion;
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

TEST_F(LinuxDeviceTest, ReadsADeviceTreesModel) {
    MachineFiles files = nothing();
    files.deviceTreeModel = file("model", std::string("Pocket Phone 2\0", 15));
    LinuxDevice device(files);
    EXPECT_EQ(device.identity().model, "Handset");
    EXPECT_EQ(device.identity().machine, "Pocket Phone 2");
}

TEST_F(LinuxDeviceTest, AMachineThatSaysNothingStillHasAnIdentity) {
    LinuxDevice device(nothing());
    EXPECT_EQ(device.identity().systemName, "Linux");
    EXPECT_FALSE(device.identity().machine.empty());
    EXPECT_EQ(device.identity().uniqueIdentifier, "");
    EXPECT_FALSE(device.identity().languages.empty());
}

TEST_F(LinuxDeviceTest, TheIdentifierIsAKeyedDigestOfTheMachines) {
    MachineFiles files = nothing();
    files.machineID = file("id", "0123456789abcdef0123456789abcdef\n");
    LinuxDevice device(files);
    // printf %s 0123456789abcdef0123456789abcdef |
    //     openssl dgst -sha256 -hmac org.vistrel.Vistrel/device-identifier/1
    EXPECT_EQ(device.identity().uniqueIdentifier, "f16177fad3f1fafbbdcdce81f0d2b9bbbf82cde1");
}

TEST_F(LinuxDeviceTest, LanguagesAreCodesInTheLocalesOrder) {
    EXPECT_THAT(languagesFrom({"de_AT.UTF-8", "de_AT", "de.UTF-8", "de", "fr", "C"}),
                ElementsAre("de", "fr", "en"));
    EXPECT_THAT(languagesFrom({"C"}), ElementsAre("en"));
    EXPECT_THAT(languagesFrom({}), ElementsAre("en"));
}

}
}
