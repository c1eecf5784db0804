#pragma once
#include "ads/Delegate/GADBannerViewDelegate.h"
#include "ads/Delegate/GADInterstitialDelegate.h"
#include "platform/uikit/UITableViewDataSource.h"
#include "platform/uikit/UITableViewDelegate.h"
#include "platform/uikit/UIViewController.h"

#include <memory>
#include <string>
#include <vector>

namespace vistrel {
class GADBannerView;
class GADInterstitial;
class GADRequest;
class UILabel;
class UITableView;

namespace demo {

/// A list of ads. Selecting a row loads its ad, as a banner below the list or as a full screen; the
/// outcome stands above the banner.
class AdGalleryViewController : public UIViewController,
                                public UITableViewDataSource,
                                public UITableViewDelegate,
                                public GADBannerViewDelegate,
                                public GADInterstitialDelegate {
public:
    /// A page of the user's own, first in the list and shown at once; empty: none.
    AdGalleryViewController(std::string ownUnit, std::string ownAddress);

    void viewDidLoad() override;

    int tableViewNumberOfRowsInSection(UITableView& tableView, int section) override;
    std::shared_ptr<UITableViewCell>
    tableViewCellForRowAtIndexPath(UITableView& tableView, const NSIndexPath& indexPath) override;
    void tableViewDidSelectRowAtIndexPath(UITableView& tableView,
                                          const NSIndexPath& indexPath) override;

    void adViewDidReceiveAd(GADBannerView& banner) override;
    void adViewDidFailToReceiveAdWithError(GADBannerView& banner,
                                           const GADRequestError& error) override;
    void adViewWillLeaveApplication(GADBannerView& banner) override;
    void interstitialDidReceiveAd(GADInterstitial& interstitial) override;
    void interstitialDidFailToReceiveAdWithError(GADInterstitial& interstitial,
                                                 const GADRequestError& error) override;

private:
    enum class Kind { Banner, SearchBanner, Interstitial, StartUp };
    struct Row {
        Kind kind;
        std::string unit;
        std::string title;
        std::string address = {}; ///< of the page itself; empty: the server chooses by unit
    };

    void show(const Row& row);
    void showBanner(const Row& row);
    void showInterstitial(const Row& row);
    void say(const std::string& text);

    std::vector<Row> rows_;
    std::shared_ptr<UITableView> tableView_;
    std::shared_ptr<UILabel> outcome_;
    std::shared_ptr<GADBannerView> banner_;
    std::shared_ptr<GADInterstitial> interstitial_;
    bool presentsWhenReady_ = false;
};

}
}
