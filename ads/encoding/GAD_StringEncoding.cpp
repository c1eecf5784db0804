#include "ads/encoding/GAD_StringEncoding.h"

#include "platform/foundation/UTF8Text.h"

#include <bit>
#include <cassert>
#include <numeric>

namespace vistrel {
namespace {
enum : std::int8_t { kUnknownChar = -1, kPaddingChar = -2, kIgnoredChar = -3 };

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
    for (std::size_t i = 0; i < alphabet.size(); ++i) {
        if (!isASCII(alphabet[i]) || alphabet.find(alphabet[i], i + 1) != std::string_view::npos)
            return nullptr;
    }
    return std::shared_ptr<GAD_StringEncoding>(new GAD_StringEncoding(alphabet));
}

GAD_StringEncoding::GAD_StringEncoding(std::string_view alphabet)
    : charMap_(alphabet)
    , shift_(static_cast<unsigned>(std::countr_zero(alphabet.size())))
    , mask_((1U << shift_) - 1)
    , padLen_(std::lcm(8U, shift_) / shift_) {
    reverseCharMap_.fill(kUnknownChar);
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        reverseCharMap_[placeOf(alphabet[i])] = static_cast<std::int8_t>(i);
}

void GAD_StringEncoding::setPaddingChar(char character) {
    assert(isASCII(character));
    paddingChar_ = character;
    reverseCharMap_[placeOf(character)] = kPaddingChar;
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
}

void GAD_StringEncoding::ignoreCharacters(std::string_view characters) {
    for (const char character : characters) {
        std::int8_t& value = reverseCharMap_[placeOf(character)];
        assert(value == kUnknownChar && "Character already mapped");
        if (isASCII(character))
            value = kIgnoredChar;
    }
}

std::string GAD_StringEncoding::encode(std::span<const std::byte> bytes) const {
    std::string text;
    if (bytes.empty())
        return text;
    const std::size_t length = (bytes.size() * 8 + shift_ - 1) / shift_;
    if (doPad_)
        text.resize((length + padLen_ - 1) / padLen_ * padLen_, paddingChar_);
    else
        text.resize(length);
    encodeInto(bytes, text.data());
    return text;
}

std::string GAD_StringEncoding::encodeString(std::string_view text) const {
    return encode(std::as_bytes(std::span(text)));
}

void GAD_StringEncoding::encodeInto(std::span<const std::byte> bytes, char* out) const {
    const auto* input = reinterpret_cast<const unsigned char*>(bytes.data());
    const std::size_t done =
        stringEncodingBlocks::encode(shift_, charMap_.data(), input, bytes.size(), out);
    out += done * 8 / shift_;
    unsigned buffer = 0;
    unsigned bits = 0;
    for (std::size_t i = done; i < bytes.size(); ++i) {
        buffer = buffer << 8 | input[i];
        bits += 8;
        while (bits >= shift_) {
            bits -= shift_;
            *out++ = charMap_[buffer >> bits & mask_];
        }
    }
    if (bits != 0)
        *out = charMap_[buffer << (shift_ - bits) & mask_];
}

/// Sizes and fills the bytes; false when the text cannot be decoded.
template <typename Bytes>
bool GAD_StringEncoding::decodeInto(std::string_view text, Bytes& bytes) const {
    bytes.resize(text.size() * shift_ / 8);
    auto* out = reinterpret_cast<unsigned char*>(bytes.data());
    unsigned buffer = 0;
    unsigned bits = 0;
    bool sawPadding = false;
    // Where the general path left a whole group behind it, the fast one is tried again.
    constexpr std::size_t kGeneralRun = 64;
    std::size_t tryAgainAt = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (bits == 0 && i >= tryAgainAt && !sawPadding) {
            const std::size_t done = stringEncodingBlocks::decode(
                shift_, reverseCharMap_, text.data() + i, text.size() - i, out);
            out += done * shift_ / 8;
            i += done;
            tryAgainAt = i + kGeneralRun;
            if (i == text.size())
                break;
        }
        const int value = reverseCharMap_[placeOf(text[i])];
        if (value == kPaddingChar)
            sawPadding = true;
        else if (value == kUnknownChar || (value >= 0 && sawPadding))
            return false;
        if (value < 0)
            continue;
        buffer = buffer << shift_ | static_cast<unsigned>(value);
        bits += shift_;
        if (bits >= 8) {
            bits -= 8;
            *out++ = static_cast<unsigned char>(buffer >> bits);
        }
    }
    bytes.resize(static_cast<std::size_t>(out - reinterpret_cast<unsigned char*>(bytes.data())));
    return (buffer & ((1U << bits) - 1)) == 0;
}

std::optional<std::vector<std::byte>> GAD_StringEncoding::decode(std::string_view text) const {
    std::optional<std::vector<std::byte>> bytes(std::in_place);
    if (!decodeInto(text, *bytes))
        bytes.reset();
    return bytes;
}

std::optional<std::string> GAD_StringEncoding::stringByDecoding(std::string_view text) const {
    std::optional<std::string> decoded(std::in_place);
    if (!decodeInto(text, *decoded) || !isUTF8(*decoded))
        decoded.reset();
    return decoded;
}

std::string GAD_StringEncoding::description() const {
    return "<Base" + std::to_string(1U << shift_) + " StringEncoder: " + charMap_ + ">";
}
}
