#include "platform/linux/preferences/PropertyList.h"

#include <plist/plist.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

namespace vistrel {

namespace {

/// The format counts seconds from 2001-01-01 UTC.
constexpr double kReferenceDate = 978307200;

using Node = std::unique_ptr<void, decltype(&plist_free)>;

struct Freed {
    void operator()(char* text) const { std::free(text); }
};
using OwnedText = std::unique_ptr<char, Freed>;

Value valueOf(plist_t node);

Value textOf(plist_t node) {
    char* text = nullptr;
    plist_get_string_val(node, &text);
    const OwnedText owned(text);
    return {std::string(text ? text : "")};
}

Value dataOf(plist_t node) {
    char* bytes = nullptr;
    std::uint64_t size = 0;
    plist_get_data_val(node, &bytes, &size);
    const OwnedText owned(bytes);
    const auto* begin = reinterpret_cast<const std::byte*>(bytes);
    return Value::data(std::vector<std::byte>(begin, begin + size));
}

Value dateOf(plist_t node) {
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    return Value::date(kReferenceDate + seconds + microseconds / 1e6);
}

Value arrayOf(plist_t node) {
    Value::Array array;
    const std::uint32_t size = plist_array_get_size(node);
    array.reserve(size);
    for (std::uint32_t index = 0; index < size; ++index)
        array.push_back(valueOf(plist_array_get_item(node, index)));
    return {std::move(array)};
}

Value dictionaryOf(plist_t node) {
    Value::Dictionary dictionary;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    const OwnedText owned(static_cast<char*>(iterator));
    for (;;) {
        char* key = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator, &key, &item);
        if (!item)
            return {std::move(dictionary)};
        const OwnedText ownedKey(key);
        dictionary.set(key, valueOf(item));
    }
}

Value valueOf(plist_t node) {
    switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
        std::uint8_t boolean = 0;
        plist_get_bool_val(node, &boolean);
        return {boolean != 0};
    }
    case PLIST_UINT: {
        // The library keeps negative numbers in their two's complement.
        std::uint64_t bits = 0;
        plist_get_uint_val(node, &bits);
        return {static_cast<std::int64_t>(bits)};
    }
    case PLIST_REAL: {
        double number = 0;
        plist_get_real_val(node, &number);
        return {number};
    }
    case PLIST_STRING:
        return textOf(node);
    case PLIST_DATA:
        return dataOf(node);
    case PLIST_DATE:
        return dateOf(node);
    case PLIST_ARRAY:
        return arrayOf(node);
    case PLIST_DICT:
        return dictionaryOf(node);
    default:
        return {};
    }
}

plist_t nodeOf(const Value& value);

plist_t numberNode(const Value& value) {
    const std::string_view text = value.numberText();
    std::int64_t integer = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), integer);
    if (error == std::errc() && end == text.data() + text.size())
        return plist_new_uint(static_cast<std::uint64_t>(integer));
    return plist_new_real(value.doubleValue());
}

plist_t dateNode(const Value& value) {
    const double seconds = value.dateValue() - kReferenceDate;
    const double whole = std::floor(seconds);
    return plist_new_date(static_cast<std::int32_t>(whole),
                          static_cast<std::int32_t>((seconds - whole) * 1e6));
}

plist_t arrayNode(const Value& value) {
    const plist_t array = plist_new_array();
    for (const Value& item : value.array())
        if (!item.isNull())
            plist_array_append_item(array, nodeOf(item));
    return array;
}

plist_t dictionaryNode(const Value& value) {
    const plist_t dictionary = plist_new_dict();
    for (const auto& [key, item] : value.dictionary())
        if (!item.isNull())
            plist_dict_set_item(dictionary, std::string(key).c_str(), nodeOf(item));
    return dictionary;
}

plist_t nodeOf(const Value& value) {
    switch (value.kind()) {
    case Value::Kind::Boolean:
        return plist_new_bool(value.boolean() ? 1 : 0);
    case Value::Kind::Number:
        return numberNode(value);
    case Value::Kind::Date:
        return dateNode(value);
    case Value::Kind::Data:
        return plist_new_data(reinterpret_cast<const char*>(value.dataValue().data()),
                              value.dataValue().size());
    case Value::Kind::Array:
        return arrayNode(value);
    case Value::Kind::Dictionary:
        return dictionaryNode(value);
    case Value::Kind::String:
    case Value::Kind::Null:
        break;
    }
    return plist_new_string(std::string(value.string()).c_str());
}

}

std::optional<Value> valueFromPropertyList(std::span<const std::byte> bytes) {
    plist_t root = nullptr;
    const auto* data = reinterpret_cast<const char*>(bytes.data());
    const auto size = static_cast<std::uint32_t>(bytes.size());
    const auto read = plist_is_binary(data, size) ? plist_from_bin : plist_from_xml;
    read(data, size, &root);
    if (!root)
        return std::nullopt;
    const Node owned(root, plist_free);
    return valueOf(root);
}

std::vector<std::byte> propertyListFromValue(const Value& value) {
    const Node root(nodeOf(value), plist_free);
    char* bytes = nullptr;
    std::uint32_t size = 0;
    plist_to_bin(root.get(), &bytes, &size);
    const OwnedText owned(bytes);
    const auto* begin = reinterpret_cast<const std::byte*>(bytes);
    return {begin, begin + size};
}

}
