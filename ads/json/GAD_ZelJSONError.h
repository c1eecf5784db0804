#pragma once
#include "platform/foundation/NSError.h"

#include <memory>
#include <string>
#include <utility>

namespace vistrel {
inline constexpr const char* GAD_ZelJSONErrorDomain = "GAD_ZelJSONErrorDomain";

enum class GAD_ZelJSONErrorCode : int {
    CannotBeWritten = 1,
    BadNumber = 2,
    Parse = 3,
    NotAContainer = 4,
    ControlCharacter = 5,
    BadUnicodeEscape = 6,
    TooDeep = 7,
    BadEscape = 8,
    TrailingComma = 9,
    Garbage = 10,
    InputEnded = 11,
    NoInput = 12
};

using GAD_ZelJSONErrorPointer = std::shared_ptr<const NSError>;

/// An error of the reader or writer, with the error that caused it or null.
inline GAD_ZelJSONErrorPointer zelJSONError(GAD_ZelJSONErrorCode code, std::string message,
                                            GAD_ZelJSONErrorPointer underlying = nullptr) {
    return std::make_shared<const NSError>(GAD_ZelJSONErrorDomain, static_cast<int>(code),
                                           std::move(message), std::move(underlying));
}
}
