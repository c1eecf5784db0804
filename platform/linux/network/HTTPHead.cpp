#include "platform/linux/network/HTTPHead.h"

#include "platform/foundation/HeaderFieldNames.h"
#include "platform/foundation/Trimmed.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace vistrel {

namespace {

constexpr int kMostInterimAnswers = 16;
constexpr std::size_t kMostBytes = std::size_t{256} * 1024;
constexpr std::size_t kMostFields = 1000;

/// "HTTP/1.1 200 OK", "HTTP/2 200": 0 when there is no number.
int statusIn(std::string_view line) {
    int status = 0;
    line.remove_prefix(std::min(line.find(' '), line.size()));
    line = trimmed(line);
    std::from_chars(line.data(), line.data() + line.size(), status);
    return status;
}

}

bool HTTPHead::take(std::string_view line) {
    bytes_ += line.size();
    if (complete_)
        return bytes_ <= kMostBytes;
    line = trimmed(line);
    if (line.empty())
        return endOfFields();
    if (line.starts_with("HTTP/")) {
        status_ = statusIn(line);
        fields_.clear();
    } else if (const auto colon = line.find(':'); colon != std::string_view::npos) {
        fields_.emplace_back(trimmed(line.substr(0, colon)), trimmed(line.substr(colon + 1)));
    }
    return bytes_ <= kMostBytes && fields_.size() <= kMostFields;
}

bool HTTPHead::endOfFields() {
    complete_ = status_ >= 200;
    return complete_ || ++interimAnswers_ <= kMostInterimAnswers;
}

std::string HTTPHead::field(std::string_view name) const {
    return valueOfHeaderField(fields_, name);
}

std::string HTTPHead::mimeType() const {
    const std::string type = field("Content-Type");
    return std::string(trimmed(type.substr(0, type.find_first_of(";,"))));
}

std::optional<std::string> HTTPHead::location() const {
    const bool redirects =
        status_ == 301 || status_ == 302 || status_ == 303 || status_ == 307 || status_ == 308;
    auto locations = valuesOfHeaderField(fields_, "Location");
    if (!redirects || locations.empty() || locations.front().empty())
        return std::nullopt;
    return std::move(locations.front());
}

}
