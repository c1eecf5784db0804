#include "ads/View/GADSearchBannerView.h"

#include "ads/Object/GADSearchObjectPrivate.h"

namespace vistrel {

std::shared_ptr<GADBannerView> GADSearchBannerView::withFrame(CGRect frame) {
    const std::shared_ptr<GADSearchBannerView> banner(new GADSearchBannerView(frame));
    banner->setPrivate(GADSearchObjectPrivate::withView(*banner));
    return banner;
}

}
