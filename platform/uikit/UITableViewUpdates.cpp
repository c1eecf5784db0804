#include "platform/uikit/UITableViewUpdates.h"

#include "platform/foundation/Weakly.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UITableViewCell.h"
#include "platform/uikit/UITableViewEditing.h"
#include "platform/uikit/UITableViewLayout.h"
#include "platform/uikit/UITableViewRows.h"
#include "platform/uikit/UITableViewSelection.h"
#include "platform/uikit/UIViewAnimation.h"

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {

constexpr double kDeletionDuration = 0.3;

}

/// One deletion in progress: the leaving cells, and how far the rows below move up.
struct UITableViewUpdates::Deletion {
    std::vector<std::shared_ptr<UITableViewCell>> leaving;
    double height = 0;
    NSIndexPath firstMoved; ///< in the new numbering
};

std::optional<NSIndexPath> rowAfterDeletion(const NSIndexPath& row,
                                            const std::vector<NSIndexPath>& deleted) {
    const auto place = std::lower_bound(deleted.begin(), deleted.end(), row);
    if (place != deleted.end() && *place == row)
        return std::nullopt;
    const auto before = std::count_if(deleted.begin(), place, [&](const NSIndexPath& each) {
        return each.section == row.section;
    });
    return NSIndexPath{row.section, row.row - static_cast<int>(before)};
}

void UITableViewUpdates::deleteRows(const std::vector<NSIndexPath>& paths) {
    deleted_.insert(deleted_.end(), paths.begin(), paths.end());
    if (depth_ == 0)
        apply();
}

void UITableViewUpdates::end() {
    if (depth_ > 0 && --depth_ == 0)
        apply();
}

bool UITableViewUpdates::dataSourceAgrees(const std::vector<NSIndexPath>& deleted) const {
    const auto source = table_.dataSource();
    const UITableViewLayout& layout = parts_.layout;
    if (!source || source->numberOfSectionsInTableView(table_) != table_.numberOfSections())
        return false;
    for (const NSIndexPath& path : deleted)
        if (!layout.contains(path))
            return false;
    for (int section = 0; section < layout.sectionCount(); ++section) {
        const auto gone =
            std::count_if(deleted.begin(), deleted.end(),
                          [&](const NSIndexPath& path) { return path.section == section; });
        const int left = layout.rowCount(section) - static_cast<int>(gone);
        if (source->tableViewNumberOfRowsInSection(table_, section) != left)
            return false;
    }
    return true;
}

void UITableViewUpdates::apply() {
    auto deleted = std::exchange(deleted_, {});
    std::sort(deleted.begin(), deleted.end());
    deleted.erase(std::unique(deleted.begin(), deleted.end()), deleted.end());
    if (!dataSourceAgrees(deleted)) {
        table_.reloadData();
        return;
    }
    if (deleted.empty())
        return;
    table_.layoutIfNeeded();
    auto deletion = std::make_shared<Deletion>();
    UIViewAnimation::beginAnimations();
    UIViewAnimation::setAnimationDuration(kDeletionDuration);
    UIViewAnimation::setAnimationDidStop(weakly(&table_, [this, deletion](UITableView&, bool) {
        for (auto& cell : deletion->leaving)
            parts_.rows.recycle(std::move(cell));
    }));
    moveRows(deleted, *deletion);
    UIViewAnimation::commitAnimations();
}

void UITableViewUpdates::moveRows(const std::vector<NSIndexPath>& deleted, Deletion& deletion) {
    const auto moved = [&](const NSIndexPath& path) {
        return rowAfterDeletion(path, deleted);
    };
    for (const NSIndexPath& path : deleted)
        deletion.height += parts_.layout.row(path).height;
    deletion.firstMoved = deleted.front();

    parts_.editing.forgetConfirmation();
    parts_.selection.remap(moved);
    const auto before = parts_.rows.takeVisible();
    rebuild_();
    std::vector<UITableViewRows::Row> kept;
    for (const auto& row : before) {
        const auto path = moved(row.path);
        if (!path) {
            deletion.leaving.push_back(row.cell);
            leave(*row.cell);
            continue;
        }
        row.cell->setFrame(table_.rectForRowAtIndexPath(*path));
        kept.push_back({*path, row.cell});
    }
    parts_.rows.setVisible(std::move(kept));
    const CGRect area = table_.bounds();
    parts_.rows.tile(area.minY(), area.maxY(), [&](const UITableViewRows::Row& row) {
        if (row.path < deletion.firstMoved)
            return;
        const CGRect frame = row.cell->frame();
        UIViewAnimation::withoutAnimation(
            [&] { row.cell->setFrame(frame.offsetBy(0, deletion.height)); });
        row.cell->setFrame(frame);
    });
    table_.layoutSubviews();
    parts_.selection.settleKeyboard();
}

void UITableViewUpdates::leave(UITableViewCell& cell) {
    const CGRect frame = cell.frame();
    table_.sendSubviewToBack(cell);
    cell.setAlpha(0);
    cell.setFrame(frame.offsetBy(0, -frame.size.height));
}

}
