#pragma once

namespace vistrel {

/// Drops the toolkit's complaint that a screen reader asked for a place on the whole screen: only
/// the display server knows it, and the toolkit answers with the place in the window. Call once,
/// before the first message.
void filterToolkitLog();

}
