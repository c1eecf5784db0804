#include "platform/linux/main/SettingsFile.h"

#include "platform/foundation/Trimmed.h"

#include <glib.h>

namespace vistrel {

SettingsFile::SettingsFile(const std::string& machinePath)
    : file_(g_key_file_new()) {
    GError* error = nullptr;
    if (g_key_file_load_from_file(file_, machinePath.c_str(), G_KEY_FILE_NONE, &error))
        return;
    if (!g_error_matches(error, G_FILE_ERROR, G_FILE_ERROR_NOENT))
        complaint_ = "Settings not read from " + machinePath + ": " + error->message;
    g_error_free(error);
}

SettingsFile::~SettingsFile() {
    g_key_file_free(file_);
}

std::optional<std::string> SettingsFile::value(const std::string& group,
                                               const std::string& key) const {
    char* text = g_key_file_get_string(file_, group.c_str(), key.c_str(), nullptr);
    if (!text)
        return std::nullopt;
    std::string value(trimmed(text)); // GLib keeps blanks at the end
    g_free(text);
    return value;
}

}
