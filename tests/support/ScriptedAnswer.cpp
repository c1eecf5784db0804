#include "tests/support/ScriptedNetwork.h"

#include <utility>

namespace vistrel::support {

ScriptedAnswer& ScriptedAnswer::status(int status) {
    status_ = status;
    return *this;
}

ScriptedAnswer& ScriptedAnswer::type(std::string mimeType) {
    mimeType_ = std::move(mimeType);
    return *this;
}

ScriptedAnswer& ScriptedAnswer::header(std::string name, std::string value) {
    headers_.emplace_back(std::move(name), std::move(value));
    return *this;
}

ScriptedAnswer& ScriptedAnswer::body(std::string bytes) {
    body_ = std::move(bytes);
    return *this;
}

ScriptedAnswer& ScriptedAnswer::announces(std::int64_t length) {
    announced_ = length;
    return *this;
}

ScriptedAnswer& ScriptedAnswer::chunks(std::vector<std::size_t> sizes) {
    chunks_ = std::move(sizes);
    return *this;
}

ScriptedAnswer& ScriptedAnswer::after(double seconds) {
    delay_ = seconds;
    return *this;
}

ScriptedAnswer& ScriptedAnswer::secondsBetweenChunks(double seconds) {
    interval_ = seconds;
    return *this;
}

ScriptedAnswer& ScriptedAnswer::redirectsTo(std::string url, int status) {
    status_ = status;
    location_ = std::move(url);
    headers_.emplace_back("Location", location_);
    return *this;
}

ScriptedAnswer& ScriptedAnswer::neverAnswers() {
    silent_ = true;
    return *this;
}

ScriptedAnswer& ScriptedAnswer::failsAfter(std::size_t bytes, host::TransferErrorKind kind,
                                           std::string message) {
    failsAt_ = bytes;
    error_ = {kind, std::move(message)};
    return *this;
}

ScriptedAnswer& ScriptedAnswer::fails(host::TransferErrorKind kind, std::string message) {
    failsBeforeHead_ = true;
    error_ = {kind, std::move(message)};
    return *this;
}

}
