#pragma once

namespace vistrel {

/// Disables GL if there is no graphics processor: software GL costs a second and fifty megabytes.
/// Call it before the toolkit starts. Does nothing if the user has chosen a renderer.
void chooseRenderer();

}
