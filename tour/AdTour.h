#pragma once
#include "tour/TourStep.h"

#include <vector>

namespace vistrel {

/// The menu's banner, what it opens, and interstitials; begins and ends at the main menu. Empty
/// where no ad server is configured.
std::vector<TourStep> adTour();

}
