#include "ads/encoding/GAD_StringEncoding.h"
#include "ads/encoding/GAD_StringEncodingGeneral.h"
#include "bench/Bench.h"

#include <glib.h>
#include <nettle/base16.h>
#include <openssl/evp.h>

#include <random>
#include <vector>

namespace vistrel {
namespace {
using Bytes = std::vector<std::byte>;

Bytes randomBytes(std::size_t size) {
    std::mt19937 random(4);
    Bytes bytes(size);
    for (std::byte& byte : bytes)
        byte = static_cast<std::byte>(random());
    return bytes;
}

template <typename Bytes>
const unsigned char* unsignedOf(const Bytes& bytes) {
    return reinterpret_cast<const unsigned char*>(bytes.data());
}

/// Every contender makes an object of its own from its input, and frees it.
bool benchBase64(const std::string& size, const Bytes& bytes) {
    const auto encoding = GAD_StringEncoding::rfc4648Base64StringEncoding();
    const std::string text = encoding->encode(bytes);
    const auto encode = [&] {
        bench::keep(encoding->encode(bytes));
    };
    const auto decode = [&] {
        bench::keep(encoding->decode(text));
    };
    const auto glibEncode = [&] {
        gchar* encoded = g_base64_encode(unsignedOf(bytes), bytes.size());
        bench::keep(*encoded);
        g_free(encoded);
    };
    const auto glibDecode = [&] {
        gsize length = 0;
        guchar* decoded = g_base64_decode(text.c_str(), &length);
        bench::keep(*decoded);
        g_free(decoded);
    };
    const auto evpEncode = [&] {
        std::string encoded((bytes.size() + 2) / 3 * 4 + 1, '\0');
        EVP_EncodeBlock(reinterpret_cast<unsigned char*>(encoded.data()), unsignedOf(bytes),
                        static_cast<int>(bytes.size()));
        bench::keep(encoded);
    };
    const auto evpDecode = [&] {
        Bytes decoded(text.size() / 4 * 3);
        EVP_DecodeBlock(reinterpret_cast<unsigned char*>(decoded.data()), unsignedOf(text),
                        static_cast<int>(text.size()));
        bench::keep(decoded);
    };
    const std::size_t count = bytes.size();
    bool holds = bench::compareInNewPrograms({"base64 encode " + size + " against GLib", count, 2},
                                             encode, glibEncode);
    holds &= bench::compareInNewPrograms({"base64 encode " + size + " against OpenSSL", count, 2},
                                         encode, evpEncode);
    holds &= bench::compareInNewPrograms({"base64 decode " + size + " against GLib", count, 2},
                                         decode, glibDecode);
    holds &= bench::compareInNewPrograms({"base64 decode " + size + " against OpenSSL", count, 2},
                                         decode, evpDecode);
    return holds;
}

/// Encodes and decodes through the general path alone.
struct General {
    const GAD_StringEncoding& encoding;
    unsigned shift;
    std::string alphabet;
    stringEncodingBlocks::ReverseMap values;

    General(const GAD_StringEncoding& ofEncoding, unsigned ofShift, std::string ofAlphabet)
        : encoding(ofEncoding)
        , shift(ofShift)
        , alphabet(std::move(ofAlphabet)) {
        values.fill(stringEncodingGeneral::kUnknownChar);
        for (std::size_t i = 0; i < alphabet.size(); ++i)
            values[static_cast<unsigned char>(alphabet[i])] = static_cast<std::int8_t>(i);
    }

    std::string encode(const Bytes& bytes) const {
        std::string text((bytes.size() * 8 + shift - 1) / shift, '\0');
        stringEncodingGeneral::encode(shift, alphabet.data(), unsignedOf(bytes), bytes.size(),
                                      text.data());
        return text;
    }
    Bytes decode(const std::string& text) const {
        Bytes bytes(text.size() * shift / 8);
        stringEncodingGeneral::Decoder decoder(shift, values,
                                               reinterpret_cast<unsigned char*>(bytes.data()));
        bench::keep(decoder.take(text, text.size()));
        return bytes;
    }
};

bool benchAgainstGeneral(const std::string& name, const General& general, const Bytes& bytes) {
    const std::string text = general.encode(bytes);
    if (general.encoding.encode(bytes) != text || general.decode(text) != bytes) {
        std::printf("%s: the paths differ\n", name.c_str());
        return false;
    }
    const GAD_StringEncoding& encoding = general.encoding;
    bool holds = bench::compare(
        {name + " encode against the general path", bytes.size(), 3},
        [&] { bench::keep(encoding.encode(bytes)); }, [&] { bench::keep(general.encode(bytes)); });
    holds &= bench::compare(
        {name + " decode against the general path", bytes.size(), 3},
        [&] { bench::keep(encoding.decode(text)); }, [&] { bench::keep(general.decode(text)); });
    return holds;
}

bool benchHexAgainstNettle(const std::string& size, const Bytes& bytes) {
    const auto encoding = GAD_StringEncoding::hexStringEncoding();
    const std::string text = encoding->encode(bytes);
    const auto nettleEncode = [&] {
        std::string encoded(BASE16_ENCODE_LENGTH(bytes.size()), '\0');
        base16_encode_update(encoded.data(), bytes.size(), unsignedOf(bytes));
        bench::keep(encoded);
    };
    const auto nettleDecode = [&] {
        Bytes decoded(BASE16_DECODE_LENGTH(text.size()));
        std::size_t length = decoded.size();
        base16_decode_ctx context;
        base16_decode_init(&context);
        base16_decode_update(&context, &length, reinterpret_cast<std::uint8_t*>(decoded.data()),
                             text.size(), text.data());
        bench::keep(decoded);
    };
    bool holds = bench::compare(
        {"hex encode " + size + " against nettle", bytes.size(), 1},
        [&] { bench::keep(encoding->encode(bytes)); }, nettleEncode);
    holds &= bench::compare(
        {"hex decode " + size + " against nettle", bytes.size(), 1},
        [&] { bench::keep(encoding->decode(text)); }, nettleDecode);
    return holds;
}
}
}

int main() {
    using namespace vistrel;
    const auto hex = GAD_StringEncoding::hexStringEncoding();
    const auto base32 = GAD_StringEncoding::rfc4648Base32StringEncoding();
    bool holds = true;
    // First, because the programs that these start anew must print nothing else.
    for (const auto& [size, count] :
         {std::pair("64 B", 64UL), std::pair("4 KB", 4096UL), std::pair("1 MB", 1048576UL)})
        holds &= benchBase64(size, randomBytes(count));
    // Multiples of five bytes, so that base32 needs no padding.
    for (const auto& [size, count] :
         {std::pair("64 B", 65UL), std::pair("4 KB", 4095UL), std::pair("1 MB", 1048575UL)}) {
        const Bytes bytes = randomBytes(count);
        holds &= benchAgainstGeneral(std::string("hex ") + size,
                                     General(*hex, 4, "0123456789ABCDEF"), bytes);
        holds &=
            benchAgainstGeneral(std::string("base32 ") + size,
                                General(*base32, 5, "ABCDEFGHIJKLMNOPQRSTUVWXYZ234567"), bytes);
        holds &= benchHexAgainstNettle(size, bytes);
    }
    return holds ? 0 : 1;
}
