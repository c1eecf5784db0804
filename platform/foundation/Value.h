#pragma once
#include "platform/foundation/ValueArray.h"
#include "platform/foundation/ValueDictionary.h"
#include "platform/foundation/ValueSlot.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vistrel {
template <typename T>
concept ValueInteger = std::integral<T> && !std::same_as<T, bool> && !std::same_as<T, char> &&
                       !std::same_as<T, wchar_t> && !std::same_as<T, char8_t> &&
                       !std::same_as<T, char16_t> && !std::same_as<T, char32_t>;

/// The one value type of free-form data: JSON, request parameters, user defaults.
///
/// A number is an exact decimal: it keeps the text that it was made from. Copies are independent.
/// Reading a value as a kind that it is not gives that kind's empty value and never fails.
/// Text views and references live until the value is changed or destroyed.
///
/// Sixteen bytes; texts of up to fifteen bytes and scalars take no other memory. Values that a
/// ValueBuilder made share one document until they are changed: copying them copies nothing, and
/// the first call of a changing array() or dictionary() copies that one level. No operation
/// recurses, however deep the nesting.
class Value {
public:
    using Kind = ValueKind;
    using Array = ValueArray;
    using Dictionary = ValueDictionary;

    Value()
        : slot_(ValueSlot::empty(Kind::Null)) {}
    template <std::same_as<bool> B>
    Value(B boolean)
        : slot_(ValueSlot::scalar(Kind::Boolean, boolean)) {}
    template <ValueInteger T>
    Value(T integer)
        : slot_(std::signed_integral<T> ? ofSigned(static_cast<std::int64_t>(integer))
                                        : ofUnsigned(static_cast<std::uint64_t>(integer))) {}
    /// The shortest decimal that reads back as the same double; null when not finite.
    Value(double number);
    Value(const char* string);
    Value(std::string_view string);
    Value(const std::string& string)
        : Value(std::string_view(string)) {}
    Value(Array array);
    Value(Dictionary dictionary);
    /// The text of a JSON number, kept as it stands; any other text gives null.
    static Value number(std::string_view decimalText);
    static Value date(double secondsSince1970);
    static Value data(const std::vector<std::byte>& bytes);

    Value(const Value& other);
    Value(Value&& other) noexcept
        : slot_(other.slot_) {
        other.slot_ = ValueSlot::empty(Kind::Null);
    }
    Value& operator=(const Value& other);
    Value& operator=(Value&& other) noexcept;
    ~Value() {
        if (slot_.isExternal())
            destroyContent();
    }

    [[nodiscard]] Kind kind() const { return slot_.kind(); }
    [[nodiscard]] bool isNull() const { return kind() == Kind::Null; }
    [[nodiscard]] bool isBoolean() const { return kind() == Kind::Boolean; }
    [[nodiscard]] bool isNumber() const { return kind() == Kind::Number; }
    [[nodiscard]] bool isString() const { return kind() == Kind::String; }
    [[nodiscard]] bool isDate() const { return kind() == Kind::Date; }
    [[nodiscard]] bool isData() const { return kind() == Kind::Data; }
    [[nodiscard]] bool isArray() const { return kind() == Kind::Array; }
    [[nodiscard]] bool isDictionary() const { return kind() == Kind::Dictionary; }

    [[nodiscard]] bool boolean() const { return isBoolean() && slot_.scalar<bool>(); }
    [[nodiscard]] std::string_view string() const {
        return isString() ? slot_.text() : std::string_view();
    }
    [[nodiscard]] std::string_view numberText() const {
        return isNumber() ? slot_.text() : std::string_view();
    }
    [[nodiscard]] double doubleValue() const;
    /// The number without its fraction; the nearest end of the range when it lies outside.
    [[nodiscard]] std::int64_t integerValue() const;
    /// Seconds since 1970.
    [[nodiscard]] double dateValue() const;
    [[nodiscard]] std::span<const std::byte> dataValue() const;
    [[nodiscard]] const Array& array() const {
        return isArray() ? reinterpret_cast<const Array&>(slot_) : noArray();
    }
    [[nodiscard]] const Dictionary& dictionary() const {
        return isDictionary() ? reinterpret_cast<const Dictionary&>(slot_) : noDictionary();
    }
    /// On another kind, a scratch container whose content is dropped by the next such call.
    [[nodiscard]] Array& array();
    [[nodiscard]] Dictionary& dictionary();

    /// The value of a dictionary's key; null when this is no dictionary or has no such key.
    [[nodiscard]] const Value* find(std::string_view key) const;

    /// Numbers are equal when they stand for the same decimal; dictionaries whatever their order.
    friend bool operator==(const Value& a, const Value& b);

private:
    friend class ValueBuilder;

    static ValueSlot ofSigned(std::int64_t integer);
    static ValueSlot ofUnsigned(std::uint64_t integer);
    static const Array& noArray();
    static const Dictionary& noDictionary();
    void destroyContent();

    ValueSlot slot_;
};

/// As a dictionary's members stand in memory: the key's slot and the value's.
struct ValueDictionary::Member {
    ValueSlot key;
    Value value;
};
static_assert(sizeof(Value) == 16 && sizeof(ValueDictionary::Member) == 32);
// A container is seen as the slot that it consists of.
static_assert(sizeof(ValueArray) == 16 && sizeof(ValueDictionary) == 16);

template <typename EntryType, typename Pointer>
class ValueDictionary::Iterator {
public:
    using value_type = EntryType;
    using difference_type = std::ptrdiff_t;
    using reference = EntryType;

    Iterator() = default;
    explicit Iterator(Pointer at)
        : at_(at) {}
    EntryType operator*() const { return EntryType{at_->key.text(), at_->value}; }
    Iterator& operator++() {
        ++at_;
        return *this;
    }
    Iterator operator++(int) {
        Iterator before = *this;
        ++at_;
        return before;
    }
    friend bool operator==(Iterator a, Iterator b) { return a.at_ == b.at_; }

private:
    Pointer at_ = nullptr;
};

inline const Value* ValueArray::begin() const {
    return reinterpret_cast<const Value*>(slot_.slots());
}
inline const Value* ValueArray::end() const {
    return begin() + size();
}
inline const Value& ValueArray::operator[](std::size_t index) const {
    return begin()[index];
}

inline ValueDictionary::ConstIterator ValueDictionary::begin() const {
    return ConstIterator(reinterpret_cast<const Member*>(slot_.slots()));
}
inline ValueDictionary::ConstIterator ValueDictionary::end() const {
    return ConstIterator(reinterpret_cast<const Member*>(slot_.slots()) + size());
}
}
