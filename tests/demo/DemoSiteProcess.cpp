#include "tests/demo/DemoSiteProcess.h"

#include <cstdlib>

namespace vistrel::demo {

DemoSiteProcess::DemoSiteProcess(const std::vector<std::string>& options) {
    std::vector<const char*> arguments{DEMO_SITE_PROGRAM};
    for (const std::string& option : options)
        arguments.push_back(option.c_str());
    arguments.push_back(nullptr);
    process_ = g_subprocess_newv(arguments.data(), G_SUBPROCESS_FLAGS_STDOUT_PIPE, nullptr);
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

DemoSiteProcess& sharedSite() {
    static DemoSiteProcess site;
    return site;
}
}
