#pragma once
#include "catalogue/CatalogueRecord.h"
#include "platform/uikit/UITableViewDataSource.h"
#include "platform/uikit/UITableViewDelegate.h"
#include "platform/uikit/UIViewController.h"

#include <memory>
#include <vector>

namespace vistrel {
class UITableView;

/// The movie catalogue: one tall card for each index page of the content site. A tap opens the
/// page.
class MoviesViewController : public UIViewController,
                             public UITableViewDataSource,
                             public UITableViewDelegate {
public:
    MoviesViewController();
    ~MoviesViewController() override;

    const std::vector<CatalogueRecord>& moviesList() const { return moviesList_; }
    const std::shared_ptr<UITableView>& tableView() const { return tableView_; }

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    void viewDidUnload() override;

    int tableViewNumberOfRowsInSection(UITableView& tableView, int section) override;
    std::optional<double> tableViewHeightForRowAtIndexPath(UITableView& tableView,
                                                           const NSIndexPath& indexPath) override;
    std::shared_ptr<UITableViewCell>
    tableViewCellForRowAtIndexPath(UITableView& tableView, const NSIndexPath& indexPath) override;
    void tableViewDidSelectRowAtIndexPath(UITableView& tableView,
                                          const NSIndexPath& indexPath) override;

private:
    void addBackground();
    void addTable();

    std::vector<CatalogueRecord> moviesList_;
    std::shared_ptr<UITableView> tableView_;
};

}
