#include "bench/support/FileServer.h"

#include <unistd.h>

#include <cstdio>

/// Serves the file that is named on loopback until it is ended; prints the address first.
int main(int, char* argv[]) {
    const bench::FileServer server(argv[1]);
    std::puts(server.url().c_str());
    std::fflush(stdout);
    pause();
    return 0;
}
