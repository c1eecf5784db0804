#include "demo/ads/AdGalleryViewController.h"

#include "ads/Interstitial/GADInterstitial.h"
#include "ads/Object/GADRequestError.h"
#include "ads/Request/GADRequest.h"
#include "ads/Request/GADSearchRequest.h"
#include "ads/View/GADSearchBannerView.h"
#include "demo/AdTable.h"
#include "platform/foundation/Weakly.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UINavigationBar.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UITableViewCell.h"
#include "platform/uikit/UIWindow.h"

#include <utility>

namespace vistrel::demo {

namespace {
constexpr const char* kCellIdentifier = "Cell";
constexpr double kNavigationBarHeight = 44;
constexpr double kBannerHeight = 50;
constexpr double kOutcomeHeight = 36;
constexpr UIColor kSeparator = UIColor::colorWithRedGreenBlueAlpha(0.22F, 0.22F, 0.28F, 1);
constexpr UIColor kGround = UIColor::colorWithRedGreenBlueAlpha(0.114F, 0.113F, 0.143F, 1);
}

AdGalleryViewController::AdGalleryViewController(std::string ownUnit, std::string ownAddress) {
    if (!ownUnit.empty())
        rows_.push_back({Kind::Banner, std::move(ownUnit), "Your own", std::move(ownAddress)});
    for (const Ad& ad : ads())
        rows_.push_back({ad.fillsScreen ? Kind::Interstitial : Kind::Banner, std::string(ad.name),
                         std::string(ad.title)});
    rows_.push_back({Kind::Banner, "invalid-request", "Refused as invalid"});
    rows_.push_back({Kind::Banner, "unable-to-serve", "Nothing to serve"});
    rows_.push_back({Kind::Banner, "errors", "Errors of the script"});
    rows_.push_back({Kind::SearchBanner, "shop", "Search banner for \"tea\""});
    rows_.push_back({Kind::StartUp, "film-screen", "Start-up interstitial"});
    rows_.push_back({Kind::StartUp, "blank", "Start-up without an ad"});
    rows_.push_back({Kind::StartUp, "slow", "Start-up that comes too late"});
}

void AdGalleryViewController::viewDidLoad() {
    navigationItem().setTitle("Ads");
    if (navigationController())
        navigationController()->navigationBar()->setTintColor(kGround);
    const CGSize size = view()->frame().size;
    const double listHeight = size.height - kNavigationBarHeight - kBannerHeight - kOutcomeHeight;
    tableView_ = std::make_shared<UITableView>(CGRectMake(0, 0, size.width, listHeight),
                                               UITableViewStyle::Plain);
    tableView_->setBackgroundColor(kGround);
    tableView_->setSeparatorColor(kSeparator);
    tableView_->setDelegate(weakReference<UITableViewDelegate>(this));
    tableView_->setDataSource(weakReference<UITableViewDataSource>(this));
    outcome_ = std::make_shared<UILabel>(CGRectMake(0, listHeight, size.width, kOutcomeHeight));
    outcome_->setFont(UIFont::systemFontOfSize(11));
    outcome_->setNumberOfLines(2);
    outcome_->setTextColor(UIColor::whiteColor());
    outcome_->setBackgroundColor(UIColor::blackColor());
    view()->setBackgroundColor(UIColor::blackColor());
    view()->addSubview(tableView_);
    view()->addSubview(outcome_);
    say("Touch a row to load its ad.");
    if (!rows_.front().address.empty() || rows_.front().unit == "own")
        show(rows_.front());
}

int AdGalleryViewController::tableViewNumberOfRowsInSection(UITableView&, int) {
    return static_cast<int>(rows_.size());
}

std::shared_ptr<UITableViewCell>
AdGalleryViewController::tableViewCellForRowAtIndexPath(UITableView& tableView,
                                                        const NSIndexPath& indexPath) {
    auto cell = tableView.dequeueReusableCellWithIdentifier(kCellIdentifier);
    if (!cell) {
        cell = std::make_shared<UITableViewCell>(UITableViewCellStyle::Default, kCellIdentifier);
        cell->textLabel().setTextColor(UIColor::whiteColor());
        cell->textLabel().setFont(UIFont::boldSystemFontOfSize(15));
        cell->setBackgroundColor(UIColor::clearColor());
    }
    cell->textLabel().setText(rows_[static_cast<std::size_t>(indexPath.row)].title);
    return cell;
}

void AdGalleryViewController::tableViewDidSelectRowAtIndexPath(UITableView& tableView,
                                                               const NSIndexPath& indexPath) {
    tableView.deselectRowAtIndexPath(indexPath, true);
    show(rows_[static_cast<std::size_t>(indexPath.row)]);
}

void AdGalleryViewController::show(const Row& row) {
    say("Loading: " + row.title);
    if (row.kind == Kind::Banner || row.kind == Kind::SearchBanner)
        showBanner(row);
    else
        showInterstitial(row);
}

void AdGalleryViewController::showBanner(const Row& row) {
    if (banner_)
        banner_->removeFromSuperview();
    const CGRect frame = CGRectMake(0, outcome_->frame().maxY(), 320, kBannerHeight);
    const bool isSearch = row.kind == Kind::SearchBanner;
    banner_ = isSearch ? GADSearchBannerView::withFrame(frame) : GADBannerView::withFrame(frame);
    banner_->setAdUnitID(row.unit);
    banner_->setRootViewController(weak_from_this());
    banner_->setDelegate(weakReference<GADBannerViewDelegate>(this));
    view()->addSubview(banner_);
    auto request = GADRequest::request();
    if (isSearch) {
        GADSearchRequest search;
        search.setQuery("tea");
        request = search.request();
    } else if (!row.address.empty()) {
        request->setAdditionalParameters(
            std::make_shared<const Value::Dictionary>(Value::Dictionary{{"url", row.address}}));
    }
    banner_->loadRequest(request);
}

void AdGalleryViewController::showInterstitial(const Row& row) {
    interstitial_ = GADInterstitial::make();
    interstitial_->setAdUnitID(row.unit);
    interstitial_->setDelegate(weakReference<GADInterstitialDelegate>(this));
    presentsWhenReady_ = row.kind == Kind::Interstitial;
    if (presentsWhenReady_) {
        interstitial_->loadRequest(nullptr);
        return;
    }
    const auto window = view()->window()->shared_from_this();
    interstitial_->loadAndDisplayRequestUsingWindowInitialImage(
        nullptr, std::static_pointer_cast<UIWindow>(window), UIImage::imageNamed("Default.png"));
}

void AdGalleryViewController::say(const std::string& text) {
    outcome_->setText(" " + text);
}

void AdGalleryViewController::adViewDidReceiveAd(GADBannerView&) {
    say("Received.");
}

void AdGalleryViewController::adViewDidFailToReceiveAdWithError(GADBannerView&,
                                                                const GADRequestError& error) {
    say(std::to_string(error.code()) + ": " + error.localizedDescription());
}

void AdGalleryViewController::adViewWillLeaveApplication(GADBannerView&) {
    say("Leaves the application.");
}

void AdGalleryViewController::interstitialDidReceiveAd(GADInterstitial& interstitial) {
    say("Received.");
    if (presentsWhenReady_)
        interstitial.presentFromRootViewController(shared_from_this());
}

void AdGalleryViewController::interstitialDidFailToReceiveAdWithError(
    GADInterstitial&, const GADRequestError& error) {
    say(std::to_string(error.code()) + ": " + error.localizedDescription());
}

}
