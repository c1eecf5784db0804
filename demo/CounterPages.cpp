#include "demo/Pages.h"
#include "demo/Site.h"

namespace vistrel::demo {
namespace {
Answer countOf(const Site& site, const std::string& method, const std::string& path) {
    const auto found = site.hits.find({method, path});
    return textAnswer(std::to_string(found == site.hits.end() ? 0U : found->second) + "\n");
}
}

Answer postCounter(Site& site, const Request& /*request*/) {
    return countOf(site, "POST", "/vip/fetch");
}

Answer hitCounter(Site& site, const Request& request) {
    return countOf(site, request.parameter("method").value_or("GET"),
                   request.parameter("path").value_or("/"));
}

Answer echo(Site& /*site*/, const Request& request) {
    std::string lines = request.method + " " + request.rawPath + "\n";
    for (const auto& [name, value] : request.headers)
        lines.append(name).append(": ").append(value).append("\n");
    return textAnswer(lines);
}
}
