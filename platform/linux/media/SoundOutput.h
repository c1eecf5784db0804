#pragma once
#include "platform/host/Result.h"

#include <gst/gst.h>

#include <functional>
#include <string>

namespace vistrel {

/// Where sound goes: the sound server, else the sound card, else nowhere, in time. Chosen at the
/// first use; that there is none is logged once.
class SoundOutput {
public:
    explicit SoundOutput(std::function<void(const std::string& line)> log);

    /// A new sink. `role` ("music", "video") is what the sound server decides by who must be silent
    /// during a call. The caller owns the (floating) reference.
    GstElement* makeSink(const char* role);
    /// What the sound comes out of, in the audio session's words; a failure without a device.
    host::Result<std::string> route();

private:
    void choose();

    std::function<void(const std::string& line)> log_;
    const char* factory_ = nullptr;
};

}
