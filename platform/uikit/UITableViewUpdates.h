#pragma once
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UITableViewRows.h"

#include <memory>
#include <optional>
#include <vector>

namespace vistrel {

/// Where a row stands once others are gone; nothing for a row that is gone itself. `deleted` is
/// sorted.
std::optional<NSIndexPath> rowAfterDeletion(const NSIndexPath& row,
                                            const std::vector<NSIndexPath>& deleted);

/// Gathers deletions between begin and end, and carries them out with their animation when the data
/// source agrees.
class UITableViewUpdates {
public:
    explicit UITableViewUpdates(UITableView& table)
        : table_(table) {}

    void begin() { ++depth_; }
    void end();
    void deleteRows(const std::vector<NSIndexPath>& paths, UITableViewRowAnimation animation);

private:
    struct Deletion;

    void apply();
    bool dataSourceAgrees(const std::vector<NSIndexPath>& deleted) const;
    void moveRows(const std::vector<NSIndexPath>& deleted, Deletion& deletion);
    void leave(UITableViewCell& cell);

    UITableView& table_;
    int depth_ = 0;
    std::vector<NSIndexPath> deleted_;
    UITableViewRowAnimation animation_ = UITableViewRowAnimation::None;
};

}
