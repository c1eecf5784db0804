#include "demo/MediaStore.h"

#include <array>
#include <ctime>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sys/stat.h>
#include <vector>

namespace vistrel::demo {
namespace {
constexpr std::array<MediaFile, 13> files = {{
    {"harbour-at-dawn.mp4", "harbour-at-dawn.mp4", "video/mp4", "Harbour at Dawn",
     "480 × 320, 15 s"},
    {"paper-boats.mp4", "paper-boats.mp4", "video/mp4", "Paper Boats", "640 × 360, 20 s"},
    {"lantern-road.mp4", "lantern-road.mp4", "video/mp4", "Lantern Road", "320 × 180, 60 s"},
    {"night-tram.m4v", "night-tram.m4v", "video/m4v", "Night Tram", "480 × 320, 12 s"},
    {"short-signal.mp3", "short-signal.mp3", "audio/mpeg", "Short Signal", "The Relay, 3 s"},
    {"gruesse-aus-koeln.mp3", "gruesse-aus-koeln.mp3", "audio/mpeg", "Grüße aus Köln",
     "Jörg Müßig, 8 s"},
    {"long-way-round.mp3", "long-way-round.mp3", "audio/mpeg", "Long Way Round",
     "Harbour Street Trio, 30 s, with cover"},
    {"old-label.mp3", "old-label.mp3", "audio/mpeg", "Old Label", "12 s, ID3v1 label only"},
    {"no-label.mp3", "no-label.mp3", "audio/mpeg", "No Label", "5 s, no tags"},
    {"garden-wall.mov", "garden-wall.mov", "video/quicktime", "Garden Wall", "video/quicktime"},
    {"capitals.mp4", "harbour-at-dawn.mp4", "video/MP4", "Capitals", "video/MP4 in capitals"},
    {"other-spelling.mp3", "short-signal.mp3", "audio/mp3", "Other Spelling", "audio/mp3"},
    {"no-video.mp4", "", "video/mp4", "No Video", "text with the name of a video"},
}};

std::string httpDate(std::time_t seconds) {
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    std::array<char, 64> text{};
    std::strftime(text.data(), text.size(), "%a, %d %b %Y %H:%M:%S GMT", &parts);
    return text.data();
}

std::string_view extensionOf(std::string_view name) {
    const size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string_view() : name.substr(dot);
}

bool isOrdinaryMedia(const MediaFile& file) {
    return file.source == file.name && file.type != "video/quicktime";
}
}

std::span<const MediaFile> mediaFiles() {
    return files;
}

MediaStore::MediaStore(const std::string& folder) {
    for (const MediaFile& file : files) {
        if (contents_.contains(file.source))
            continue;
        const std::string path = folder + "/" + std::string(file.source);
        struct stat status {};
        std::string bytes = "This is not a video.\n";
        if (!file.source.empty()) {
            std::ifstream stream(path, std::ios::binary);
            if (!stream || stat(path.c_str(), &status) != 0) {
                std::cerr << "vistrel-demo-site: no media file " << path << '\n';
                continue;
            }
            bytes.assign(std::istreambuf_iterator<char>(stream), {});
        }
        const std::string tag =
            '"' + std::to_string(bytes.size()) + "-" + std::to_string(status.st_mtime) + '"';
        contents_[std::string(file.source)] = {
            std::make_shared<const std::string>(std::move(bytes)), httpDate(status.st_mtime), tag};
    }
}

Answer MediaStore::file(std::string_view name) const {
    for (const MediaFile& file : files)
        if (file.name == name)
            return answerWith(file);
    return errorAnswer(404, "There is no such file here.");
}

Answer MediaStore::episode(std::string_view name) const {
    std::vector<const MediaFile*> fitting;
    for (const MediaFile& file : files)
        if (isOrdinaryMedia(file) && extensionOf(file.name) == extensionOf(name))
            fitting.push_back(&file);
    if (fitting.empty() || extensionOf(name).empty())
        return errorAnswer(404, "There is no such file here.");
    const std::string_view stem = name.substr(0, name.rfind('.'));
    const size_t dash = stem.rfind('-');
    const long long number =
        dash == std::string_view::npos ? 1 : numberFrom(stem.substr(dash + 1), 1);
    return answerWith(*fitting[static_cast<size_t>(number > 0 ? number - 1 : 0) % fitting.size()]);
}

Answer MediaStore::answerWith(const MediaFile& file) const {
    const auto found = contents_.find(file.source);
    if (found == contents_.end())
        return errorAnswer(404, "This file is missing; see the server's messages.");
    Answer answer;
    answer.type = file.type;
    answer.body = Body(found->second.bytes);
    answer.headers = {{"Last-Modified", found->second.lastModified},
                      {"ETag", found->second.entityTag},
                      {"Accept-Ranges", "bytes"}};
    return answer;
}
}
