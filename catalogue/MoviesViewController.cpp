#include "catalogue/MoviesViewController.h"

#include "catalogue/MovieCatalogue.h"
#include "catalogue/MoviesTableViewCell.h"
#include "platform/foundation/NSBundle.h"
#include "platform/foundation/Weakly.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/UIBarStyle.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UINavigationController.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UIWebView.h"
#include "web/WebBrowserViewController.h"

namespace vistrel {

namespace {

constexpr const char* CellIdentifier = "Cell";
constexpr double kCardHeight = 160;

}

MoviesViewController::MoviesViewController() = default;

MoviesViewController::~MoviesViewController() = default;

void MoviesViewController::viewDidLoad() {
    UIViewController::viewDidLoad();
    setTitle("Movies");
    addBackground();
    addTable();
    moviesList_ = catalogueRecords(movieCatalogue());
}

void MoviesViewController::addBackground() {
    auto background = std::make_shared<UIImageView>(view()->bounds());
    background->setImage(UIImage::imageWithContentsOfFile(
        NSBundle::mainBundle().pathForResourceOfType("MoviesBackground", "jpg")));
    view()->addSubview(std::move(background));
}

void MoviesViewController::addTable() {
    const CGSize size = view()->bounds().size;
    tableView_ =
        std::make_shared<UITableView>(CGRectMake(0, 0, size.width, size.height - kUIBarHeight));
    tableView_->setDelegate(weakReference<UITableViewDelegate>(this));
    tableView_->setDataSource(weakReference<UITableViewDataSource>(this));
    tableView_->setSeparatorStyle(UITableViewCellSeparatorStyle::None);
    tableView_->setOpaque(false);
    tableView_->setBackgroundColor(UIColor::clearColor());
    tableView_->setIndicatorStyle(UIScrollViewIndicatorStyle::Black);
    view()->addSubview(tableView_);
}

/// On return the row is deselected without animation. Does not call the base class.
void MoviesViewController::viewDidAppear(bool /*animated*/) {
    UIWebView::prepareEngine();
    if (const auto selected = tableView_->indexPathForSelectedRow())
        tableView_->deselectRowAtIndexPath(*selected, false);
}

void MoviesViewController::viewDidUnload() {
    tableView_->setDelegate({});
    tableView_->setDataSource({});
}

int MoviesViewController::tableViewNumberOfRowsInSection(UITableView& /*tableView*/,
                                                         int /*section*/) {
    return static_cast<int>(moviesList_.size());
}

std::optional<double>
MoviesViewController::tableViewHeightForRowAtIndexPath(UITableView& /*tableView*/,
                                                       const NSIndexPath& /*indexPath*/) {
    return kCardHeight;
}

std::shared_ptr<UITableViewCell>
MoviesViewController::tableViewCellForRowAtIndexPath(UITableView& tableView,
                                                     const NSIndexPath& indexPath) {
    auto cell = std::dynamic_pointer_cast<MoviesTableViewCell>(
        tableView.dequeueReusableCellWithIdentifier(CellIdentifier));
    if (!cell)
        cell = std::make_shared<MoviesTableViewCell>(CellIdentifier);
    cell->setTopTextLabel("Now Showing:");
    cell->setBottomTextLabel(moviesList_[static_cast<std::size_t>(indexPath.row)].title);
    cell->setAccessoryType(UITableViewCellAccessoryType::None);
    return cell;
}

void MoviesViewController::tableViewDidSelectRowAtIndexPath(UITableView& /*tableView*/,
                                                            const NSIndexPath& indexPath) {
    const CatalogueRecord& page = moviesList_[static_cast<std::size_t>(indexPath.row)];
    auto browser = WebBrowserViewController::withTitleURL(page.title, page.URL);
    if (UINavigationController* navigation = navigationController())
        navigation->pushViewController(std::move(browser), true);
}

}
