#include "ads/json/GAD_ZelJSON.h"
#include "fuzz/Check.h"

#include <cstdint>

/// Any bytes yield a value or an error with a description, whatever the depth limit.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vistrel;
    if (size == 0)
        return 0;
    GAD_ZelJSON json;
    json.setMaxDepth(data[0] < 64 ? data[0] : 512);
    const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
    const GAD_ZelJSON::Reading fragment = json.fragmentWithString(text);
    fuzz::check(fragment.value.has_value() == (fragment.error == nullptr), "a value or an error");
    for (const NSError* error = fragment.error.get(); error;
         error = error->underlyingError().get()) {
        fuzz::check(error->code() >= 1 && error->code() <= 12, "a code of the reader");
        fuzz::check(!error->localizedDescription().empty(), "a description");
    }
    const GAD_ZelJSON::Reading object = json.objectWithString(text);
    const bool isObject =
        fragment.value && (fragment.value->isArray() || fragment.value->isDictionary());
    fuzz::check(object.value.has_value() == isObject, "objects are the fragments with content");
    return 0;
}
