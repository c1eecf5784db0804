#include "platform/foundation/HeaderFieldNames.h"

#include <algorithm>

namespace vistrel {

namespace {
char lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}
}

bool headerFieldNamesAreEqual(std::string_view a, std::string_view b) {
    return std::equal(
        a.begin(), a.end(), b.begin(), b.end(),
        [](char x, char y) { return lower(x) == lower(y); });
}

std::vector<std::string>
valuesOfHeaderField(const std::vector<std::pair<std::string, std::string>>& fields,
                    std::string_view name) {
    std::vector<std::string> values;
    for (const auto& [field, value] : fields)
        if (headerFieldNamesAreEqual(field, name))
            values.push_back(value);
    return values;
}

std::string valueOfHeaderField(const std::vector<std::pair<std::string, std::string>>& fields,
                               std::string_view name) {
    std::string joined;
    for (const std::string& value : valuesOfHeaderField(fields, name))
        joined += (joined.empty() ? "" : ", ") + value;
    return joined;
}

}
