#pragma once
#include "ads/Object/GADObjectPrivate.h"

namespace vistrel {

/// The private half of a search banner: its requests are built by a script of their own.
class GADSearchObjectPrivate : public GADObjectPrivate {
public:
    static std::shared_ptr<GADObjectPrivate> withView(GADBannerView& view);

    std::string jsBuildAdURL() const override;

private:
    GADSearchObjectPrivate() = default;
};

}
