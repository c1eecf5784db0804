#pragma once

namespace vistrel {

/// Without a graphics processor the toolkit's detour through GL costs a second and fifty megabytes:
/// says so to the toolkit before it starts. Changes nothing where there is one, or where the user
/// has chosen a renderer.
void chooseRenderer();

}
