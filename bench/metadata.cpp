// The tags of two thousand files as the music player reads them, against TagLib alone.
#include "audio/OvoAudioPlayerController.h"
#include "bench/Bench.h"
#include "bench/support/MusicHost.h"
#include "platform/media/AVAudioPlayer.h"

#include <taglib/fileref.h>
#include <taglib/tag.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

constexpr int kFiles = 2000;
constexpr double kMostTimes = 1.1;

/// Three seconds of encoded sound, including the header frame.
std::string encodedSound(const std::string& folder) {
    const std::string path = folder + "/sound.mp3";
    const std::string command = "ffmpeg -nostdin -loglevel error -f lavfi -i sine=440:d=3 -c:a "
                                "libmp3lame -b:a 128k -id3v2_version 0 -map_metadata -1 " +
                                path;
    if (std::system(command.c_str()) != 0)
        return {};
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The sound after a tag of three texts and some padding.
void writeSong(const std::string& path, int number, const std::string& sound) {
    std::string body;
    for (const auto& [id, text] :
         {std::pair{"TIT2", "Song " + std::to_string(number)},
          std::pair{"TPE1", std::string("Somebody")}, std::pair{"TALB", std::string("A Record")}}) {
        const auto size = static_cast<char>(text.size() + 1);
        body += std::string(id) + std::string{0, 0, 0, size, 0, 0, 0} + text;
    }
    body += std::string(512, '\0');
    const auto high = static_cast<char>(body.size() >> 7 & 0x7F);
    const auto low = static_cast<char>(body.size() & 0x7F);
    std::ofstream(path, std::ios::binary)
        << "ID3" + std::string{3, 0, 0, 0, 0, high, low} + body + sound;
}

/// From the tap on a row until the player is ready to slide in, including loading the player
/// library and the first track.
bool opensAtOnce(const std::vector<vistrel::NSURL>& addresses) {
    constexpr double kMostSeconds = 0.1;
    const auto start = std::chrono::steady_clock::now();
    vistrel::OvoAudioPlayerController::SoundFiles files;
    for (const auto& address : addresses)
        files.push_back(std::make_shared<vistrel::OvoAudioFile>(
            address, vistrel::OvoAudioFile::Reading::WhenAsked));
    const auto player = vistrel::OvoAudioPlayerController::withSoundFilesAtPathAndSelectedIndex(
        std::move(files), "/music/", kFiles / 2);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    const bool holds = player->player() && taken.count() <= kMostSeconds;
    std::printf("opening 2000 files: %.1f ms, at most %.1f ms %s\n", taken.count() * 1e3,
                kMostSeconds * 1e3, holds ? "ok" : "short");
    return holds;
}

}

int main() {
    bench::MusicHost host;
    std::filesystem::create_directories(host.root() + "/music");
    const std::string sound = encodedSound(host.root());
    std::vector<std::string> paths;
    std::vector<vistrel::NSURL> addresses;
    for (int i = 0; i < kFiles; ++i) {
        const std::string path = "/music/" + std::to_string(i) + ".mp3";
        writeSong(host.root() + path, i, sound);
        paths.push_back(host.root() + path);
        addresses.push_back(vistrel::NSURL::fileURLWithPath(path));
    }
    if (vistrel::OvoAudioFile(addresses[7]).title() != "Song 7") {
        std::puts("metadata: the tags cannot be read");
        return 1;
    }
    auto ours = [&] {
        for (const auto& address : addresses)
            bench::keep(vistrel::OvoAudioFile(address).duration());
    };
    auto peer = [&] {
        for (const auto& path : paths) {
            TagLib::FileRef file(path.c_str());
            bench::keep(file.tag()->title().to8Bit(true));
            bench::keep(file.tag()->artist().to8Bit(true));
            bench::keep(file.tag()->album().to8Bit(true));
            bench::keep(file.audioProperties()->lengthInMilliseconds());
        }
    };
    const bool opens = opensAtOnce(addresses);
    const bool reads = bench::compare({"metadata of 2000 files", 0, 1 / kMostTimes}, ours, peer);
    return opens && reads ? 0 : 1;
}
