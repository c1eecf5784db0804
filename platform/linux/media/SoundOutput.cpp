#include "platform/linux/media/SoundOutput.h"

#include <array>
#include <cerrno>
#include <string_view>
#include <utility>

namespace vistrel {

namespace {

constexpr const char* kSilence = "fakesink";

bool opens(const char* factory) {
    GstElement* sink = gst_element_factory_make(factory, nullptr);
    if (!sink)
        return false;
    gst_object_ref_sink(sink);
    const bool opened = gst_element_set_state(sink, GST_STATE_READY) == GST_STATE_CHANGE_SUCCESS;
    gst_element_set_state(sink, GST_STATE_NULL);
    gst_object_unref(sink);
    return opened;
}

bool isDefault(const GstStructure* properties) {
    gboolean isDefaultDevice = FALSE;
    return gst_structure_get_boolean(properties, "is-default", &isDefaultDevice) && isDefaultDevice;
}

std::string routeOf(const GstStructure* properties) {
    for (const char* key : {"device.form-factor", "device.form_factor"}) {
        const char* form = gst_structure_get_string(properties, key);
        if (!form)
            continue;
        if (std::string_view(form) == "headphone")
            return "Headphone";
        if (std::string_view(form) == "headset")
            return "Headset";
        if (std::string_view(form) == "hands-free")
            return "HeadsetBT";
    }
    return "Speaker";
}

}

SoundOutput::SoundOutput(std::function<void(const std::string& line)> log)
    : log_(std::move(log)) {}

void SoundOutput::choose() {
    if (factory_)
        return;
    static constexpr std::array kDevices{"pulsesink", "alsasink"};
    for (const char* candidate : kDevices) {
        if (opens(candidate)) {
            factory_ = candidate;
            return;
        }
    }
    factory_ = kSilence;
    if (log_)
        log_("No sound device found: everything plays in time, without sound.");
}

GstElement* SoundOutput::makeSink(const char* role) {
    choose();
    GstElement* sink = gst_element_factory_make(factory_, nullptr);
    if (factory_ == kSilence)
        g_object_set(sink, "sync", TRUE, nullptr);
    if (g_object_class_find_property(G_OBJECT_GET_CLASS(sink), "stream-properties")) {
        GstStructure* properties =
            gst_structure_new("properties", "media.role", G_TYPE_STRING, role, nullptr);
        g_object_set(sink, "stream-properties", properties, nullptr);
        gst_structure_free(properties);
    }
    return sink;
}

host::Result<std::string> SoundOutput::route() {
    choose();
    if (factory_ == kSilence)
        return host::Failure{ENODEV, "There is no sound device."};
    std::string route = "Speaker";
    GstDeviceMonitor* monitor = gst_device_monitor_new();
    gst_device_monitor_add_filter(monitor, "Audio/Sink", nullptr);
    GList* devices =
        gst_device_monitor_start(monitor) ? gst_device_monitor_get_devices(monitor) : nullptr;
    for (GList* entry = devices; entry; entry = entry->next) {
        GstStructure* properties = gst_device_get_properties(GST_DEVICE(entry->data));
        if (properties && isDefault(properties))
            route = routeOf(properties);
        if (properties)
            gst_structure_free(properties);
    }
    g_list_free_full(devices, gst_object_unref);
    gst_device_monitor_stop(monitor);
    gst_object_unref(monitor);
    return route;
}

}
