#pragma once

namespace vistrel {

/// Height of a navigation bar or toolbar, in points.
inline constexpr double kUIBarHeight = 44;

/// Numbers are the phone's.
enum class UIBarStyle { Default = 0, Black = 1, BlackTranslucent = 2 };

}
