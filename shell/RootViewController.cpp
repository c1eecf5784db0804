#include "shell/RootViewController.h"

#include "ads/GADSettings.h"
#include "ads/Request/GADRequest.h"
#include "ads/View/GADBannerView.h"
#include "catalogue/MoviesViewController.h"
#include "catalogue/TVShowsViewController.h"
#include "downloads/DownloadsViewController.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/Weakly.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/CADisplayLink.h"
#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UINavigationBar.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UITableViewCell.h"
#include "platform/uikit/UIWebView.h"
#include "settings/Settings.h"
#include "shell/AboutPageViewController.h"
#include "shell/MainInterface.h"
#include "web/WebBrowserViewController.h"

#include <optional>
#include <utility>

namespace vistrel {

namespace {

constexpr const char* CellIdentifier = "Cell";
constexpr int kLogoSection = 0;
constexpr int kMenuSection = 1;
constexpr int kVIPSectionNumber = 2;
constexpr int kMoreSitesSection = 3;
constexpr double kLogoHeight = 75;
constexpr double kHeaderHeight = 32;
constexpr double kBannerWidth = 320;
constexpr double kBannerHeight = 50;

constexpr UIColor kBarTint = UIColor::colorWithRedGreenBlueAlpha(0.156F, 0.155F, 0.198F, 1);
constexpr UIColor kTableBackground = UIColor::colorWithRedGreenBlueAlpha(0.114F, 0.113F, 0.143F, 1);

MenuRecord webRecord(std::string title, const char* image, std::string url) {
    return {std::move(title), nullptr, UIImage::imageNamed(image), std::move(url)};
}

MenuRecord nativeRecord(const char* title, const char* image,
                        std::shared_ptr<UIViewController> controller) {
    return {NSLocalizedString(title), std::move(controller), UIImage::imageNamed(image), {}};
}

/// A section's header: a picture of text, and the text for a screen reader.
struct HeaderPicture {
    const char* image;
    const char* label;
};

std::optional<HeaderPicture> headerOfSection(int section) {
    switch (section) {
    case kMenuSection:
        return HeaderPicture{"ChooseSectionHeader.png", "Choose a Section"};
    case kVIPSectionNumber:
        return HeaderPicture{"VIPSectionHeader.png", "Members"};
    case kMoreSitesSection:
        return HeaderPicture{"MoreSectionHeader.png", "More Sites"};
    default:
        return std::nullopt;
    }
}

}

RootViewController::RootViewController() = default;

RootViewController::~RootViewController() = default;

void RootViewController::setTableView(std::shared_ptr<UITableView> tableView) {
    tableView_ = std::move(tableView);
}

void RootViewController::loadView() {
    loadRootView(*this);
}

void RootViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    navigationItem().setTitle("Vistrel");
    if (navigationController())
        navigationController()->navigationBar()->setTintColor(kBarTint);
    navigationItem().setRightBarButtonItem(
        UIBarButtonItem::withTitle("Credits", UIBarButtonItemStyle::Bordered,
                                   weakly(this, &RootViewController::presentAboutPage)));
    navigationItem().setLeftBarButtonItem(
        UIBarButtonItem::withTitle("Help", UIBarButtonItemStyle::Bordered,
                                   weakly(this, &RootViewController::presentHelpOptions)));
    tableView_->setBackgroundColor(kTableBackground);
    buildLists();
    addBanner();
}

void RootViewController::addBanner() {
    if (gadSettingValue(kGADEnabled) == "no")
        return;
    const double y = view()->frame().size.height - kBannerHeight - kUIBarHeight;
    bannerView_ = GADBannerView::withFrame(CGRectMake(0, y, kBannerWidth, kBannerHeight));
    bannerView_->setAdUnitID(settingValue(kBannerAdUnitID));
    bannerView_->setRootViewController(weak_from_this());
    view()->addSubview(bannerView_);
    loadBannerAfterFirstFrame();
}

/// The ad starts the page engine, which takes longer than the whole menu. The second frame is
/// requested when the first one is on the screen.
void RootViewController::loadBannerAfterFirstFrame() {
    bannerWait_ = std::make_unique<CADisplayLink>([this](double) {
        if (!std::exchange(firstFrameHasBegun_, true))
            return;
        bannerWait_->stop();
        if (bannerView_)
            bannerView_->loadRequest(GADRequest::request());
    });
    bannerWait_->start();
}

