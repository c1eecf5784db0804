#pragma once
#include "tour/TourStep.h"

#include <vector>

namespace vistrel {

/// Browse, catch, download, list, play, delete: the steps in order.
std::vector<TourStep> mainJobTour();

}
