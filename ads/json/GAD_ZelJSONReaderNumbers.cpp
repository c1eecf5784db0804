#include "ads/json/GAD_ZelJSONReader.h"

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
    builder_.push(Value::decimal({begin, at}));
    return at;
}

/// Reports the first rule that the number breaks.
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
