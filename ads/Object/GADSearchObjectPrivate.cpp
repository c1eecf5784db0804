#include "ads/Object/GADSearchObjectPrivate.h"

#include "ads/View/GADBannerView.h"

namespace vistrel {

std::shared_ptr<GADObjectPrivate> GADSearchObjectPrivate::withView(GADBannerView& view) {
    std::shared_ptr<GADSearchObjectPrivate> made(new GADSearchObjectPrivate);
    made->setUp(view.bounds(), std::static_pointer_cast<GADBannerView>(view.shared_from_this()));
    return made;
}

std::string GADSearchObjectPrivate::jsBuildAdURL() const {
    return "/safa/sdk-core-v40.js";
}

}
