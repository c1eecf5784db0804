#pragma once
#include <cerrno>
#include <string>
#include <utility>
#include <variant>

namespace vistrel::host {

/// What went wrong outside: an errno value and a sentence for people.
struct Failure {
    int code = EIO;
    std::string message;
};

struct Done {};

/// The value that an operation yields, or why it could not.
template <typename T>
class [[nodiscard]] Result {
public:
    Result(T value)
        : content_(std::move(value)) {}
    Result(Failure failure)
        : content_(std::move(failure)) {}

    bool ok() const { return content_.index() == 0; }
    explicit operator bool() const { return ok(); }

    /// Only when ok().
    T& value() { return std::get<0>(content_); }
    const T& value() const { return std::get<0>(content_); }
    /// Only when not ok().
    const Failure& failure() const { return std::get<1>(content_); }

private:
    std::variant<T, Failure> content_;
};

using Status = Result<Done>;

}
