#include "shell/CommandLine.h"

#include "ads/GADServer.h"
#include "platform/foundation/NSURL.h"

#include <charconv>
#include <filesystem>
#include <string_view>

namespace vistrel {

namespace {

constexpr double kLargestScale = 8;

CommandLine refuse(std::string why) {
    CommandLine line;
    line.action = CommandLine::Action::Refuse;
    line.refusal = std::move(why);
    return line;
}

std::optional<double> parseScale(std::string_view text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value > 0 && value <= kLargestScale ? std::optional(value) : std::nullopt;
}

bool isWebAddress(const std::string& text) {
    const auto url = NSURL::URLWithString(text);
    return url && url->isHTTP() && !url->host().empty();
}

/// The address of what is to be opened: a web page, or a file that exists. Empty for others.
std::string addressOf(const std::string& argument) {
    if (isWebAddress(argument))
        return argument;
    const auto url = NSURL::URLWithString(argument);
    const bool isFileAddress = url && url->isFileURL();
    std::error_code error;
    const auto path = std::filesystem::absolute(isFileAddress ? url->path() : argument, error);
    if (error || !std::filesystem::is_regular_file(path, error))
        return {};
    return NSURL::fileURLWithPath(path.lexically_normal().string()).absoluteString();
}

/// Stores the option's value; returns what is wrong with it, or nothing.
std::string storeValue(CommandLine& line, std::string_view option, const std::string& value) {
    if (option == "--site") {
        line.site = value;
        return isWebAddress(value) ? ""
                                   : "--site needs an http or https address, not '" + value + "'";
    }
    if (option == "--ads") {
        line.adServer = value;
        const auto url = NSURL::URLWithString(value);
        return url && isGADServer(*url)
                   ? ""
                   : "--ads needs http://HOST or http://HOST:PORT, not '" + value + "'";
    }
    if (option == "--device-root")
        line.deviceRoot = value;
    else if (option == "--tour")
        line.tourDirectory = value;
    else if (const auto scale = parseScale(value))
        line.scale = *scale;
    else
        return "--scale needs a number above 0 and at most 8, not '" + value + "'";
    return value.empty() ? std::string(option) + " needs a directory" : "";
}

}

CommandLine CommandLine::parse(std::span<char* const> arguments) {
    CommandLine line;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string_view option = arguments[i];
        std::optional<std::string> value;
        if (const auto equals = option.find('=');
            option.starts_with("--") && equals != option.npos) {
            value = std::string(option.substr(equals + 1));
            option = option.substr(0, equals);
        }
        const bool takesValue = option == "--site" || option == "--ads" ||
                                option == "--device-root" || option == "--scale" ||
                                option == "--tour";
        if (takesValue && !value) {
            if (i + 1 == arguments.size())
                return refuse(std::string(option) + " needs a value");
            value = arguments[++i];
        }
        if (takesValue) {
            if (const std::string wrong = storeValue(line, option, *value); !wrong.empty())
                return refuse(wrong);
        } else if (value) {
            return refuse("unexpected argument '" + std::string(arguments[i]) + "'");
        } else if (option == "--browser") {
            line.serveToBrowser = true;
        } else if (option == "--careful") {
            line.careful = true;
        } else if (option == "--help" || option == "-h") {
            line.action = Action::ShowHelp;
            return line;
        } else if (option == "--version") {
            line.action = Action::ShowVersion;
            return line;
        } else if (!option.starts_with('-') && line.openAddress.empty()) {
            line.openAddress = addressOf(std::string(option));
            if (line.openAddress.empty())
                return refuse("cannot open '" + std::string(option) +
                              "', which is neither an http or https address nor a file");
        } else {
            return refuse("unexpected argument '" + std::string(option) + "'");
        }
    }
    return line;
}

std::string CommandLine::helpText() {
    return "Usage: vistrel [OPTION]... [URL|FILE]\n"
           "Browses sites for video and music, downloads it and plays it. Opens the page at URL, "
           "or\n"
           "offers to copy FILE into the downloads folder.\n"
           "\n"
           "  --site URL         the content site (default: from the settings file)\n"
           "  --ads URL          the ad server (default: from the settings file)\n"
           "  --device-root DIR  folder of the device's files\n"
           "                     (default: $XDG_DATA_HOME/vistrel/device)\n"
           "  --scale N          window pixels per point, above 0 and at most 8\n"
           "  --tour DIR         walk through the main job, save a picture of each step in DIR\n"
           "  --careful          careful manners: see README.md\n"
           "  --browser          show the window in a web browser, without a display\n"
           "  --help             print this and exit\n"
           "  --version          print the version and exit\n"
           "\n"
           "Settings: $XDG_CONFIG_HOME/vistrel/vistrel.ini; see vistrel(1).\n";
}

}
