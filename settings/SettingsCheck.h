#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace vistrel {

/// The mistakes in a settings file, one sentence each, beginning with the line's number: unknown
/// groups and keys, and invalid values.
std::vector<std::string> settingMistakes(std::string_view text);

/// Logs the mistakes of the host's settings file.
void reportSettingMistakes();

}
