#pragma once
#include "platform/uikit/NSIndexPath.h"

#include <memory>
#include <optional>
#include <string>

namespace vistrel {
class UITableView;
class UITableViewCell;

/// Numbers are the phone's.
enum class UITableViewCellEditingStyle { None = 0, Delete = 1, Insert = 2 };

class UITableViewDataSource {
public:
    virtual ~UITableViewDataSource() = default;
    virtual int numberOfSectionsInTableView(UITableView&) { return 1; }
    virtual int tableViewNumberOfRowsInSection(UITableView& tableView, int section) = 0;
    virtual std::shared_ptr<UITableViewCell>
    tableViewCellForRowAtIndexPath(UITableView& tableView, const NSIndexPath& indexPath) = 0;
    /// Nothing: no header unless the delegate gives a view.
    virtual std::optional<std::string> tableViewTitleForHeaderInSection(UITableView&,
                                                                        int /*section*/) {
        return std::nullopt;
    }
    /// Without an answer every row can be edited when tableViewCommitEditingStyle is implemented.
    virtual std::optional<bool> tableViewCanEditRowAtIndexPath(UITableView&, const NSIndexPath&) {
        return std::nullopt;
    }
    virtual void tableViewCommitEditingStyleForRowAtIndexPath(UITableView&,
                                                              UITableViewCellEditingStyle,
                                                              const NSIndexPath&) {}
    /// True when rows can be deleted: swipe and editing mode are offered only then.
    virtual bool implementsCommitEditingStyle() const { return false; }
};

}
