#include "ads/json/GAD_ZelJSON.h"
#include "fuzz/Check.h"

#include <cstdint>

namespace {
using namespace vistrel;

/// Changes every container of a value.
void touch(Value& value) {
    if (Value::Array* array = value.mutableArray()) {
        for (Value& element : *array)
            touch(element);
        array->push_back(true);
    }
    if (Value::Dictionary* dictionary = value.mutableDictionary()) {
        for (const auto& [key, member] : Value::Dictionary(*dictionary))
            touch(*dictionary->find(key));
        dictionary->set("touched", true);
    }
}
}

/// Writing what was read gives a text that reads back equal; copies are independent.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    GAD_ZelJSON json;
    json.setMaxDepth(200);
    json.setHumanReadable((data[0] & 1) != 0);
    json.setSortKeys((data[0] & 2) != 0);
    GAD_ZelJSON::Reading first =
        json.fragmentWithString({{reinterpret_cast<const char*>(data + 1), size - 1}});
    if (!first.value)
        return 0;
    const std::string text = json.stringWithFragment(*first.value).text.value();
    const GAD_ZelJSON::Reading second = json.fragmentWithString(text);
    fuzz::check(second.value.has_value(), "what was written reads back");
    fuzz::check(*second.value == *first.value, "and is equal");
    fuzz::check(json.stringWithFragment(*second.value).text == text, "and is written alike");

    const Value copy = *first.value;
    touch(*first.value);
    fuzz::check(copy == *second.value, "a change of one leaves the other alone");
    const Value touchedCopy = *first.value;
    fuzz::check(touchedCopy == *first.value, "a copy of what was changed is equal");
    return 0;
}
