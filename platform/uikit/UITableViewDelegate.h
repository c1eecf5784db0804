#pragma once
#include "platform/uikit/NSIndexPath.h"

#include <memory>
#include <optional>
#include <string>

namespace vistrel {
class UITableView;
class UITableViewCell;
class UIView;

class UITableViewDelegate {
public:
    virtual ~UITableViewDelegate() = default;
    /// Nothing: the table's rowHeight.
    virtual std::optional<double> tableViewHeightForRowAtIndexPath(UITableView&,
                                                                   const NSIndexPath&) {
        return std::nullopt;
    }
    /// Null: the data source's title, if any. Asked for every section, in order, when the table
    /// loads.
    virtual std::shared_ptr<UIView> tableViewViewForHeaderInSection(UITableView&, int /*section*/) {
        return nullptr;
    }
    /// Beyond the phone: a finger has come down on a row. It may yet scroll, but if it selects the
    /// row, what was begun here is ready sooner.
    virtual void tableViewDidTouchRowAtIndexPath(UITableView&, const NSIndexPath&) {}
    virtual void tableViewDidSelectRowAtIndexPath(UITableView&, const NSIndexPath&) {}
    /// The user asks what can be done with a row, by a long press, the mouse's second button or the
    /// menu key. Shows it and returns true, unless there is nothing.
    virtual bool tableViewShowMenuForRowAtIndexPath(UITableView&, const NSIndexPath&) {
        return false;
    }
    /// The device path of the file that a row stands for, which the mouse may drag out of the
    /// window; nothing when it stands for none.
    virtual std::optional<std::string> tableViewFileForRowAtIndexPath(UITableView&,
                                                                      const NSIndexPath&) {
        return std::nullopt;
    }
    /// Empty: "Delete".
    virtual std::string tableViewTitleForDeleteConfirmationButton(UITableView&,
                                                                  const NSIndexPath&) {
        return {};
    }
};

}
