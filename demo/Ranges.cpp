#include "demo/Ranges.h"

#include <algorithm>
#include <ctime>
#include <limits>
#include <optional>

namespace vistrel::demo {
namespace {
struct Range {
    uint64_t first;
    uint64_t last;
};

std::string headerOf(const Answer& answer, std::string_view name) {
    for (const auto& [known, value] : answer.headers)
        if (known == name)
            return value;
    return {};
}

// With or without the time zone's name, which is always GMT.
std::optional<std::time_t> timeFrom(std::string_view date) {
    std::tm parts{};
    if (strptime(std::string(date).c_str(), "%a, %d %b %Y %H:%M:%S", &parts) == nullptr)
        return std::nullopt;
    return timegm(&parts);
}

bool isUnchanged(const Request& request, const Answer& answer) {
    const std::string tag = headerOf(answer, "ETag");
    if (const std::string_view known = request.header("If-None-Match"); !known.empty())
        return !tag.empty() && (known == "*" || known.find(tag) != std::string_view::npos);
    const auto since = timeFrom(request.header("If-Modified-Since"));
    const auto modified = timeFrom(headerOf(answer, "Last-Modified"));
    return since && modified && *modified <= *since;
}

bool isForThisVersion(const Request& request, const Answer& answer) {
    const std::string_view condition = request.header("If-Range");
    return condition.empty() || condition == headerOf(answer, "ETag") ||
           condition == headerOf(answer, "Last-Modified");
}

// Nothing for a header that is not a single range; a range past the end has first >= size.
std::optional<Range> rangeFrom(std::string_view header, uint64_t size) {
    constexpr std::string_view unit = "bytes=";
    if (!header.starts_with(unit) || header.find(',') != std::string_view::npos)
        return std::nullopt;
    const std::string_view range = header.substr(unit.size());
    const size_t dash = range.find('-');
    if (dash == std::string_view::npos)
        return std::nullopt;
    const long long from = numberFrom(range.substr(0, dash), -1);
    const long long to = numberFrom(range.substr(dash + 1), -1);
    if (from < 0 && to < 0)
        return std::nullopt;
    if (from < 0) {
        const auto length = std::min<uint64_t>(static_cast<uint64_t>(to), size);
        return Range{length == 0 ? size : size - length, size - 1};
    }
    const uint64_t last = to < 0 ? std::numeric_limits<uint64_t>::max() : static_cast<uint64_t>(to);
    if (last < static_cast<uint64_t>(from))
        return std::nullopt;
    return Range{static_cast<uint64_t>(from), std::min(last, size - 1)};
}
}

void applyConditionsAndRange(const Request& request, Answer& answer) {
    if (answer.status != 200 || (request.method != "GET" && request.method != "HEAD"))
        return;
    if (isUnchanged(request, answer)) {
        answer.status = 304;
        answer.body = Body();
        return;
    }
    if (headerOf(answer, "Accept-Ranges") != "bytes" || !isForThisVersion(request, answer))
        return;
    const uint64_t size = answer.body.size();
    const std::optional<Range> range = rangeFrom(request.header("Range"), size);
    if (!range)
        return;
    if (range->first >= size) {
        answer = errorAnswer(416, "The range is past the end of the file.");
        answer.headers.emplace_back("Content-Range", "bytes */" + std::to_string(size));
        return;
    }
    answer.status = 206;
    answer.headers.emplace_back("Content-Range", "bytes " + std::to_string(range->first) + "-" +
                                                     std::to_string(range->last) + "/" +
                                                     std::to_string(size));
    answer.body = answer.body.part(range->first, range->last - range->first + 1);
}
}
