#pragma once
#include "tour/TourStep.h"

#include <vector>

namespace vistrel {

/// From the downloads screen: four tracks, the player with its overlay, modes and track table, and
/// back. Begins where the main job ends.
std::vector<TourStep> musicTour();

}
