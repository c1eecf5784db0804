#pragma once

namespace vistrel {

/// The timings of the pages that an ad leads to: "plpl" from the first load's start to the first
/// end of one, "plpd" from there on.
namespace GADLandingPageTiming {

void loadStarted();
void loadEnded();

}
}
