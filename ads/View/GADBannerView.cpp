#include "ads/View/GADBannerView.h"

#include "ads/Delegate/GADDelegateManager.h"
#include "ads/Object/GADObjectPrivate.h"
#include "ads/Object/GADPrivateUtilities.h"
#include "ads/Request/GADRequest.h"
#include "platform/foundation/NSLog.h"
#include "platform/foundation/Weakly.h"

#include <utility>

namespace vistrel {

std::shared_ptr<GADBannerView> GADBannerView::withFrame(CGRect frame) {
    std::shared_ptr<GADBannerView> banner(new GADBannerView(frame));
    banner->setPrivate(GADObjectPrivate::withView(*banner));
    return banner;
}

GADBannerView::GADBannerView(CGRect frame)
    : UIView(frame) {
    setOpaque(false);
    setBackgroundColor(UIColor::clearColor());
}

GADBannerView::~GADBannerView() {
    privateObject()->cancelPendingActions();
    GADPrivateUtilities::removePrivateObjectForKey(this);
}

void GADBannerView::setPrivate(std::shared_ptr<GADObjectPrivate> object) {
    GADPrivateUtilities::setPrivateObjectForKey(std::move(object), this);
}

std::shared_ptr<GADObjectPrivate> GADBannerView::privateObject() const {
    return GADPrivateUtilities::privateObjectForKey<GADObjectPrivate>(this);
}

const std::string& GADBannerView::adUnitID() const {
    return privateObject()->adUnitID();
}

void GADBannerView::setAdUnitID(std::string adUnitID) {
    privateObject()->setAdUnitID(std::move(adUnitID));
}

std::shared_ptr<UIViewController> GADBannerView::rootViewController() const {
    return privateObject()->rootViewController().lock();
}

void GADBannerView::setRootViewController(std::weak_ptr<UIViewController> controller) {
    privateObject()->setRootViewController(std::move(controller));
}

std::shared_ptr<GADBannerViewDelegate> GADBannerView::delegate() const {
    return privateObject()->delegateManager()->bannerDelegate().lock();
}

void GADBannerView::setDelegate(std::weak_ptr<GADBannerViewDelegate> delegate) {
    GADDelegateManager& manager = *privateObject()->delegateManager();
    manager.setBannerDelegate(std::move(delegate));
    manager.setAdView(weakReference<GADBannerView>(this));
}

std::shared_ptr<GADWebView> GADBannerView::webView() const {
    return privateObject()->webView();
}

bool GADBannerView::hasAutoRefreshed() const {
    return privateObject()->hasAutoRefreshed();
}

void GADBannerView::loadRequest(const std::shared_ptr<GADRequest>& request) {
    const auto object = privateObject();
    if (!rootViewController()) {
        NSLog("<GAD> Must set the rootViewController property of GADBannerView before calling "
              "loadRequest:");
        object->reportErrorCode(GADErrorCode::InvalidRequest);
        return;
    }
    object->loadRequest(request.get());
}

}
