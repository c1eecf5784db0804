#include "platform/uikit/UITableViewEditing.h"

#include "platform/foundation/NSBundle.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UITableViewCell.h"
#include "platform/uikit/UITableViewCellControls.h"
#include "platform/uikit/UITableViewRows.h"
#include "platform/uikit/UITouch.h"

#include <cmath>
#include <utility>

namespace vistrel {

namespace {

constexpr double kSwipeDistance = 20;

}

bool UITableViewEditing::canDelete(const NSIndexPath& path) const {
    const auto source = table_.dataSource();
    return source && source->implementsCommitEditingStyle() &&
           source->tableViewCanEditRowAtIndexPath(table_, path).value_or(true);
}

void UITableViewEditing::setEditing(bool editing, bool animated) {
    hideConfirmation(animated);
    editing_ = editing;
    const auto rows = rows_.visible();
    for (const auto& row : rows)
        row.cell->setEditing(editing && canDelete(row.path), animated);
}

void UITableViewEditing::prepareCell(UITableViewCell& cell, const NSIndexPath& path) {
    cell.setEditing(editing_ && canDelete(path), false);
    cell.setShowingDeleteConfirmation(confirming_ == path, false);
}

void UITableViewEditing::showConfirmation(const NSIndexPath& path) {
    hideConfirmation(true);
    auto cell = rows_.cellAt(path);
    if (!cell)
        return;
    std::string title;
    if (const auto delegate = table_.delegate())
        title = delegate->tableViewTitleForDeleteConfirmationButton(table_, path);
    if (title.empty())
        title = NSLocalizedString("Delete");
    confirming_ = path;
    cell->controls().setConfirmationTitle(title);
    cell->setShowingDeleteConfirmation(true, true);
}

bool UITableViewEditing::hideConfirmation(bool animated) {
    const auto path = std::exchange(confirming_, std::nullopt);
    if (!path)
        return false;
    if (auto cell = rows_.cellAt(*path))
        cell->setShowingDeleteConfirmation(false, animated);
    return true;
}

void UITableViewEditing::circlePressed(UITableViewCell& cell) {
    const auto path = rows_.pathOf(cell);
    if (path)
        showConfirmation(*path);
}

void UITableViewEditing::confirmationPressed(UITableViewCell& cell) {
    if (confirming_ && rows_.pathOf(cell) == confirming_)
        commitConfirmed();
}

void UITableViewEditing::commitConfirmed() {
    const auto path = confirming_;
    const auto source = table_.dataSource();
    if (!path || !source)
        return;
    const auto hold = table_.weak_from_this().lock();
    source->tableViewCommitEditingStyleForRowAtIndexPath(
        table_, UITableViewCellEditingStyle::Delete, *path);
    // Still there: the data source kept the row.
    hideConfirmation(true);
}

std::optional<NSIndexPath> UITableViewEditing::rowUnderStart(const UITouch& touch) const {
    return table_.indexPathForRowAtPoint(
        table_.convertPointFromView(touch.startWindowLocation, nullptr));
}

bool UITableViewEditing::isSwipe(const UITouch& touch) const {
    if (editing_ || confirming_)
        return false;
    const double across = std::abs(touch.windowLocation.x - touch.startWindowLocation.x);
    const double along = std::abs(touch.windowLocation.y - touch.startWindowLocation.y);
    if (across < kSwipeDistance || along > across / 2)
        return false;
    const auto path = rowUnderStart(touch);
    return path && canDelete(*path);
}

void UITableViewEditing::swiped(const UITouch& touch) {
    if (const auto path = rowUnderStart(touch))
        showConfirmation(*path);
}

bool UITableViewEditing::touchWillBegin(const UITouch& touch) {
    if (!confirming_)
        return false;
    const auto cell = rows_.cellAt(*confirming_);
    if (cell && cell->controls().confirmationContains(touch.windowLocation))
        return false;
    return hideConfirmation(true);
}

}
