#include "demo/DemoServer.h"
#include "demo/Options.h"
#include "demo/Routes.h"

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <gio/gio.h>
#include <glib-unix.h>
#include <iostream>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace vistrel::demo;

namespace {
void printAddresses() {
    for (const AddressGroup& group : servedAddresses())
        for (const Address& address : group.addresses)
            std::cout << address.address << '\t' << address.title << '\n';
}

gboolean quit(gpointer loop) {
    g_main_loop_quit(static_cast<GMainLoop*>(loop));
    return G_SOURCE_REMOVE;
}

gboolean quitAtEndOfInput(int descriptor, GIOCondition /*condition*/, gpointer loop) {
    char ignored[256];
    if (read(descriptor, ignored, sizeof ignored) > 0)
        return G_SOURCE_CONTINUE;
    return quit(loop);
}

// Leaves nothing behind when the starting process is killed: the system then sends a signal,
// and a pipe held by a more distant ancestor closes.
void followParent(pid_t parent, GMainLoop* loop) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != parent)
        std::exit(0);
    struct stat status {};
    if (fstat(STDIN_FILENO, &status) == 0 && S_ISFIFO(status.st_mode))
        g_unix_fd_add(STDIN_FILENO, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP), quitAtEndOfInput,
                      loop);
}

bool announce(const std::string& address, const std::string& file) {
    std::cout << address << std::endl;
    if (file.empty())
        return true;
    std::ofstream stream(file);
    stream << address << std::endl;
    return stream.good();
}
}

int main(int count, char** arguments) {
    const pid_t parent = getppid();
    std::string complaint;
    const std::optional<Options> options =
        parseOptions({arguments + 1, static_cast<size_t>(count > 0 ? count - 1 : 0)}, complaint);
    if (!options) {
        std::cerr << "vistrel-demo-site: " << complaint << '\n';
        return 2;
    }
    if (options->help || options->list) {
        if (options->help)
            std::cout << helpText();
        else
            printAddresses();
        return 0;
    }
    DemoServer server(options->mediaFolder, options->ownAdFile);
    const std::string address = server.listen(options->port, complaint);
    if (address.empty() || !announce(address, options->addressFile)) {
        std::cerr << "vistrel-demo-site: "
                  << (complaint.empty() ? "cannot write " + options->addressFile : complaint)
                  << '\n';
        return 1;
    }
    GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
    g_unix_signal_add(SIGTERM, quit, loop);
    g_unix_signal_add(SIGINT, quit, loop);
    if (options->exitWithParent)
        followParent(parent, loop);
    g_main_loop_run(loop);
    g_main_loop_unref(loop);
    return 0;
}
