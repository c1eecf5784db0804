#pragma once
#include "platform/host/Network.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vistrel {

/// The head of an answer, put together line by line. Interim answers (1xx) are passed over.
class HTTPHead {
public:
    /// One line with its end; the blank one completes the head. False when the server sends more
    /// than any head needs.
    [[nodiscard]] bool take(std::string_view line);

    /// Of the final answer; lines that follow are ignored.
    bool isComplete() const { return complete_; }
    int status() const { return status_; }
    const host::HeaderFields& fields() const { return fields_; }
    /// The value of the fields of that name, empty when absent.
    std::string field(std::string_view name) const;

    /// Type and subtype as they stand in the field.
    std::string mimeType() const;
    /// The address that a redirect answer names; nothing for any other answer.
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
