#pragma once
#include "ads/Object/GADObjectPrivate.h"

namespace vistrel {

/// The private half of a search banner, whose requests are built by a separate script.
class GADSearchObjectPrivate : public GADObjectPrivate {
public:
    static std::shared_ptr<GADObjectPrivate> withView(GADBannerView& view);

    std::string jsBuildAdURL() const override;

private:
    GADSearchObjectPrivate() = default;
};

}
