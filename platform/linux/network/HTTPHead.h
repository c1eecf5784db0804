#pragma once
#include "platform/host/Network.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vistrel {

/// The head of a response, assembled line by line. Interim responses (1xx) are skipped.
class HTTPHead {
public:
    /// Takes a line with its line break; an empty one completes the head. False when the head
    /// exceeds any reasonable size.
    [[nodiscard]] bool take(std::string_view line);

    /// Of the final response; later lines are ignored.
    bool isComplete() const { return complete_; }
    int status() const { return status_; }
    const host::HeaderFields& fields() const { return fields_; }
    /// The value of the fields of that name, empty when absent.
    std::string field(std::string_view name) const;

    /// Type and subtype, spelled as in the field.
    std::string mimeType() const;
    /// The target of a redirect; nothing for any other response.
    std::optional<std::string> location() const;

private:
    [[nodiscard]] bool endOfFields();

    int status_ = 0;
    bool complete_ = false;
    host::HeaderFields fields_;
    int interimAnswers_ = 0;
    std::size_t bytes_ = 0;
};

}
