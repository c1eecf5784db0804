#pragma once
#include "platform/foundation/ValueDictionary.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace vistrel {
template <typename T>
concept ValueInteger = std::integral<T> && !std::same_as<T, bool> && !std::same_as<T, char> &&
                       !std::same_as<T, wchar_t> && !std::same_as<T, char8_t> &&
                       !std::same_as<T, char16_t> && !std::same_as<T, char32_t>;

/// The one value type of free-form data: JSON, request parameters, user defaults.
///
/// A number is an exact decimal: it keeps the text that it was made from. Copies are independent.
/// Reading a value as another kind gives that kind's empty value; a container is changed through a
/// pointer, which is null when the value is of another kind. Destroying a value never recurses,
/// however deep the nesting; copying and comparing do.
class Value {
public:
    enum class Kind { Null, Boolean, Number, String, Date, Data, Array, Dictionary };
    using Data = std::vector<std::byte>;
    using Array = std::vector<Value>;
    using Dictionary = ValueDictionary;

    Value() = default;
    template <std::same_as<bool> B>
    Value(B boolean)
        : content_(boolean) {}
    template <ValueInteger T>
    Value(T integer)
        : content_(Number{std::to_string(integer)}) {}
    /// The shortest decimal that reads back as the same double; null when not finite.
    Value(double number);
    Value(const char* string)
        : Value(std::string(string ? string : "")) {}
    Value(std::string_view string)
        : Value(std::string(string)) {}
    Value(std::string string)
        : content_(std::move(string)) {}
    Value(Array array)
        : content_(std::move(array)) {}
    Value(Dictionary dictionary)
        : content_(std::move(dictionary)) {}
    /// The text of a JSON number, kept verbatim; any other text gives null.
    static Value number(std::string decimalText);
    /// The same without checking the text, for a reader that has just done so.
    static Value decimal(std::string decimalText);
    static Value date(double secondsSince1970);
    static Value data(Data bytes);

    Value(const Value& other);
    Value(Value&& other) noexcept;
    Value& operator=(const Value& other);
    /// The other value may be part of this one.
    Value& operator=(Value&& other) noexcept;
    ~Value();

    [[nodiscard]] Kind kind() const { return static_cast<Kind>(content_.index()); }
    [[nodiscard]] bool isNull() const { return kind() == Kind::Null; }
    [[nodiscard]] bool isBoolean() const { return kind() == Kind::Boolean; }
    [[nodiscard]] bool isNumber() const { return kind() == Kind::Number; }
    [[nodiscard]] bool isString() const { return kind() == Kind::String; }
    [[nodiscard]] bool isDate() const { return kind() == Kind::Date; }
    [[nodiscard]] bool isData() const { return kind() == Kind::Data; }
    [[nodiscard]] bool isArray() const { return kind() == Kind::Array; }
    [[nodiscard]] bool isDictionary() const { return kind() == Kind::Dictionary; }

    [[nodiscard]] bool boolean() const;
    [[nodiscard]] std::string_view string() const;
    [[nodiscard]] std::string_view numberText() const;
    [[nodiscard]] double doubleValue() const;
    /// The number without its fraction, clamped to the range.
    [[nodiscard]] std::int64_t integerValue() const;
    /// Seconds since 1970.
    [[nodiscard]] double dateValue() const;
    [[nodiscard]] std::span<const std::byte> dataValue() const;
    [[nodiscard]] const Array& array() const;
    [[nodiscard]] const Dictionary& dictionary() const;
    /// Null when this is not an array.
    [[nodiscard]] Array* mutableArray() { return std::get_if<Array>(&content_); }
    /// Null when this is not a dictionary.
    [[nodiscard]] Dictionary* mutableDictionary() { return std::get_if<Dictionary>(&content_); }

    /// The value of a dictionary's key; null when this is not a dictionary or has no such key.
    [[nodiscard]] const Value* find(std::string_view key) const { return dictionary().find(key); }

    /// Numbers are equal when they are the same decimal; dictionaries regardless of their order.
    friend bool operator==(const Value& a, const Value& b) = default;

private:
    struct Number {
        std::string text;
        bool operator==(const Number& other) const;
    };
    struct Date {
        double secondsSince1970;
        friend bool operator==(const Date& a, const Date& b) = default;
    };

    [[nodiscard]] bool isContainer() const { return kind() >= Kind::Array; }
    void flatten();

    /// In the order of Kind.
    std::variant<std::monostate, bool, Number, std::string, Date, Data, Array, Dictionary> content_;
};

struct ValueDictionary::Member {
    std::string key;
    Value value;
    friend bool operator==(const Member& a, const Member& b) = default;
};

inline ValueDictionary::ValueDictionary() noexcept = default;
inline ValueDictionary::ValueDictionary(const ValueDictionary& other) = default;
inline ValueDictionary::ValueDictionary(ValueDictionary&& other) noexcept = default;
inline ValueDictionary& ValueDictionary::operator=(const ValueDictionary& other) = default;
inline ValueDictionary& ValueDictionary::operator=(ValueDictionary&& other) noexcept = default;
inline ValueDictionary::~ValueDictionary() = default;
}
