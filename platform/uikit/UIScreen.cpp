#include "platform/uikit/UIScreen.h"

#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIApplication.h"

namespace vistrel {

UIScreen& UIScreen::mainScreen() {
    static UIScreen screen;
    return screen;
}

CGRect UIScreen::bounds() const {
    return CGRectMake(0, 0, 320, 480);
}

CGRect UIScreen::applicationFrame() const {
    const auto screen = bounds();
    const auto bar = UIApplication::sharedApplication().statusBarFrame();
    if (bar.isEmpty())
        return screen;
    if (bar.size.width == screen.size.width)
        return CGRectMake(0, bar.maxY(), screen.size.width, screen.size.height - bar.size.height);
    const double left = bar.minX() > 0 ? 0 : bar.size.width;
    return CGRectMake(left, 0, screen.size.width - bar.size.width, screen.size.height);
}

double UIScreen::scale() const {
    return UIImage::screenScale();
}

}
