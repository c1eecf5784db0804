#include "ads/json/GAD_ZelJSONReader.h"
#include "ads/json/GAD_ZelJSONScan.h"

namespace vistrel {
namespace {
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

char* skipDigits(char* at) {
    while (isDigit(*at))
        ++at;
    return at;
}
}

/// The digits among the first 32 bytes are found at once; then only lengths are looked at.
char* GAD_ZelJSONReader::number(char* at) {
    char* const begin = at;
    at += *at == '-';
    const std::uint32_t others = ~jsonScan::digits(at);
    if (others == 0)
        return longNumber(begin);
    const auto whole = static_cast<unsigned>(std::countr_zero(others));
    if (whole == 0 || (whole > 1 && *at == '0'))
        return badNumber(begin);
    unsigned length = whole;
    if (at[whole] == '.') {
        const std::uint32_t afterPoint = others & ~((std::uint32_t{2} << whole) - 1);
        if (afterPoint == 0)
            return longNumber(begin);
        length = static_cast<unsigned>(std::countr_zero(afterPoint));
        if (length == whole + 1)
            return badNumber(begin);
    }
    if ((at[length] | 0x20) == 'e')
        return longNumber(begin);
    builder_.pushNumber({begin, at + length});
    return at + length;
}

/// A number with an exponent or of more than 31 bytes.
char* GAD_ZelJSONReader::longNumber(char* at) {
    char* const begin = at;
    at += *at == '-';
    bool good = *at != '0' || !isDigit(at[1]);
    at = skipDigits(at);
    if (*at == '.') {
        good = good && isDigit(at[1]);
        at = skipDigits(at + 1);
    }
    if ((*at | 0x20) == 'e') {
        ++at;
        at += *at == '+' || *at == '-';
        good = good && isDigit(*at);
        at = skipDigits(at);
    }
    if (!good)
        return badNumber(begin);
    builder_.pushNumber({begin, at});
    return at;
}

/// Says which rule the number that begins here breaks first.
char* GAD_ZelJSONReader::badNumber(const char* at) {
    at += *at == '-';
    if (*at == '0' && isDigit(at[1]))
        return fail(Code::BadNumber, "Leading 0 disallowed in number");
    if (!isDigit(*at))
        return fail(Code::BadNumber, "No digits after initial minus");
    while (isDigit(*at))
        ++at;
    if (*at == '.' && !isDigit(at[1]))
        return fail(Code::BadNumber, "No digits after decimal point");
    return fail(Code::BadNumber, "No digits after exponent");
}
}
