#pragma once
#include "tour/TourStep.h"

#include <vector>

namespace vistrel {

/// From the downloads list back to the menu, through Help, its texts and the support mail, to the
/// credits. The mail is sent where an outgoing account is configured.
std::vector<TourStep> helpTour();

}
