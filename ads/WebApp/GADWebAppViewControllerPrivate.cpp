#include "ads/WebApp/GADWebAppViewControllerPrivate.h"

#include "platform/uikit/UIActivityIndicatorView.h"

#include <utility>

namespace vistrel {

void GADWebAppViewControllerPrivate::removeLoadingSpinner() {
    if (const auto spinner = std::exchange(loadingSpinner_, nullptr)) {
        spinner->stopAnimating();
        spinner->removeFromSuperview();
    }
}

}
