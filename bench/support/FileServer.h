#pragma once
#include <sys/types.h>

#include <string>

namespace bench {

/// A server process on loopback that answers every request with one file by sendfile, as fast as
/// the machine can. Ends with this object, or with its parent process.
class FileServer {
public:
    explicit FileServer(const std::string& file);
    ~FileServer();
    FileServer(const FileServer&) = delete;
    FileServer& operator=(const FileServer&) = delete;

    /// "?mb=N" at the end of an address requests only the first N MiB.
    std::string url() const;

private:
    int port_ = 0;
    pid_t process_ = -1;
};

}
