#include "platform/linux/window/ToolkitLog.h"

#include <glib.h>

#include <span>
#include <string_view>

namespace vistrel {

namespace {

constexpr std::string_view kScreenCoordinates = "Screen coordinates not supported";

GLogWriterOutput write(GLogLevelFlags level, const GLogField* fields, gsize count, gpointer data) {
    for (const GLogField& field : std::span(fields, count))
        if (std::string_view(field.key) == "MESSAGE" &&
            std::string_view(static_cast<const char*>(field.value)).starts_with(kScreenCoordinates))
            return G_LOG_WRITER_HANDLED;
    return g_log_writer_default(level, fields, count, data);
}

}

void filterToolkitLog() {
    g_log_set_writer_func(write, nullptr, nullptr);
}

}
