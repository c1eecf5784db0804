#include "platform/linux/media/RowScaler.h"

#include <algorithm>
#include <cmath>

#ifdef __x86_64__
#include <tmmintrin.h>
#endif

namespace vistrel {

namespace {

constexpr std::uint8_t kZero = 0x80;

std::uint8_t mixed(unsigned a, unsigned b, unsigned share) {
    return static_cast<std::uint8_t>((a * (256 - share) + b * share + 128) >> 8);
}

}

Between Between::of(int index, int from, int to) {
    const double at =
        std::clamp((index + 0.5) * from / to - 0.5, 0.0, static_cast<double>(from - 1));
    const int first = std::clamp(static_cast<int>(at), 0, std::max(from - 2, 0));
    return {first, static_cast<std::uint16_t>(std::lround((at - first) * 256))};
}

void RowScaler::prepare(int from, int to) {
    if (from == from_ && columns_.size() == static_cast<std::size_t>(to))
        return;
    from_ = from;
    columns_.resize(static_cast<std::size_t>(to));
    shares_.resize(columns_.size());
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const Between place = Between::of(static_cast<int>(i), from, to);
        columns_[i] = place.first;
        shares_[i] = place.share;
    }
    steps_.clear();
    if (machine_ == Machine::Plain)
        return;
    for (std::size_t i = 0; i + kTogether <= columns_.size(); i += kTogether) {
        if (columns_[i + kTogether - 1] + 1 - columns_[i] >= static_cast<int>(2 * kTogether))
            break;
        addStep(i);
    }
}

void RowScaler::addStep(std::size_t column) {
    Step step;
    for (std::size_t i = 0; i < kTogether; ++i) {
        const auto at = static_cast<std::uint8_t>(columns_[column + i] - columns_[column]);
        step.firsts[2 * i] = at;
        step.seconds[2 * i] = static_cast<std::uint8_t>(at + 1);
        step.firsts[2 * i + 1] = step.seconds[2 * i + 1] = kZero;
        step.firstShares[i] = static_cast<std::uint16_t>(256 - shares_[column + i]);
        step.secondShares[i] = shares_[column + i];
    }
    steps_.push_back(step);
}

void RowScaler::scale(const std::uint8_t* samples, std::uint8_t* to) const {
    scaleSteps(samples, to);
    for (std::size_t x = steps_.size() * kTogether; x < columns_.size(); ++x) {
        const std::uint8_t* pair = samples + columns_[x];
        to[x] = mixed(pair[0], pair[1], shares_[x]);
    }
}

#ifdef __x86_64__

RowScaler::Machine RowScaler::thisMachine() {
    return __builtin_cpu_supports("ssse3") ? Machine::ShufflesBytes : Machine::Plain;
}

__attribute__((target("ssse3"))) void RowScaler::scaleSteps(const std::uint8_t* samples,
                                                            std::uint8_t* to) const {
    const auto load = [](const void* from) __attribute__((target("ssse3"))) {
        return _mm_loadu_si128(static_cast<const __m128i*>(from));
    };
    const __m128i rounding = _mm_set1_epi16(128);
    const int* column = columns_.data();
    for (const Step& step : steps_) {
        const __m128i source = load(samples + *column);
        const __m128i firsts = _mm_shuffle_epi8(source, load(step.firsts));
        const __m128i seconds = _mm_shuffle_epi8(source, load(step.seconds));
        const __m128i sum = _mm_add_epi16(_mm_mullo_epi16(firsts, load(step.firstShares)),
                                          _mm_mullo_epi16(seconds, load(step.secondShares)));
        const __m128i mixedSamples = _mm_srli_epi16(_mm_add_epi16(sum, rounding), 8);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to),
                         _mm_packus_epi16(mixedSamples, mixedSamples));
        column += kTogether;
        to += kTogether;
    }
}

#else

RowScaler::Machine RowScaler::thisMachine() {
    return Machine::Plain;
}

void RowScaler::scaleSteps(const std::uint8_t*, std::uint8_t*) const {}

#endif

}
