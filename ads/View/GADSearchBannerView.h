#pragma once
#include "ads/View/GADBannerView.h"

namespace vistrel {

/// A banner with ads for a search; its requests come from GADSearchRequest::request().
class GADSearchBannerView : public GADBannerView {
public:
    static std::shared_ptr<GADBannerView> withFrame(CGRect frame);

private:
    using GADBannerView::GADBannerView;
};

}
