#include "demo/Options.h"

#include "demo/Text.h"

namespace vistrel::demo {
namespace {
bool takesValue(std::string_view option) {
    return option == "--port" || option == "--media" || option == "--print-address" ||
           option == "--own-ad";
}

bool setValue(Options& options, std::string_view option, const std::string& value) {
    if (option == "--media") {
        options.mediaFolder = value;
    } else if (option == "--own-ad") {
        options.ownAdFile = value;
    } else if (option == "--print-address") {
        options.addressFile = value;
    } else {
        const long long port = numberFrom(value, -1);
        if (port < 0 || port > 65535)
            return false;
        options.port = static_cast<unsigned>(port);
    }
    return !value.empty();
}

bool setFlag(Options& options, std::string_view option) {
    if (option == "--exit-with-parent")
        options.exitWithParent = true;
    else if (option == "--list")
        options.list = true;
    else if (option == "--help")
        options.help = true;
    else
        return false;
    return true;
}
}

std::optional<Options> parseOptions(std::span<char* const> arguments, std::string& complaint) {
    Options options;
    options.mediaFolder = DEMO_MEDIA_FOLDER;
    for (size_t index = 0; index < arguments.size(); ++index) {
        const std::string_view option = arguments[index];
        if (takesValue(option)) {
            const bool given = index + 1 < arguments.size();
            if (!given || !setValue(options, option, arguments[++index])) {
                complaint = std::string(option) + " needs a valid value";
                return std::nullopt;
            }
        } else if (!setFlag(options, option)) {
            complaint = "unknown option " + std::string(option);
            return std::nullopt;
        }
    }
    return options;
}

std::string helpText() {
    return R"(Usage: vistrel-demo-site [OPTION...]
Serves the content site, the partner sites and their media on 127.0.0.1, and
prints its address in one line once it answers.

  --port N              port to listen on; 0, the default, takes a free one
  --media DIR           folder with the media files
  --print-address FILE  write the address to FILE as well
  --own-ad FILE         page to serve as the ad "own", read at each request
  --exit-with-parent    end when the process that started it ends, or when the
                        pipe on standard input is closed
  --list                print every address served, with its title, and exit
  --help                print this and exit
)";
}
}
