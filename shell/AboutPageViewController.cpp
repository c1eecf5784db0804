#include "shell/AboutPageViewController.h"

#include "platform/foundation/NSBundle.h"
#include "platform/foundation/NSURL.h"
#include "platform/foundation/PercentEncoding.h"
#include "platform/foundation/Weakly.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UINavigationBar.h"
#include "settings/Settings.h"

namespace vistrel {

namespace {

constexpr UIColor kBarTint = UIColor::colorWithRedGreenBlueAlpha(0.156F, 0.155F, 0.198F, 1);

}

std::string AboutPageViewController::donationAddress() {
    return "https://" + settingValue(kDonationHost) + "/cgi-bin/webscr" + "?cmd=_donations" +
           "&business=" + percentEncodedComponent(settingValue(kDonationBusiness)) + "&lc=IE" +
           "&item_name=" + percentEncodedComponent(settingValue(kDonationItemName)) +
           "&currency_code=EUR" + "&bn=PP%2dDonationsBF%3abtn_donate_LG%2egif%3aNonHosted";
}

void AboutPageViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    const CGSize size = view()->frame().size;
    const auto bar = std::make_shared<UINavigationBar>(CGRectMake(0, 0, size.width, kUIBarHeight));
    bar->setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleTopMargin);
    bar->setTintColor(kBarTint);

    const auto item = std::make_shared<UINavigationItem>("Credits");
    bar->pushNavigationItem(item, false);
    item->setRightBarButtonItem(
        UIBarButtonItem::withTitle("Done", UIBarButtonItemStyle::Bordered,
                                   weakly(this, &AboutPageViewController::dismissAction)));
    item->setLeftBarButtonItem(UIBarButtonItem::withTitle(
        "Donate", UIBarButtonItemStyle::Bordered, weakly(this, &AboutPageViewController::donate)));
    view()->addSubview(bar);

    const auto picture = std::make_shared<UIImageView>(
        CGRectMake(0, kUIBarHeight, size.width, size.height - kUIBarHeight));
    const std::string path = NSBundle::mainBundle().pathForResourceOfType("About", "jpg");
    if (!path.empty())
        picture->setImage(UIImage::imageWithContentsOfFile(path));
    picture->setAccessibility(
        {UIAccessibilityRole::Image, NSLocalizedString("About Vistrel"), {}, true});
    view()->addSubview(picture);
}

bool AboutPageViewController::shouldAutorotateToInterfaceOrientation(
    UIInterfaceOrientation orientation) {
    return orientation == UIInterfaceOrientation::Portrait;
}

void AboutPageViewController::dismissAction() {
    if (UIViewController* presenter = parentViewController())
        presenter->dismissModalViewControllerAnimated(true);
}

void AboutPageViewController::donate() {
    if (const auto url = NSURL::URLWithString(donationAddress()))
        UIApplication::sharedApplication().openURL(*url);
}

}
