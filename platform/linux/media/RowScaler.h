#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vistrel {

/// A position between two samples.
struct Between {
    int first;
    std::uint16_t share; ///< of the next sample, of 256

    /// The source position of the middle of sample `index` when `from` samples are scaled to `to`.
    static Between of(int index, int from, int to);
};

/// Scales rows of samples. Each result is mixed from the two samples around its position.
class RowScaler {
public:
    /// Which instructions may be used.
    enum class Machine { Plain, ShufflesBytes };
    static Machine thisMachine();
    explicit RowScaler(Machine machine = thisMachine())
        : machine_(machine) {}

    /// The number of samples behind the last one that are read, whatever they are.
    static constexpr std::size_t kPadding = 16;
    void prepare(int from, int to);
    void scale(const std::uint8_t* samples, std::uint8_t* to) const;

private:
    /// The number of results that are computed together from sixteen adjacent samples.
    static constexpr std::size_t kTogether = 8;
    struct Step {
        alignas(16) std::uint8_t firsts[2 * kTogether]; ///< indices into the sixteen; bit 7: zero
        alignas(16) std::uint8_t seconds[2 * kTogether];
        alignas(16) std::uint16_t firstShares[kTogether];
        alignas(16) std::uint16_t secondShares[kTogether];
    };
    void addStep(std::size_t column);
    void scaleSteps(const std::uint8_t* samples, std::uint8_t* to) const;

    Machine machine_;
    int from_ = 0;
    std::vector<int> columns_;
    std::vector<std::uint16_t> shares_;
    std::vector<Step> steps_; ///< for the first results; the rest is computed one by one
};

}
