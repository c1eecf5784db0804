#include "catalogue/TVShowsViewController.h"

#include "catalogue/TVShowCatalogue.h"
#include "catalogue/TVShowsTableViewCell.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/Weakly.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UINavigationItem.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UIWebView.h"
#include "web/WebBrowserViewController.h"

namespace vistrel {

namespace {

constexpr const char* CellIdentifier = "Cell";

std::shared_ptr<const UIImage> resourcePicture(const char* name, const char* type) {
    return UIImage::imageWithContentsOfFile(
        NSBundle::mainBundle().pathForResourceOfType(name, type));
}

}

TVShowsViewController::TVShowsViewController() = default;

TVShowsViewController::~TVShowsViewController() = default;

void TVShowsViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    navigationItem().setTitle("TV Shows");
    UIApplication::sharedApplication().setNetworkActivityIndicatorVisible(false);
    addBackground();
    addTable();
    addShine();
    addHeading();
    tvShowList_ = catalogueRecords(tvShowCatalogue());
}

void TVShowsViewController::addBackground() {
    auto background = std::make_shared<UIImageView>(view()->bounds());
    background->setImage(resourcePicture("TVBackground", "jpg"));
    view()->addSubview(std::move(background));
}

void TVShowsViewController::addTable() {
    tableView_ = std::make_shared<UITableView>(CGRectMake(27, 145, 265, 155));
    tableView_->setDelegate(weakReference<UITableViewDelegate>(this));
    tableView_->setDataSource(weakReference<UITableViewDataSource>(this));
    tableView_->setSeparatorStyle(UITableViewCellSeparatorStyle::None);
    tableView_->setOpaque(false);
    tableView_->setBackgroundColor(UIColor::clearColor());
    tableView_->setIndicatorStyle(UIScrollViewIndicatorStyle::White);
    view()->addSubview(tableView_);
}

/// The television's glass, above the list; touches pass through it.
void TVShowsViewController::addShine() {
    auto shine = std::make_shared<UIImageView>(view()->bounds());
    shine->setImage(resourcePicture("TVShine", "png"));
    shine->setBackgroundColor(UIColor::clearColor());
    shine->setOpaque(false);
    shine->setUserInteractionEnabled(false);
    view()->addSubview(std::move(shine));
}

void TVShowsViewController::addHeading() {
    auto heading = std::make_shared<UILabel>(CGRectMake(56, 29, 207, 67));
    heading->setText("Select a Show");
    heading->setTextColor(UIColor::whiteColor());
    heading->setBackgroundColor(UIColor::clearColor());
    heading->setFont(UIFont::boldSystemFontOfSize(24));
    heading->setTextAlignment(UITextAlignment::Center);
    heading->setShadowColor(UIColor::blackColor());
    heading->setShadowOffset({0, 1});
    view()->addSubview(std::move(heading));
}

/// On return the row is deselected without animation. Does not call the base class.
void TVShowsViewController::viewDidAppear(bool /*animated*/) {
    UIWebView::prepareEngine();
    if (const auto selected = tableView_->indexPathForSelectedRow())
        tableView_->deselectRowAtIndexPath(*selected, false);
}

void TVShowsViewController::viewDidUnload() {
    tableView_->setDelegate({});
    tableView_->setDataSource({});
}

int TVShowsViewController::tableViewNumberOfRowsInSection(UITableView& /*tableView*/,
                                                          int /*section*/) {
    return static_cast<int>(tvShowList_.size());
}

std::shared_ptr<UITableViewCell>
TVShowsViewController::tableViewCellForRowAtIndexPath(UITableView& tableView,
                                                      const NSIndexPath& indexPath) {
    auto cell = std::dynamic_pointer_cast<TVShowsTableViewCell>(
        tableView.dequeueReusableCellWithIdentifier(CellIdentifier));
    if (!cell)
        cell = std::make_shared<TVShowsTableViewCell>(CellIdentifier);
    cell->setTvShowText(tvShowList_[static_cast<std::size_t>(indexPath.row)].title);
    cell->setAccessoryType(UITableViewCellAccessoryType::DisclosureIndicator);
    cell->setBackgroundImage(UIImage::imageNamed("TVTableViewCell.jpg"));
    cell->setSelectedBackgroundImage(UIImage::imageNamed("TVTableViewCellSelected.jpg"));
    return cell;
}

void TVShowsViewController::tableViewDidSelectRowAtIndexPath(UITableView& /*tableView*/,
                                                             const NSIndexPath& indexPath) {
    const CatalogueRecord& show = tvShowList_[static_cast<std::size_t>(indexPath.row)];
    auto browser = WebBrowserViewController::withTitleURL(show.title, show.URL);
    if (UINavigationController* navigation = navigationController())
        navigation->pushViewController(std::move(browser), true);
}

}
