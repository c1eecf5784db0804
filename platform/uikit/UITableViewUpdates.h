#pragma once
#include "platform/uikit/UITableView.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace vistrel {
class UITableViewEditing;
class UITableViewLayout;
class UITableViewRows;
class UITableViewSelection;

/// Where a row moves when others are deleted; nothing for a deleted row. `deleted` is sorted.
std::optional<NSIndexPath> rowAfterDeletion(const NSIndexPath& row,
                                            const std::vector<NSIndexPath>& deleted);

/// Collects deletions between begin and end, and performs them with their animation when the data
/// source agrees.
class UITableViewUpdates {
public:
    struct Parts {
        const UITableViewLayout& layout;
        UITableViewRows& rows;
        UITableViewSelection& selection;
        UITableViewEditing& editing;
    };

    /// `rebuild` requests the table's counts and heights again.
    UITableViewUpdates(UITableView& table, const Parts& parts, std::function<void()> rebuild)
        : table_(table)
        , parts_(parts)
        , rebuild_(std::move(rebuild)) {}

    void begin() { ++depth_; }
    void end();
    void deleteRows(const std::vector<NSIndexPath>& paths);

private:
    struct Deletion;

    void apply();
    bool dataSourceAgrees(const std::vector<NSIndexPath>& deleted) const;
    void moveRows(const std::vector<NSIndexPath>& deleted, Deletion& deletion);
    void leave(UITableViewCell& cell);

    UITableView& table_;
    const Parts parts_;
    const std::function<void()> rebuild_;
    int depth_ = 0;
    std::vector<NSIndexPath> deleted_;
};

}
