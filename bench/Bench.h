#pragma once
#include <alloca.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

namespace bench {
/// Keeps the compiler from optimising away the computation of a value.
template <typename T>
void keep(const T& value) {
    asm volatile("" : : "g"(&value) : "memory");
}

/// Seconds for a number of calls of one function.
template <typename Work>
double secondsOf(Work& work, std::size_t calls) {
    const auto start = std::chrono::steady_clock::now();
    for (std::size_t i = 0; i < calls; ++i)
        work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// A number of calls that takes a few milliseconds, after warming up.
template <typename Work>
std::size_t callsFor(Work& work) {
    constexpr double kRound = 0.004;
    std::size_t calls = 1;
    while (secondsOf(work, calls) < kRound)
        calls *= 2;
    return calls;
}

struct Figure {
    std::string name;
    /// How much one call handles; 0 when the figure is a time.
    std::size_t bytes;
    /// How many times as fast as the peer ours must be.
    double bound;
};

/// One contender's seconds in several turns.
class Turns {
public:
    void add(double seconds) {
        best_ = std::min(best_, seconds);
        worst_ = std::max(worst_, seconds);
    }
    double best() const { return best_; }
    /// How much longer the worst turn took than the best, in percent: how noisy the machine was.
    double spread() const { return best_ > 0 ? (worst_ / best_ - 1) * 100 : 0; }

private:
    double best_ = std::numeric_limits<double>::infinity();
    double worst_ = 0;
};

/// Prints one line, "name: ours peer ratio bound ok|short, spread N %", the spread being the
/// peer's; whether the bound holds.
inline bool report(const Figure& figure, const Turns& ours, const Turns& peer) {
    const double ratio = peer.best() / ours.best();
    const bool holds = ratio >= figure.bound;
    const auto rate = [&](double seconds) {
        return figure.bytes ? static_cast<double>(figure.bytes) / seconds / 1e9 : seconds * 1e6;
    };
    std::printf("%s: %.3f %.3f %s %.2fx %.2fx %s, spread %.0f %%\n", figure.name.c_str(),
                rate(ours.best()), rate(peer.best()), figure.bytes ? "GB/s" : "us", ratio,
                figure.bound, holds ? "ok" : "short", peer.spread());
    std::fflush(stdout);
    return holds;
}

/// The best of several rounds, in seconds per call.
template <typename Work>
double bestSeconds(Work& work) {
    constexpr int kRounds = 12;
    const std::size_t calls = callsFor(work);
    double best = std::numeric_limits<double>::max();
    for (int round = 0; round < kRounds; ++round)
        best = std::min(best, secondsOf(work, calls) / static_cast<double>(calls));
    return best;
}

/// The seconds that a child process writes to the given descriptor; infinite
/// on failure.
template <typename Child>
double secondsFromChild(Child child) {
    double seconds = std::numeric_limits<double>::infinity();
    int ends[2];
    if (pipe(ends) != 0)
        return seconds;
    const pid_t process = fork();
    if (process == 0) {
        child(ends[1]);
        _exit(1);
    }
    close(ends[1]);
    if (read(ends[0], &seconds, sizeof seconds) != sizeof seconds)
        seconds = std::numeric_limits<double>::infinity();
    close(ends[0]);
    waitpid(process, nullptr, 0);
    return seconds;
}

[[noreturn]] inline void answer(int descriptor, double seconds) {
    _exit(write(descriptor, &seconds, sizeof seconds) == sizeof seconds ? 0 : 1);
}

/// The best seconds in a separate process, so that what one contender leaves in the heap does not
/// slow the other down. Each turn has its stack and heap at other addresses: whether their low bits
/// agree can make up half of a time of a few nanoseconds.
template <typename Work>
double bestSecondsApart(Work& work, int turn) {
    return secondsFromChild([&](int descriptor) {
        const std::size_t moved = static_cast<std::size_t>(turn) * 1072 + 16;
        keep(alloca(moved));
        keep(std::malloc(moved));
        answer(descriptor, bestSeconds(work));
    });
}

/// Runs both in turns and compares their best rounds, so that a busy machine affects both alike.
template <typename Ours, typename Peer>
bool compare(const Figure& figure, Ours ours, Peer peer) {
    constexpr int kTurns = 4;
    Turns oursTurns;
    Turns peerTurns;
    for (int turn = 0; turn < kTurns; ++turn) {
        oursTurns.add(bestSecondsApart(ours, turn));
        peerTurns.add(bestSecondsApart(peer, turn));
    }
    return report(figure, oursTurns, peerTurns);
}

/// Names the one measurement that a program was restarted for.
constexpr const char* kSoleMeasurement = "VISTREL_BENCH_SOLE_MEASUREMENT";
constexpr int kAnswer = 3; ///< the descriptor it writes the seconds to

/// The seconds of a measurement in a restarted program; infinite on failure.
inline double secondsInNewProgram(const std::string& measurement) {
    return secondsFromChild([&](int descriptor) {
        setenv(kSoleMeasurement, measurement.c_str(), 1);
        dup2(descriptor, kAnswer);
        execl("/proc/self/exe", "/proc/self/exe", nullptr);
    });
}

/// As compare, but for times of a few nanoseconds: each turn restarts the program, because its
/// load address makes up to a quarter of such a time. The program must reach the comparison
/// without printing anything, and names must differ.
template <typename Ours, typename Peer>
bool compareInNewPrograms(const Figure& figure, Ours ours, Peer peer) {
    constexpr int kTurns = 5;
    const std::string oursName = figure.name + ", ours";
    const std::string peerName = figure.name + ", the peer";
    if (const char* sole = std::getenv(kSoleMeasurement)) {
        if (sole != oursName && sole != peerName)
            return true;
        answer(kAnswer, sole == oursName ? bestSeconds(ours) : bestSeconds(peer));
    }
    Turns oursTurns;
    Turns peerTurns;
    for (int turn = 0; turn < kTurns; ++turn) {
        oursTurns.add(secondsInNewProgram(oursName));
        peerTurns.add(secondsInNewProgram(peerName));
    }
    return report(figure, oursTurns, peerTurns);
}
}
