#pragma once

namespace vistrel {

/// Numbers are the phone's.
enum class UIInterfaceOrientation {
    Portrait = 1,
    PortraitUpsideDown = 2,
    LandscapeRight = 3,
    LandscapeLeft = 4
};

constexpr bool UIInterfaceOrientationIsLandscape(UIInterfaceOrientation orientation) {
    return orientation == UIInterfaceOrientation::LandscapeRight ||
           orientation == UIInterfaceOrientation::LandscapeLeft;
}

}
