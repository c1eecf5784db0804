#include "demo/Digest.h"
#include "demo/Pages.h"
#include "demo/Site.h"

#include <algorithm>
#include <map>
#include <mutex>

namespace vistrel::demo {
namespace {
constexpr long long largest = 1024LL * 1024; // mebibytes

uint64_t bytesAskedFor(const Request& request) {
    const long long mebibytes = numberFrom(request.parameter("mb").value_or("1"), 1);
    const uint64_t bytes =
        static_cast<uint64_t>(std::clamp(mebibytes, 0LL, largest)) * 1024U * 1024U;
    const long long more = numberFrom(request.parameter("bytes").value_or("0"), 0);
    return bytes + static_cast<uint64_t>(std::clamp(more, 0LL, largest));
}

bool isPrintable(std::string_view text) {
    return std::all_of(
        text.begin(), text.end(), [](unsigned char byte) { return byte >= ' ' && byte != 0x7f; });
}
}

Answer bigFile(Site& /*site*/, const Request& request) {
    Answer answer;
    answer.type = request.parameter("type").value_or("application/octet-stream");
    const std::optional<std::string> name = request.parameter("name");
    if (!isPrintable(answer.type) || (name && !isPrintable(*name)))
        return errorAnswer(400, "Type and name must be one line each.");
    if (name)
        answer.headers.emplace_back("Content-Disposition", "attachment; filename=\"" + *name + '"');
    answer.headers.emplace_back("Accept-Ranges", "bytes");
    answer.body = Body::pattern(bytesAskedFor(request));
    return answer;
}

Answer bigFileDigest(Site& /*site*/, const Request& request) {
    static std::mutex mutex;
    static std::map<uint64_t, std::string> known;
    const uint64_t size = bytesAskedFor(request);
    const std::lock_guard lock(mutex);
    std::string& digest = known[size];
    if (digest.empty())
        digest = sha256Of(Body::pattern(size));
    return textAnswer(digest + "\n");
}

Answer fileDigest(Site& site, const Request& request) {
    const std::string path = request.parameter("path").value_or("");
    const std::string name = path.substr(path.rfind('/') + 1);
    Answer file = path.starts_with("/files/") ? site.media.episode(name) : site.media.file(name);
    if (file.status != 200)
        return file;
    return textAnswer(sha256Of(file.body) + "\n");
}
}
