#pragma once
#include "platform/host/Result.h"

#include <gst/gst.h>

#include <functional>
#include <string>

namespace vistrel {

/// Chooses the sound output on first use: the sound server, else the sound card, else a silent sink
/// that keeps time. A missing device is logged once.
class SoundOutput {
public:
    explicit SoundOutput(std::function<void(const std::string& line)> log);

    /// A new sink. By its `role` ("music", "video"), the sound server decides which streams to
    /// silence during a call. The caller owns the (floating) reference.
    GstElement* makeSink(const char* role);
    /// The output's name as the audio session reports it; a failure without a device.
    host::Result<std::string> route();

private:
    void choose();

    std::function<void(const std::string& line)> log_;
    const char* factory_ = nullptr;
};

}
