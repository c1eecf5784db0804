#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIKey.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UITableViewCell.h"
#include "platform/uikit/UITableViewEditing.h"
#include "platform/uikit/UITableViewRows.h"
#include "platform/uikit/UITableViewSelection.h"
#include "platform/uikit/UITouch.h"

namespace vistrel {

bool UITableView::keyPressed(const UIKey& key) {
    loadIfNeeded();
    return selection_->keyPressed(key) || UIScrollView::keyPressed(key);
}

bool UITableView::menuRequested(CGPoint point) {
    const auto path = indexPathForRowAtPoint(point);
    return path && selection_->showMenu(*path);
}

std::optional<std::string> UITableView::fileDraggedFrom(CGPoint point) {
    const auto path = indexPathForRowAtPoint(point);
    const auto rowsOwner = delegate();
    if (!path || !rowsOwner || isDragging() || isEditing())
        return std::nullopt;
    auto file = rowsOwner->tableViewFileForRowAtIndexPath(*this, *path);
    if (file)
        editing_->hideConfirmation(true);
    return file;
}

void UITableView::focusChanged(bool focused) {
    if (!focused)
        selection_->restKeyboard();
    else if (UIApplication::sharedApplication().events().showsFocus())
        selection_->enterKeyboard();
}

void UITableView::moveKeyboardToRowAtIndexPath(const NSIndexPath& indexPath) {
    if (selection_->focused())
        selection_->focus(indexPath);
}

std::shared_ptr<UIView> UITableView::focusedPart() {
    const auto& path = selection_->focused();
    const auto cell = path ? rows_->cellAt(*path) : nullptr;
    return cell ? cell : shared_from_this();
}

bool UITableView::shouldCaptureTouch(const UITouch& touch) {
    return UIScrollView::shouldCaptureTouch(touch) || (!isDragging() && editing_->isSwipe(touch));
}

bool UITableView::touchWillBeginInside(const UITouch& touch) {
    if (UIScrollView::touchWillBeginInside(touch))
        return true;
    return editing_->touchWillBegin(touch);
}

void UITableView::touchesBegan(const UITouch& touch) {
    if (editing_->isSwipe(touch))
        editing_->swiped(touch);
    else
        UIScrollView::touchesBegan(touch);
}

void UITableView::touchesMoved(const UITouch& touch) {
    // A swipe stays a swipe: the list does not move under the delete button.
    if (!editing_->confirming())
        UIScrollView::touchesMoved(touch);
}

void UITableView::cellTouchBegan(UITableViewCell& cell) {
    selection_->touchBegan(cell);
}

void UITableView::cellTouchStrayed() {
    selection_->touchStrayed();
}

void UITableView::cellTouchEnded() {
    selection_->touchEnded();
}

void UITableView::cellTouchCancelled() {
    selection_->touchCancelled();
}

void UITableView::cellActivated(UITableViewCell& cell) {
    selection_->activate(cell);
}

void UITableView::cellDeleteCirclePressed(UITableViewCell& cell) {
    editing_->circlePressed(cell);
}

void UITableView::cellConfirmationPressed(UITableViewCell& cell) {
    editing_->confirmationPressed(cell);
}

void UITableView::willBeginDragging() {
    editing_->hideConfirmation(true);
}

}
