#pragma once
#include "tests/support/TemporaryFolder.h"

namespace vistrel {

/// A self-signed certificate for "localhost" and its key, in files that are removed with it.
class TestCertificate {
public:
    TestCertificate() {
        const std::string command =
            "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2"
            " -subj /CN=localhost -addext subjectAltName=DNS:localhost -keyout " +
            keyFile() + " -out " + certificateFile() + " >/dev/null 2>&1";
        made_ = std::system(command.c_str()) == 0;
    }

    std::string certificateFile() const { return folder_.path("cert.pem"); }
    std::string keyFile() const { return folder_.path("key.pem"); }
    bool isMade() const { return made_; }

private:
    support::TemporaryFolder folder_;
    bool made_ = false;
};

}