void RootViewController::buildLists() {
    downloads_ = std::make_shared<DownloadsViewController>();
    menuList_ = {
        nativeRecord("TV Shows", "TV.png", std::make_shared<TVShowsViewController>()),
        nativeRecord("Movies", "Movies.png", std::make_shared<MoviesViewController>()),
        webRecord(NSLocalizedString("Music"), "Music.png", contentSiteAddress("/music/")),
        nativeRecord("Downloads", "Downloads.png", downloads_),
    };
    moreSitesList_.clear();
    for (const PartnerSite& site : kPartnerSites) {
        const std::string address = settingValue(site.address);
        moreSitesList_.push_back(
            webRecord(settingValue(site.title), "MoreSites.png",
                      address.starts_with('/') ? contentSiteAddress(address) : address));
    }
    VIPSection_ = {
        webRecord(NSLocalizedString("VIP Login"), "VIP.png", contentSiteAddress("/vip/"))};
}

void RootViewController::viewDidAppear(bool) {
    if (const auto selected = tableView_->indexPathForSelectedRow())
        tableView_->deselectRowAtIndexPath(*selected, false);
}

void RootViewController::viewDidUnload() {
    tableView_->setDelegate({});
    tableView_->setDataSource({});
    titleButton_.reset();
    bannerView_.reset();
}

void RootViewController::presentAboutPage() {
    navigationController()->presentModalViewController(std::make_shared<AboutPageViewController>(),
                                                       true);
}

const std::vector<MenuRecord>& RootViewController::recordsOfSection(int section) const {
    static const std::vector<MenuRecord> none;
    switch (section) {
    case kMenuSection:
        return menuList_;
    case kVIPSectionNumber:
        return VIPSection_;
    case kMoreSitesSection:
        return moreSitesList_;
    default:
        return none;
    }
}

const MenuRecord* RootViewController::recordAt(const NSIndexPath& indexPath) const {
    const auto& records = recordsOfSection(indexPath.section);
    const auto row = static_cast<std::size_t>(indexPath.row);
    return indexPath.row >= 0 && row < records.size() ? &records[row] : nullptr;
}

int RootViewController::numberOfSectionsInTableView(UITableView&) {
    return 4;
}

int RootViewController::tableViewNumberOfRowsInSection(UITableView&, int section) {
    return static_cast<int>(recordsOfSection(section).size());
}

std::shared_ptr<UIView> RootViewController::tableViewViewForHeaderInSection(UITableView& tableView,
                                                                            int section) {
    if (section == kLogoSection) {
        titleButton_ = std::make_shared<UIButton>(CGRectMake(0, 0, 320, kLogoHeight));
        titleButton_->setBackgroundImageForState(UIImage::imageNamed("Logo.png"),
                                                 UIControlState::Normal);
        titleButton_->addTarget(weakly(this, &RootViewController::presentAboutPage),
                                UIControlEventTouchUpInside);
        titleButton_->setAccessibility({UIAccessibilityRole::Button, "Vistrel", {}, true});
        tableView.setSectionHeaderHeight(kLogoHeight);
        return titleButton_;
    }
    const auto picture = headerOfSection(section);
    if (!picture)
        return nullptr;
    auto header = std::make_shared<UIImageView>(CGRectMake(0, 15, view()->frame().size.width, 15));
    header->setImage(UIImage::imageNamed(picture->image));
    header->setAccessibility({UIAccessibilityRole::Heading, picture->label, {}, true});
    tableView.setSectionHeaderHeight(kHeaderHeight);
    return header;
}

std::shared_ptr<UITableViewCell>
RootViewController::tableViewCellForRowAtIndexPath(UITableView& tableView,
                                                   const NSIndexPath& indexPath) {
    auto cell = tableView.dequeueReusableCellWithIdentifier(CellIdentifier);
    if (!cell) {
        cell = std::make_shared<UITableViewCell>(UITableViewCellStyle::Default, CellIdentifier);
        cell->textLabel().setTextColor(UIColor::whiteColor());
        cell->setBackgroundColor(UIColor::clearColor());
    }
    const MenuRecord* record = recordAt(indexPath);
    cell->textLabel().setText(record ? record->title : std::string());
    cell->imageView().setImage(record ? record->image : nullptr);
    cell->setAccessoryType(UITableViewCellAccessoryType::DisclosureIndicator);
    return cell;
}

void RootViewController::tableViewDidTouchRowAtIndexPath(UITableView&,
                                                         const NSIndexPath& indexPath) {
    const MenuRecord* record = recordAt(indexPath);
    if (record && !record->viewController)
        UIWebView::prepareEngine();
}

void RootViewController::tableViewDidSelectRowAtIndexPath(UITableView&,
                                                          const NSIndexPath& indexPath) {
    const MenuRecord* record = recordAt(indexPath);
    if (!record)
        return;
    if (record->viewController)
        navigationController()->pushViewController(record->viewController, true);
    else
        pushBrowser(*record);
}

void RootViewController::pushBrowser(const MenuRecord& record) {
    navigationController()->pushViewController(
        WebBrowserViewController::withTitleURL(record.title, record.URL), true);
}

}
