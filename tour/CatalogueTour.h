#pragma once
#include "tour/TourStep.h"

#include <vector>

namespace vistrel {

/// Both catalogues: a show and a movie page opened, the list scrolled to its end. Begins and ends
/// at the main menu.
std::vector<TourStep> catalogueTour();

}
