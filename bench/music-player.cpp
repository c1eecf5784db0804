// What the music player's screen costs in a window while it plays, with a hundred refreshes per
// second, against the bare pipeline; and what a thousand track changes leak.
#include "audio/OvoAudioPlayerController.h"
#include "bench/Bench.h"
#include "bench/support/MusicHost.h"
#include "platform/linux/window/PhoneWindow.h"
#include "platform/media/AVAudioPlayer.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UIWindow.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>

namespace {

constexpr double kMostTimes = 1.8;
constexpr double kMeasuredSeconds = 10;
constexpr double kMostGrowthMiB = 1.5;
constexpr int kTracks = 3;
constexpr int kRounds = 4; ///< in turns, of which the best count

double processorSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double residentMiB() {
    std::ifstream file("/proc/self/statm");
    long total = 0;
    long resident = 0;
    file >> total >> resident;
    return static_cast<double>(resident * sysconf(_SC_PAGESIZE)) / (1 << 20);
}

/// The result of `work` in a separate process; negative on failure.
double apart(const std::function<double()>& work) {
    int ends[2];
    if (pipe(ends) != 0)
        return -1;
    const pid_t child = fork();
    if (child == 0) {
        const double result = work();
        _exit(write(ends[1], &result, sizeof result) == sizeof result ? 0 : 1);
    }
    close(ends[1]);
    double result = -1;
    if (read(ends[0], &result, sizeof result) != sizeof result)
        result = -1;
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return result;
}

bool makeTracks(const std::string& folder) {
    for (int i = 0; i < kTracks; ++i) {
        const std::string command =
            "ffmpeg -nostdin -loglevel error -f lavfi -i \"aevalsrc=0.3*sin(2*PI*t*" +
            std::to_string(220 + 110 * i) +
            ")+0.02*random(0):s=44100:d=240\" -c:a libmp3lame -b:a 128k " + folder + "/" +
            std::to_string(i) + ".mp3";
        if (std::system(command.c_str()) != 0)
            return false;
    }
    return true;
}

vistrel::NSURL track(int number) {
    return vistrel::NSURL::fileURLWithPath("/" + std::to_string(number) + ".mp3");
}

/// Fraction of a core over the measured time.
double measure(bench::MusicHost& host) {
    host.runFor(2);
    const double before = processorSeconds();
    host.runFor(kMeasuredSeconds);
    return (processorSeconds() - before) / kMeasuredSeconds;
}

double barePipeline() {
    bench::MusicHost host;
    if (!makeTracks(host.root()))
        return -1;
    const auto player = vistrel::AVAudioPlayer::withContentsOfURL(track(0), nullptr);
    if (!player || !player->play())
        return -1;
    const double share = measure(host);
    return player->currentTime() > kMeasuredSeconds ? share : -1;
}

/// The screen on a window, with the overlay over the cover.
struct Screen {
    Screen() {
        vistrel::OvoAudioPlayerController::SoundFiles files;
        for (int i = 0; i < kTracks; ++i)
            files.push_back(vistrel::OvoAudioFile::withPath(track(i)));
        presenter = std::make_shared<vistrel::UIViewController>();
        window = std::make_shared<vistrel::UIWindow>();
        window->addSubview(presenter->view());
        window->makeKeyAndVisible();
        player =
            vistrel::OvoAudioPlayerController::withSoundFilesAtPathAndSelectedIndex(files, "/", 0);
        presenter->presentModalViewController(player, false);
        player->showOverlayView();
    }
    std::shared_ptr<vistrel::UIViewController> presenter;
    std::shared_ptr<vistrel::UIWindow> window;
    std::shared_ptr<vistrel::OvoAudioPlayerController> player;
};

/// In a real window.
double playerScreen() {
    setenv("GSK_RENDERER", "cairo", 1);
    gtk_init();
    bench::MusicHost host;
    if (!makeTracks(host.root()))
        return -1;
    double share = -1;
    {
        vistrel::PhoneWindow phone(1);
        host.setDisplay(&phone.screen());
        vistrel::UIApplication::sharedApplication();
        Screen screen;
        phone.present();
        share = measure(host);
        if (!screen.player->updateTimer() ||
            phone.screen().framesDrawn() < static_cast<unsigned>(kMeasuredSeconds))
            share = -1;
        vistrel::UIApplication::resetSharedApplication();
    }
    return share;
}

/// MiB by which the process grows in a thousand changes after the first two hundred.
double growth() {
    bench::MusicHost host;
    if (!makeTracks(host.root()))
        return -1;
    Screen screen;
    screen.player->toggleRepeat();
    const auto change = [&](int times) {
        for (int i = 0; i < times; ++i) {
            screen.player->next();
            host.runFor(0.02);
        }
    };
    change(200);
    const double before = residentMiB();
    change(1000);
    const double after = residentMiB();
    return screen.player->player()->isPlaying() ? std::max(after - before, 0.0) : -1;
}

}

int main(int argc, char* /*argv*/[]) {
    // Always on a private display, so that nothing else is composed.
    if (argc == 1) {
        const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
        execl(VISTREL_IN_DISPLAY, VISTREL_IN_DISPLAY, program.c_str(), "--on-display", nullptr);
        std::perror("in-display");
        return 1;
    }
    double bare = 1;
    double screen = 1;
    bench::Turns bareTurns;
    for (int round = 0; round < kRounds; ++round) {
        const double share = apart(barePipeline);
        bareTurns.add(share);
        bare = std::min(bare, share);
        screen = std::min(screen, apart(playerScreen));
    }
    const double ratio = screen / bare;
    const bool cheap = bare > 0 && screen > 0 && ratio <= kMostTimes;
    std::printf("music player: %.2f %.2f %% of a core %.2fx %.2fx %s, spread %.0f %%\n",
                screen * 100, bare * 100, ratio, kMostTimes, cheap ? "ok" : "short",
                bareTurns.spread());
    const double grown = apart(growth);
    const bool flat = grown >= 0 && grown <= kMostGrowthMiB;
    std::printf("1000 track changes: %.2f MiB more, at most %.2f MiB %s\n", grown, kMostGrowthMiB,
                flat ? "ok" : "short");
    return cheap && flat ? 0 : 1;
}
