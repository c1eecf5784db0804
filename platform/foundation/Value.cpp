#include "platform/foundation/Value.h"

#include "platform/foundation/DecimalText.h"
#include "platform/foundation/ValueStorage.h"

#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace vistrel {
namespace {
template <typename T>
ValueSlot decimal(T number) {
    std::array<char, 32> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return valueStorage::ownedText(
        ValueKind::Number, {buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())});
}

ValueSlot decimalOrNull(double number) {
    return std::isfinite(number) ? decimal(number) : ValueSlot::empty(ValueKind::Null);
}

template <typename Container>
Container& scratch() {
    thread_local Container container;
    container.clear();
    return container;
}
}

Value::Value(double number)
    : slot_(decimalOrNull(number)) {}
Value::Value(const char* string)
    : Value(std::string_view(string ? string : "")) {}
Value::Value(std::string_view string)
    : slot_(valueStorage::ownedText(Kind::String, string)) {}
Value::Value(Array array)
    : slot_(std::exchange(array.slot_, ValueSlot::empty(Kind::Array))) {}
Value::Value(Dictionary dictionary)
    : slot_(std::exchange(dictionary.slot_, ValueSlot::empty(Kind::Dictionary))) {}

Value Value::number(std::string_view decimalText) {
    Value value;
    if (isDecimalText(decimalText))
        value.slot_ = valueStorage::ownedText(Kind::Number, decimalText);
    return value;
}

ValueSlot Value::ofSigned(std::int64_t integer) {
    return decimal(integer);
}
ValueSlot Value::ofUnsigned(std::uint64_t integer) {
    return decimal(integer);
}

Value Value::date(double secondsSince1970) {
    Value value;
    value.slot_ = ValueSlot::scalar(Kind::Date, secondsSince1970);
    return value;
}

Value Value::data(const std::vector<std::byte>& bytes) {
    Value value;
    value.slot_ = valueStorage::ownedText(
        Kind::Data, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    return value;
}

Value::Value(const Value& other)
    : slot_(valueStorage::copied(other.slot_)) {}

Value& Value::operator=(const Value& other) {
    return *this = Value(other);
}

Value& Value::operator=(Value&& other) noexcept {
    // The old content is freed last: the other value may be part of it.
    const ValueSlot content = std::exchange(other.slot_, ValueSlot::empty(Kind::Null));
    ValueSlot old = std::exchange(slot_, content);
    valueStorage::destroy(old);
    return *this;
}

void Value::destroyContent() {
    valueStorage::destroy(slot_);
}

double Value::doubleValue() const {
    return decimalTextAsDouble(numberText());
}
std::int64_t Value::integerValue() const {
    return decimalTextAsInteger(numberText());
}
double Value::dateValue() const {
    return isDate() ? slot_.scalar<double>() : 0;
}

std::span<const std::byte> Value::dataValue() const {
    if (!isData())
        return {};
    const std::string_view bytes = slot_.text();
    return {reinterpret_cast<const std::byte*>(bytes.data()), bytes.size()};
}

const Value::Array& Value::noArray() {
    static const Array none;
    return none;
}

const Value::Dictionary& Value::noDictionary() {
    static const Dictionary none;
    return none;
}

Value::Array& Value::array() {
    return isArray() ? reinterpret_cast<Array&>(slot_) : scratch<Array>();
}

Value::Dictionary& Value::dictionary() {
    return isDictionary() ? reinterpret_cast<Dictionary&>(slot_) : scratch<Dictionary>();
}

const Value* Value::find(std::string_view key) const {
    return dictionary().find(key);
}

bool operator==(const Value& a, const Value& b) {
    return valueStorage::areEqual(a.slot_, b.slot_);
}
}
