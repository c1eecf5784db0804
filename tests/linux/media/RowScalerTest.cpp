#include "platform/linux/media/RowScaler.h"

#include "tests/support/Testing.h"

namespace vistrel {
namespace {

TEST(RowScalerTest, EveryMachineMakesTheSameSamples) {
    const std::pair<int, int> stretches[] = {{1280, 720}, {640, 203}, {63, 64},  {35, 18},
                                             {16, 8},     {300, 40},  {64, 640}, {1, 30},
                                             {2, 7},      {500, 1},   {720, 720}};
    for (const auto& [from, to] : stretches) {
        std::vector<std::uint8_t> samples(static_cast<std::size_t>(from) + RowScaler::kPadding);
        for (std::size_t i = 0; i < samples.size(); ++i)
            samples[i] = static_cast<std::uint8_t>(i * i * 37 + i * 101);
        samples[static_cast<std::size_t>(from)] = samples[static_cast<std::size_t>(from) - 1];
        std::vector<std::uint8_t> results[2];
        for (auto& result : results) {
            RowScaler scaler(&result == results ? RowScaler::Machine::Plain
                                                : RowScaler::thisMachine());
            scaler.prepare(from, to);
            result.assign(static_cast<std::size_t>(to) + 1, 7);
            scaler.scale(samples.data(), result.data());
            EXPECT_EQ(result.back(), 7) << "nothing is written behind the row";
        }
        EXPECT_EQ(results[0], results[1]) << from << " to " << to;
    }
}

}
}
