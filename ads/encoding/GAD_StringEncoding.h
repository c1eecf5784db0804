#pragma once
#include "ads/encoding/GAD_StringEncodingTables.h"

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vistrel {
/// Converts between bytes and text over an alphabet of 2, 4, 8, 16, 32, 64 or 128 ASCII characters.
/// Takes the most significant bits first and pads the last character with zero bits.
class GAD_StringEncoding {
public:
    /// "01"
    static std::shared_ptr<GAD_StringEncoding> binaryStringEncoding();
    /// Upper-case digits; lower-case ones are decoded as well.
    static std::shared_ptr<GAD_StringEncoding> hexStringEncoding();
    /// RFC 4648, padded.
    static std::shared_ptr<GAD_StringEncoding> rfc4648Base32StringEncoding();
    static std::shared_ptr<GAD_StringEncoding> rfc4648Base32HexStringEncoding();
    /// Unpadded; decodes either case, o as 0, i and l as 1.
    static std::shared_ptr<GAD_StringEncoding> crockfordBase32StringEncoding();
    /// RFC 4648, padded.
    static std::shared_ptr<GAD_StringEncoding> rfc4648Base64StringEncoding();
    static std::shared_ptr<GAD_StringEncoding> rfc4648Base64WebsafeStringEncoding();

    /// Null when the alphabet is not ASCII, repeats a character or has another length.
    static std::shared_ptr<GAD_StringEncoding> stringEncodingWithString(std::string_view alphabet);

    [[nodiscard]] std::string encode(std::span<const std::byte> bytes) const;
    [[nodiscard]] std::string encodeString(std::string_view text) const;

    /// Nothing when there is an invalid character, a value after padding or a remaining bit that is
    /// not zero. Padding may be missing or longer than needed.
    [[nodiscard]] std::optional<std::vector<std::byte>> decode(std::string_view text) const;
    /// The decoded bytes as text; also nothing when they are not valid UTF-8.
    [[nodiscard]] std::optional<std::string> stringByDecoding(std::string_view text) const;

    /// Whether encoded text is padded to whole blocks.
    [[nodiscard]] bool doPad() const { return doPad_; }
    void setDoPad(bool doPad) { doPad_ = doPad; }
    /// Sets the ASCII character that is used for padding.
    void setPaddingChar(char character);

    /// Gives each character without a value that of the last character before it with one: with
    /// "AaBb", a decodes as A and b as B.
    void addDecodeSynonyms(std::string_view characters);
    /// Skips these ASCII characters when decoding. None may have a value already.
    void ignoreCharacters(std::string_view characters);

    /// "<Base64 StringEncoder: ABC…>"
    [[nodiscard]] std::string description() const;

private:
    explicit GAD_StringEncoding(std::string_view alphabet);

    static std::shared_ptr<GAD_StringEncoding> padded(std::string_view alphabet);
    template <typename Bytes>
    std::optional<Bytes> decoded(std::string_view text) const;

    std::string charMap_;
    GAD_StringEncodingTables::ReverseMap reverseCharMap_;
    unsigned shift_ = 0;
    GAD_StringEncodingTables tables_;
    bool doPad_ = false;
    char paddingChar_ = '\0';
    std::size_t padLen_ = 0;
};

using StringEncoding = GAD_StringEncoding;
}
