#pragma once

namespace vistrel {

/// Times the pages that an ad leads to: "plpl" from the start of the first load to the first end of
/// a load, "plpd" from there on.
namespace GADLandingPageTiming {

void loadStarted();
void loadEnded();

}
}
