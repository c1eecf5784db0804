#include "tests/demo/DemoSiteProcess.h"

#include <cstdlib>

namespace vistrel::demo {

DemoSiteProcess::DemoSiteProcess(const std::vector<std::string>& options) {
    std::vector<const char*> arguments{DEMO_SITE_PROGRAM};
    for (const std::string& option : options)
        arguments.push_back(option.c_str());
    arguments.push_back(nullptr);
    const auto flags = static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE |
                                                     G_SUBPROCESS_FLAGS_STDIN_PIPE);
    process_ = g_subprocess_newv(arguments.data(), flags, nullptr);
    output_ = g_data_input_stream_new(g_subprocess_get_stdout_pipe(process_));
    if (char* line = g_data_input_stream_read_line(output_, nullptr, nullptr, nullptr)) {
        firstLine_ = line;
        g_free(line);
    }
}

DemoSiteProcess::~DemoSiteProcess() {
    g_subprocess_force_exit(process_);
    g_subprocess_wait(process_, nullptr, nullptr);
    g_object_unref(output_);
    g_object_unref(process_);
}

int DemoSiteProcess::port() const {
    return std::atoi(firstLine_.c_str() + firstLine_.rfind(':') + 1);
}

std::string DemoSiteProcess::restOfOutput() {
    std::string all;
    while (char* line = g_data_input_stream_read_line(output_, nullptr, nullptr, nullptr)) {
        all.append(line).append("\n");
        g_free(line);
    }
    return all;
}

void DemoSiteProcess::closeInput() {
    g_output_stream_close(g_subprocess_get_stdin_pipe(process_), nullptr, nullptr);
}

bool DemoSiteProcess::endsWithin(double seconds) {
    GCancellable* late = g_cancellable_new();
    bool ended = false;
    g_subprocess_wait_async(
        process_, late,
        [](GObject* process, GAsyncResult* result, gpointer flag) {
            *static_cast<bool*>(flag) =
                g_subprocess_wait_finish(G_SUBPROCESS(process), result, nullptr) != FALSE;
        },
        &ended);
    const gint64 deadline = g_get_monotonic_time() + static_cast<gint64>(seconds * 1e6);
    const guint wakeUp = g_timeout_add(
        static_cast<guint>(seconds * 1000), [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; },
        nullptr);
    while (!ended && g_get_monotonic_time() < deadline)
        g_main_context_iteration(nullptr, TRUE);
    g_source_remove(wakeUp);
    if (!ended) {
        g_cancellable_cancel(late);
        while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
        }
    }
    g_object_unref(late);
    return ended;
}

int DemoSiteProcess::exitStatus() const {
    return g_subprocess_get_exit_status(process_);
}

DemoSiteProcess& sharedSite() {
    static DemoSiteProcess site;
    return site;
}
}
