#include "ads/encoding/GAD_StringEncoding.h"

#include "ads/encoding/GAD_StringEncodingGeneral.h"
#include "platform/foundation/UTF8Text.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <numeric>

namespace vistrel {
namespace {
using stringEncodingGeneral::kIgnoredChar;
using stringEncodingGeneral::kPaddingChar;
using stringEncodingGeneral::kUnknownChar;

bool isASCII(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}
std::size_t placeOf(char c) {
    return static_cast<unsigned char>(c);
}

std::shared_ptr<GAD_StringEncoding> withSynonyms(std::string_view alphabet,
                                                 std::string_view synonyms) {
    auto encoding = GAD_StringEncoding::stringEncodingWithString(alphabet);
    encoding->addDecodeSynonyms(synonyms);
    return encoding;
}
}

std::shared_ptr<GAD_StringEncoding> GAD_StringEncoding::padded(std::string_view alphabet) {
    auto encoding = stringEncodingWithString(alphabet);
    encoding->setPaddingChar('=');
    encoding->setDoPad(true);
    return encoding;
}

std::shared_ptr<GAD_StringEncoding> GAD_StringEncoding::binaryStringEncoding() {
    return stringEncodingWithString("01");
}

std::shared_ptr<GAD_StringEncoding> GAD_StringEncoding::hexStringEncoding() {
    return withSynonyms("0123456789ABCDEF", "AaBbCcDdEeFf");
}

std::shared_ptr<GAD_StringEncoding> GAD_StringEncoding::rfc4648Base32StringEncoding() {
    return padded("ABCDEFGHIJKLMNOPQRSTUVWXYZ234567");
}

std::shared_ptr<GAD_StringEncoding> GAD_StringEncoding::rfc4648Base32HexStringEncoding() {
    return padded("0123456789ABCDEFGHIJKLMNOPQRSTUV");
}

std::shared_ptr<GAD_StringEncoding> GAD_StringEncoding::crockfordBase32StringEncoding() {
    return withSynonyms("0123456789ABCDEFGHJKMNPQRSTVWXYZ",
                        "0oO1iIlLAaBbCcDdEeFfGgHhJjKkMmNnPpQqRrSsTtVvWwXxYyZz");
}

std::shared_ptr<GAD_StringEncoding> GAD_StringEncoding::rfc4648Base64StringEncoding() {
    return padded("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/");
}

std::shared_ptr<GAD_StringEncoding> GAD_StringEncoding::rfc4648Base64WebsafeStringEncoding() {
    return padded("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_");
}

std::shared_ptr<GAD_StringEncoding>
GAD_StringEncoding::stringEncodingWithString(std::string_view alphabet) {
    if (alphabet.size() < 2 || alphabet.size() > 128 || !std::has_single_bit(alphabet.size()))
        return nullptr;
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        if (!isASCII(alphabet[i]) || alphabet.find(alphabet[i], i + 1) != std::string_view::npos)
            return nullptr;
    return std::shared_ptr<GAD_StringEncoding>(new GAD_StringEncoding(alphabet));
}

GAD_StringEncoding::GAD_StringEncoding(std::string_view alphabet)
    : charMap_(alphabet)
    , shift_(static_cast<unsigned>(std::countr_zero(alphabet.size())))
    , tables_(shift_, alphabet)
    , padLen_(std::lcm(8U, shift_) / shift_) {
    reverseCharMap_.fill(kUnknownChar);
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        reverseCharMap_[placeOf(alphabet[i])] = static_cast<std::int8_t>(i);
    tables_.setReverseMap(reverseCharMap_);
}

void GAD_StringEncoding::setPaddingChar(char character) {
    assert(isASCII(character));
    paddingChar_ = character;
    reverseCharMap_[placeOf(character)] = kPaddingChar;
    tables_.setReverseMap(reverseCharMap_);
}

void GAD_StringEncoding::addDecodeSynonyms(std::string_view characters) {
    std::int8_t current = kUnknownChar;
    for (const char character : characters) {
        std::int8_t& value = reverseCharMap_[placeOf(character)];
        if (value != kUnknownChar)
            current = value;
        else if (isASCII(character))
            value = current;
    }
    tables_.setReverseMap(reverseCharMap_);
}

void GAD_StringEncoding::ignoreCharacters(std::string_view characters) {
    for (const char character : characters) {
        std::int8_t& value = reverseCharMap_[placeOf(character)];
        assert(value == kUnknownChar && "Character already mapped");
        if (isASCII(character))
            value = kIgnoredChar;
    }
    tables_.setReverseMap(reverseCharMap_);
}

std::string GAD_StringEncoding::encode(std::span<const std::byte> bytes) const {
    if (bytes.empty())
        return {};
    std::size_t length = (bytes.size() * 8 + shift_ - 1) / shift_;
    // A block has 2, 4 or 8 characters.
    if (doPad_)
        length = (length + padLen_ - 1) & ~(padLen_ - 1);
    std::string text(length, paddingChar_);
    const auto* input = reinterpret_cast<const unsigned char*>(bytes.data());
    const std::size_t done = tables_.encode(input, bytes.size(), text.data());
    stringEncodingGeneral::encode(shift_, charMap_.data(), input + done, bytes.size() - done,
                                  text.data() + done * 8 / shift_);
    return text;
}

std::string GAD_StringEncoding::encodeString(std::string_view text) const {
    return encode(std::as_bytes(std::span(text)));
}

/// Bytes or text, allocated once at the maximum size.
template <typename Bytes>
std::optional<Bytes> GAD_StringEncoding::decoded(std::string_view text) const {
    // After an unusual character, the general path handles this many characters before the tables
    // are used again.
    constexpr std::size_t kGeneralRun = 64;
    // Trailing padding carries no information.
    while (!text.empty() && reverseCharMap_[placeOf(text.back())] == kPaddingChar)
        text.remove_suffix(1);
    const std::size_t most = text.size() * shift_ / 8;
    std::optional<Bytes> bytes(std::in_place, most, typename Bytes::value_type{});
    auto* const out = reinterpret_cast<unsigned char*>(bytes->data());
    stringEncodingGeneral::Decoder decoder(shift_, reverseCharMap_, out);
    while (!text.empty()) {
        if (decoder.isBetweenGroups()) {
            const std::size_t done = tables_.decode(text.data(), text.size(), decoder.out());
            decoder.skip(done * shift_ / 8);
            text.remove_prefix(done);
        }
        const auto taken = decoder.take(text, kGeneralRun);
        if (!taken)
            return std::nullopt;
        text.remove_prefix(*taken);
    }
    if (!decoder.finish())
        bytes.reset();
    else if (const auto size = static_cast<std::size_t>(decoder.out() - out); size != most)
        bytes->resize(size);
    return bytes;
}

std::optional<std::vector<std::byte>> GAD_StringEncoding::decode(std::string_view text) const {
    return decoded<std::vector<std::byte>>(text);
}

std::optional<std::string> GAD_StringEncoding::stringByDecoding(std::string_view text) const {
    auto result = decoded<std::string>(text);
    if (result && !isUTF8(*result))
        result.reset();
    return result;
}

std::string GAD_StringEncoding::description() const {
    return "<Base" + std::to_string(1U << shift_) + " StringEncoder: " + charMap_ + ">";
}
}
