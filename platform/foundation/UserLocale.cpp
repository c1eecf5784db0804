#include "platform/foundation/UserLocale.h"

#include <clocale>

namespace vistrel {
void adoptUserLocale() {
    std::setlocale(LC_ALL, "");
    std::setlocale(LC_NUMERIC, "C");
}
}
