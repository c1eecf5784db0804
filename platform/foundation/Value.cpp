#include "platform/foundation/Value.h"

#include "platform/foundation/DecimalText.h"

#include <array>
#include <charconv>
#include <cmath>

namespace vistrel {
namespace {
template <typename T>
std::string decimal(T number) {
    std::array<char, 32> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return {buffer.data(), result.ptr};
}
}

Value::Value() = default;
Value::Value(BooleanTag, bool boolean)
    : kind_(Kind::Boolean)
    , scalar_(boolean ? 1 : 0) {}
Value::Value(double number) {
    if (std::isfinite(number)) {
        kind_ = Kind::Number;
        text_ = decimal(number);
    }
}
Value::Value(const char* string)
    : Value(std::string_view(string ? string : "")) {}
Value::Value(std::string_view string)
    : Value(std::string(string)) {}
Value::Value(std::string string)
    : kind_(Kind::String)
    , text_(std::move(string)) {}
Value::Value(Array array)
    : kind_(Kind::Array)
    , array_(std::move(array)) {}
Value::Value(Dictionary dictionary)
    : kind_(Kind::Dictionary)
    , dictionary_(std::move(dictionary)) {}

Value Value::number(std::string_view decimalText) {
    Value value;
    if (isDecimalText(decimalText)) {
        value.kind_ = Kind::Number;
        value.text_ = decimalText;
    }
    return value;
}

Value Value::ofSigned(std::int64_t integer) {
    return number(decimal(integer));
}
Value Value::ofUnsigned(std::uint64_t integer) {
    return number(decimal(integer));
}

Value Value::date(double secondsSince1970) {
    Value value;
    value.kind_ = Kind::Date;
    value.scalar_ = secondsSince1970;
    return value;
}

Value Value::data(std::vector<std::byte> bytes) {
    Value value;
    value.kind_ = Kind::Data;
    value.data_ = std::move(bytes);
    return value;
}

Value::Value(const Value& other) = default;
Value::Value(Value&& other) noexcept = default;
Value& Value::operator=(const Value& other) = default;
Value& Value::operator=(Value&& other) noexcept = default;
Value::~Value() = default;

bool Value::boolean() const {
    return isBoolean() && scalar_ != 0;
}
std::string_view Value::string() const {
    return isString() ? text_ : std::string_view();
}
std::string_view Value::numberText() const {
    return isNumber() ? text_ : std::string_view();
}
double Value::doubleValue() const {
    return decimalTextAsDouble(numberText());
}
std::int64_t Value::integerValue() const {
    return decimalTextAsInteger(numberText());
}
double Value::dateValue() const {
    return isDate() ? scalar_ : 0;
}
std::span<const std::byte> Value::dataValue() const {
    return data_;
}

const Value::Array& Value::array() const {
    return array_;
}
const Value::Dictionary& Value::dictionary() const {
    return dictionary_;
}

Value::Array& Value::array() {
    thread_local Array scratch;
    if (isArray())
        return array_;
    scratch.clear();
    return scratch;
}

Value::Dictionary& Value::dictionary() {
    thread_local Dictionary scratch;
    if (isDictionary())
        return dictionary_;
    scratch.clear();
    return scratch;
}

const Value* Value::find(std::string_view key) const {
    return dictionary().find(key);
}

bool operator==(const Value& a, const Value& b) {
    if (a.kind_ != b.kind_)
        return false;
    if (a.isNumber())
        return decimalTextsAreEqual(a.text_, b.text_);
    return a.scalar_ == b.scalar_ && a.text_ == b.text_ && a.data_ == b.data_ &&
           a.array_ == b.array_ && a.dictionary_ == b.dictionary_;
}
}
