#include "platform/foundation/UserLocale.h"

#include <clocale>
#include <cstdlib>
#include <utility>

namespace vistrel {

namespace {

/// The variable that decides, as the system reads them.
std::string localeFor(const char* variable) {
    for (const char* name : {"LC_ALL", variable, "LANG"}) {
        const char* value = std::getenv(name);
        if (value && *value)
            return value;
    }
    return {};
}

}

std::string adoptUserLocale() {
    std::string missing;
    // All of them fail together when one is missing.
    for (const auto& [category, variable] :
         {std::pair{LC_CTYPE, "LC_CTYPE"}, std::pair{LC_COLLATE, "LC_COLLATE"},
          std::pair{LC_TIME, "LC_TIME"}, std::pair{LC_MONETARY, "LC_MONETARY"},
          std::pair{LC_MESSAGES, "LC_MESSAGES"}})
        if (!std::setlocale(category, ""))
            missing = localeFor(variable);
    std::setlocale(LC_NUMERIC, "C");
    return missing;
}

}
