#pragma once

namespace vistrel {

/// Numbers are the phone's.
enum class UIBarStyle { Default = 0, Black = 1, BlackTranslucent = 2 };

}
