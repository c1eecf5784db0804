#pragma once
#include "platform/uikit/NSIndexPath.h"

#include <optional>

namespace vistrel {
class UITableView;
class UITableViewCell;
class UITableViewRows;
class UITouch;

/// A table's ways to delete rows: a swipe, or editing mode with its red circles, then the
/// confirmation button.
class UITableViewEditing {
public:
    UITableViewEditing(UITableView& table, const UITableViewRows& rows)
        : table_(table)
        , rows_(rows) {}

    bool isEditing() const { return editing_; }
    void setEditing(bool editing, bool animated);
    bool canDelete(const NSIndexPath& path) const;
    /// Gives a cell that comes on screen its state.
    void prepareCell(UITableViewCell& cell, const NSIndexPath& path);
    /// When the table reloads or its rows change: no row asks for confirmation any more.
    void forgetConfirmation() { confirming_.reset(); }

    /// The row that shows its confirmation button.
    const std::optional<NSIndexPath>& confirming() const { return confirming_; }
    void showConfirmation(const NSIndexPath& path);
    /// False when there is none.
    bool hideConfirmation(bool animated);
    /// Deletes that row.
    void commitConfirmed();

    void circlePressed(UITableViewCell& cell);
    void confirmationPressed(UITableViewCell& cell);
    /// Whether the touch is a swipe over a row that can be deleted.
    bool isSwipe(const UITouch& touch) const;
    /// Offers to delete the row under the swipe.
    void swiped(const UITouch& touch);
    /// A touch elsewhere withdraws the offer and does nothing else: true.
    bool touchWillBegin(const UITouch& touch);

private:
    std::optional<NSIndexPath> rowUnderStart(const UITouch& touch) const;

    UITableView& table_;
    const UITableViewRows& rows_;
    bool editing_ = false;
    std::optional<NSIndexPath> confirming_;
};

}
