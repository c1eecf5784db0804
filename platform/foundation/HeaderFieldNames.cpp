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
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower(x) == lower(y); });
}

std::string valueOfHeaderField(const std::vector<std::pair<std::string, std::string>>& fields,
                               std::string_view name) {
    for (const auto& [field, value] : fields) {
        if (headerFieldNamesAreEqual(field, name))
            return value;
    }
    return {};
}

}
