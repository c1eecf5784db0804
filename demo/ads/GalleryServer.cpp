#include "demo/ads/GalleryServer.h"

namespace vistrel::demo {

GalleryServer::GalleryServer(const std::string& program, const std::string& ownAdFile) {
    const char* arguments[] = {program.c_str(), "--exit-with-parent",
                               ownAdFile.empty() ? nullptr : "--own-ad", ownAdFile.c_str(),
                               nullptr};
    process_ = g_subprocess_newv(arguments,
                                 static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE |
                                                               G_SUBPROCESS_FLAGS_STDIN_PIPE),
                                 nullptr);
    if (process_ == nullptr)
        return;
    GDataInputStream* output = g_data_input_stream_new(g_subprocess_get_stdout_pipe(process_));
    if (char* line = g_data_input_stream_read_line(output, nullptr, nullptr, nullptr)) {
        address_ = line;
        g_free(line);
    }
    g_object_unref(output);
}

GalleryServer::~GalleryServer() {
    if (process_ == nullptr)
        return;
    g_subprocess_force_exit(process_);
    g_object_unref(process_);
}

}
