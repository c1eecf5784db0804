#include "ads/GADSettings.h"
#include "ads/Request/GADLocation.h"
#include "ads/Utility/GADNumberUtilities.h"
#include "ads/encoding/GAD_StringEncoding.h"
#include "platform/host/Crypto.h"
#include "platform/host/Host.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>
#include <string_view>
#include <vector>

namespace vistrel {

namespace {

constexpr std::size_t kBlockSize = 16;

std::string prefixWithTimestamp(double timestamp) {
    std::array<char, 512> buffer{};
    std::snprintf(buffer.data(), buffer.size(),
                  "role: 6 producer: 24 historical_role: 1 historical_producer: 12 timestamp: %.0f",
                  timestamp * 1'000'000);
    return buffer.data();
}

std::string preciseText(const GADLocation& location) {
    using GADNumberUtilities::saturated;
    const auto scaled = [](float number, double scale) {
        return static_cast<long>(saturated<std::int32_t>(static_cast<double>(number) * scale));
    };
    std::array<char, 128> buffer{};
    std::snprintf(buffer.data(), buffer.size(),
                  " latlng <latitude_e7: %ld longitude_e7: %ld> radius: %ld",
                  scaled(location.latitude(), 10'000'000), scaled(location.longitude(), 10'000'000),
                  scaled(location.accuracy(), 1000));
    return prefixWithTimestamp(location.timestamp()) + buffer.data();
}

/// Pads to whole blocks with bytes whose value is their number; always adds at least one.
std::string padded(std::string text) {
    const std::size_t count = kBlockSize - text.size() % kBlockSize;
    text.append(count, static_cast<char>(count));
    return text;
}

/// Four little-endian integers: the timestamp in seconds, times 1 to 4.
host::Crypto::Block initialisationVector(double timestamp) {
    host::Crypto::Block vector{};
    for (std::size_t at = 0; at < vector.size(); ++at) {
        const std::size_t times = at / 4 + 1;
        const double multiple = static_cast<double>(times) * timestamp;
        const auto number =
            static_cast<std::uint32_t>(GADNumberUtilities::saturated<std::int32_t>(multiple));
        vector[at] = static_cast<std::byte>(number >> 8 * (at % 4));
    }
    return vector;
}

/// Nothing when the setting is not a key of 32 digits.
std::optional<host::Crypto::Block> locationKey() {
    const std::string text = gadSettingValue(kGADLocationKey);
    const auto bytes = GAD_StringEncoding::hexStringEncoding()->decode(text);
    host::Crypto::Block key{};
    if (!bytes || bytes->size() != key.size())
        return std::nullopt;
    std::ranges::copy(*bytes, key.begin());
    return key;
}

std::string webSafe(std::span<const std::byte> bytes) {
    const auto encoding = GAD_StringEncoding::rfc4648Base64WebsafeStringEncoding();
    encoding->setDoPad(false);
    return encoding->encode(bytes);
}

std::span<const std::byte> bytesOf(std::string_view text) {
    return std::as_bytes(std::span(text));
}

}

std::optional<std::string> GADLocation::oolongRepresentation() const {
    if (isPreciseLocation())
        return preciseRepresentation();
    return descriptiveRepresentation();
}

std::string GADLocation::descriptiveRepresentation() const {
    std::string place = description_;
    std::ranges::replace(place, '"', '\'');
    return "a+" + webSafe(bytesOf(prefixWithTimestamp(timestamp_) + " loc: \"" + place + "\""));
}

std::optional<std::string> GADLocation::preciseRepresentation() const {
    const auto key = locationKey();
    if (!key)
        return std::nullopt;
    const auto vector = initialisationVector(timestamp_);
    const std::string text = padded(preciseText(*this));
    const auto cipher = host::current().crypto->aes128CBCEncrypt(*key, vector, bytesOf(text));
    if (!cipher)
        return std::nullopt;
    std::vector<std::byte> output(vector.begin(), vector.end());
    output.insert(output.end(), cipher.value().begin(), cipher.value().end());
    return "e1+" + webSafe(output);
}

}
