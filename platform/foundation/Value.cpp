#include "platform/foundation/Value.h"

#include "platform/foundation/DecimalText.h"

#include <array>
#include <charconv>
#include <cmath>

namespace vistrel {
namespace {
template <typename T, typename Content>
const T& contentOr(const Content& content, const T& other) {
    const T* found = std::get_if<T>(&content);
    return found ? *found : other;
}
}

Value::Value(double number) {
    if (!std::isfinite(number))
        return;
    std::array<char, 32> buffer;
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    content_ = Number{std::string(buffer.data(), result.ptr)};
}

Value Value::number(std::string decimalText) {
    return isDecimalText(decimalText) ? decimal(std::move(decimalText)) : Value();
}

Value Value::decimal(std::string decimalText) {
    Value value;
    value.content_ = Number{std::move(decimalText)};
    return value;
}

Value Value::date(double secondsSince1970) {
    Value value;
    value.content_ = Date{secondsSince1970};
    return value;
}

Value Value::data(Data bytes) {
    Value value;
    value.content_ = std::move(bytes);
    return value;
}

Value::Value(const Value& other) = default;
Value::Value(Value&& other) noexcept = default;

Value::~Value() {
    if (isContainer())
        flatten();
}

Value& Value::operator=(const Value& other) {
    return *this = Value(other);
}

Value& Value::operator=(Value&& other) noexcept {
    Value old;
    old.content_ = std::move(content_);
    content_ = std::move(other.content_);
    return *this;
}

/// Empties all nested containers, so that the destructor does not recurse.
void Value::flatten() {
    Array nested;
    const auto take = [&nested](Value& value) {
        if (!value.array().empty() || !value.dictionary().empty())
            nested.push_back(std::move(value));
    };
    const auto takeChildren = [&take](Value& container) {
        if (Array* array = container.mutableArray())
            for (Value& element : *array)
                take(element);
        if (Dictionary* dictionary = container.mutableDictionary())
            for (auto& [key, value] : dictionary->members_)
                take(value);
    };
    takeChildren(*this);
    while (!nested.empty()) {
        Value container = std::move(nested.back());
        nested.pop_back();
        takeChildren(container);
    }
}

bool Value::boolean() const {
    return contentOr(content_, false);
}

std::string_view Value::string() const {
    const auto* text = std::get_if<std::string>(&content_);
    return text ? std::string_view(*text) : std::string_view();
}

std::string_view Value::numberText() const {
    const auto* number = std::get_if<Number>(&content_);
    return number ? std::string_view(number->text) : std::string_view();
}

double Value::doubleValue() const {
    return decimalTextAsDouble(numberText());
}

std::int64_t Value::integerValue() const {
    return decimalTextAsInteger(numberText());
}

double Value::dateValue() const {
    return contentOr(content_, Date{0}).secondsSince1970;
}

std::span<const std::byte> Value::dataValue() const {
    const auto* data = std::get_if<Data>(&content_);
    return data ? std::span(*data) : std::span<const std::byte>();
}

const Value::Array& Value::array() const {
    static const Array none;
    return contentOr(content_, none);
}

const Value::Dictionary& Value::dictionary() const {
    static const Dictionary none;
    return contentOr(content_, none);
}

bool Value::Number::operator==(const Number& other) const {
    return decimalTextsAreEqual(text, other.text);
}
}
