#pragma once
#include "platform/uikit/UIViewController.h"

#include <string>

namespace vistrel {

/// The application's credits as one picture, shown modally under a navigation bar. Portrait only.
class AboutPageViewController : public UIViewController {
public:
    /// The address for donations, from the settings.
    static std::string donationAddress();

    void viewDidLoad() override;
    bool shouldAutorotateToInterfaceOrientation(UIInterfaceOrientation orientation) override;

    void dismissAction();
    void donate();
};

}
