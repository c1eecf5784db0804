#pragma once

namespace vistrel {
class UITableViewCell;

/// What a cell reports to the table that shows it: the user's touches on the row and on the
/// controls that the table puts on it.
class UITableViewCellOwner {
public:
    virtual ~UITableViewCellOwner() = default;
    virtual void cellTouchBegan(UITableViewCell& cell) = 0;
    /// Moved within the row, too far for a long press.
    virtual void cellTouchStrayed() = 0;
    virtual void cellTouchEnded() = 0;
    virtual void cellTouchCancelled() = 0;
    /// A tap without a touch, from a screen reader.
    virtual void cellActivated(UITableViewCell& cell) = 0;
    virtual void cellDeleteCirclePressed(UITableViewCell& cell) = 0;
    virtual void cellConfirmationPressed(UITableViewCell& cell) = 0;
};

}
