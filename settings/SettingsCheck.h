#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace vistrel {

/// What is wrong with a settings file, a sentence for each mistake that begins with the line's
/// number: unknown groups and keys, and values that cannot be used.
std::vector<std::string> settingMistakes(std::string_view text);

/// Logs the mistakes of the host's settings file.
void reportSettingMistakes();

}
