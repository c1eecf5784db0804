#include "demo/AdLog.h"

#include "demo/Request.h"

#include <cstdio>

namespace vistrel::demo {
namespace {
struct Meaning {
    std::string_view path; ///< prefix of the address
    std::string_view says;
};

constexpr Meaning meanings[] = {
    {"/afma/", "request-building script"},
    {"/safa/", "request-building script for search"},
    {"/ads/serve", "an ad"},
    {"/ads/track/", "ping: shown"},
    {"/ads/click/", "ping: touched"},
    {"/ads/clicked/", "ping: touched, redirected"},
    {"/ads/event/", "event in an ad's page"},
    {"/ads/land/", "landing page"},
    {"/ads/app/", "web app"},
    {"/ads/frame", "frame of an ad"},
};

std::string_view meaningOf(const Request& request) {
    for (const Meaning& meaning : meanings)
        if (request.path.starts_with(meaning.path))
            return meaning.says;
    return {};
}
}

void AdLog::add(const Request& request) {
    const std::string_view meaning = meaningOf(request);
    if (meaning.empty())
        return;
    const std::chrono::duration<double> since = Clock::now() - began_;
    char seconds[32];
    std::snprintf(seconds, sizeof seconds, "%9.3f s  ", since.count());
    std::string line =
        seconds + std::string(meaning) + "  " + request.method + " " + request.rawPath;
    if (!request.rawQuery.empty())
        line += "?" + request.rawQuery;
    if (const std::string_view since304 = request.header("If-Modified-Since"); !since304.empty())
        line += "  if changed since " + std::string(since304);
    lines_.push_back(std::move(line));
}

std::string AdLog::text() const {
    std::string text;
    for (const std::string& line : lines_)
        text += line + "\n";
    return text;
}

}
