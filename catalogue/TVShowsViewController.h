#pragma once
#include "catalogue/CatalogueRecord.h"
#include "platform/uikit/UITableViewDataSource.h"
#include "platform/uikit/UITableViewDelegate.h"
#include "platform/uikit/UIViewController.h"

#include <memory>
#include <vector>

namespace vistrel {
class UITableView;

/// The TV show catalogue: a list on the screen of a television set. A tap opens the show's page.
class TVShowsViewController : public UIViewController,
                              public UITableViewDataSource,
                              public UITableViewDelegate {
public:
    TVShowsViewController();
    ~TVShowsViewController() override;

    const std::vector<CatalogueRecord>& tvShowList() const { return tvShowList_; }
    const std::shared_ptr<UITableView>& tableView() const { return tableView_; }

    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    void viewDidUnload() override;

    int tableViewNumberOfRowsInSection(UITableView& tableView, int section) override;
    std::shared_ptr<UITableViewCell>
    tableViewCellForRowAtIndexPath(UITableView& tableView, const NSIndexPath& indexPath) override;
    void tableViewDidSelectRowAtIndexPath(UITableView& tableView,
                                          const NSIndexPath& indexPath) override;

private:
    void addBackground();
    void addTable();
    void addShine();
    void addHeading();

    std::vector<CatalogueRecord> tvShowList_;
    std::shared_ptr<UITableView> tableView_;
};

}
