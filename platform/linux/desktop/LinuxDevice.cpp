#include "platform/linux/desktop/LinuxDevice.h"

#include <glib.h>
#include <sys/utsname.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>

namespace vistrel {

namespace {

/// Makes the identifier specific to this application.
constexpr std::string_view kIdentifierKey = "org.vistrel.Vistrel/device-identifier/1";
/// The phone's identifiers have 40 hexadecimal digits.
constexpr std::size_t kIdentifierLength = 40;

struct Freed {
    void operator()(char* text) const { g_free(text); }
};

std::string contentsOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    // Texts in the device tree end with a zero byte.
    std::erase(text, '\0');
    while (!text.empty() && g_ascii_isspace(text.back()))
        text.pop_back();
    return text;
}

std::string valueInOsRelease(const std::string& text, const std::string& key) {
    std::size_t at = 0;
    while (at < text.size()) {
        const auto end = std::min(text.find('\n', at), text.size());
        std::string line = text.substr(at, end - at);
        at = end + 1;
        if (!line.starts_with(key + "="))
            continue;
        line.erase(0, key.size() + 1);
        const std::unique_ptr<char, Freed> unquoted(g_shell_unquote(line.c_str(), nullptr));
        return unquoted ? unquoted.get() : line;
    }
    return {};
}

/// Chassis types of the SMBIOS tables.
std::string kindOfChassis(const std::string& type) {
    constexpr std::array portable{"8", "9", "10", "14", "31"};
    constexpr std::array tablet{"30", "32"};
    if (std::ranges::find(portable, type) != portable.end())
        return "Laptop";
    if (std::ranges::find(tablet, type) != tablet.end())
        return "Tablet";
    return type == "11" ? "Handset" : "Computer";
}

/// The numbers and full stops from the first digit on: "v23.12" is 23.12, "edge" nothing.
std::string versionIn(const std::string& text) {
    const auto begin = std::min(text.find_first_of("0123456789"), text.size());
    return text.substr(begin, text.find_first_not_of("0123456789.", begin) - begin);
}

/// What stands for the version of a system that is released continuously.
std::string kernelVersion() {
    utsname names{};
    return uname(&names) == 0 ? versionIn(names.release) : std::string();
}

std::string architecture() {
    utsname names{};
    return ::uname(&names) == 0 ? names.machine : "unknown";
}

std::string identifierFrom(const std::string& machineID) {
    if (machineID.empty())
        return {};
    const std::unique_ptr<char, Freed> digest(g_compute_hmac_for_data(
        G_CHECKSUM_SHA256, reinterpret_cast<const guchar*>(kIdentifierKey.data()),
        kIdentifierKey.size(), reinterpret_cast<const guchar*>(machineID.data()),
        machineID.size()));
    return std::string(digest.get()).substr(0, kIdentifierLength);
}

std::vector<std::string> localeNames() {
    std::vector<std::string> names;
    for (const char* const* name = g_get_language_names(); *name; ++name)
        names.emplace_back(*name);
    return names;
}

}

std::vector<std::string> languagesFrom(const std::vector<std::string>& localeNames) {
    std::vector<std::string> languages;
    for (const std::string& name : localeNames) {
        std::string code = name.substr(0, name.find_first_of("_.@"));
        if (code == "C" || code == "POSIX" || code.empty())
            code = "en";
        if (std::ranges::find(languages, code) == languages.end())
            languages.push_back(std::move(code));
    }
    if (languages.empty())
        languages.emplace_back("en");
    return languages;
}

LinuxDevice::LinuxDevice(MachineFiles files)
    : files_(std::move(files)) {}

const host::DeviceIdentity& LinuxDevice::identity() {
    if (!std::exchange(read_, true))
        read();
    return identity_;
}

void LinuxDevice::read() {
    const std::string model = contentsOf(files_.deviceTreeModel);
    const std::string product = contentsOf(files_.productName);
    const std::string chassis = contentsOf(files_.chassisType);
    identity_.model = !model.empty() && chassis.empty() ? "Handset" : kindOfChassis(chassis);
    identity_.machine = !model.empty() ? model : product;
    if (identity_.machine.empty())
        identity_.machine = architecture();
    const std::string release = contentsOf(files_.osRelease);
    identity_.systemName = valueInOsRelease(release, "NAME");
    if (identity_.systemName.empty())
        identity_.systemName = "Linux";
    identity_.systemVersion = versionIn(valueInOsRelease(release, "VERSION_ID"));
    if (identity_.systemVersion.empty())
        identity_.systemVersion = kernelVersion();
    identity_.uniqueIdentifier = identifierFrom(contentsOf(files_.machineID));
    identity_.languages = languagesFrom(localeNames());
}

}
