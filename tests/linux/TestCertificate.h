#pragma once
#include "platform/linux/NativeReference.h"
#include "tests/support/TemporaryFolder.h"

#include <gio/gio.h>

namespace vistrel {

/// A self-signed certificate for "localhost" with its key, in files that are removed with it.
class TestCertificate {
public:
    TestCertificate() {
        const std::string command =
            "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -days 2"
            " -subj /CN=localhost -addext subjectAltName=DNS:localhost -keyout " +
            folder_.path("key.pem") + " -out " + file() + " >/dev/null 2>&1";
        EXPECT_EQ(std::system(command.c_str()), 0) << command;
    }

    /// Without the key.
    std::string file() const { return folder_.path("cert.pem"); }
    NativeReference<GTlsCertificate> get() const {
        return NativeReference<GTlsCertificate>::adopt(g_tls_certificate_new_from_files(
            file().c_str(), folder_.path("key.pem").c_str(), nullptr));
    }

private:
    support::TemporaryFolder folder_;
};

}
