#pragma once
#include "tests/support/Testing.h"

#include <filesystem>

namespace vistrel {

/// A self-signed certificate for "localhost" and its key, in files that are removed with it.
class TestCertificate {
public:
    TestCertificate() {
        char pattern[] = "/tmp/vistrel-certificate-XXXXXX";
        if (!::mkdtemp(pattern))
            return;
        folder_ = pattern;
        const std::string command =
            "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2"
            " -subj /CN=localhost -addext subjectAltName=DNS:localhost -keyout " +
            keyFile() + " -out " + certificateFile() + " >/dev/null 2>&1";
        made_ = std::system(command.c_str()) == 0;
    }
    ~TestCertificate() {
        std::error_code ignored;
        if (!folder_.empty())
            std::filesystem::remove_all(folder_, ignored);
    }
    TestCertificate(const TestCertificate&) = delete;
    TestCertificate& operator=(const TestCertificate&) = delete;

    std::string certificateFile() const { return folder_ + "/cert.pem"; }
    std::string keyFile() const { return folder_ + "/key.pem"; }
    bool isMade() const { return made_; }

private:
    std::string folder_;
    bool made_ = false;
};

}
