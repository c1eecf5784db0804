#pragma once
#include "tests/support/Testing.h"

namespace vistrel::support {

/// What a test was told, in one line: "began, moved, ended".
class Heard {
public:
    void operator()(const std::string& event) { text_ += (text_.empty() ? "" : ", ") + event; }
    /// Since the last time.
    std::string take() { return std::exchange(text_, {}); }

private:
    std::string text_;
};

}
