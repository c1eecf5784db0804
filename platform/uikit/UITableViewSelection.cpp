#include "platform/uikit/UITableViewSelection.h"

#include "platform/uikit/UIKey.h"
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UITableViewCell.h"
#include "platform/uikit/UITableViewEditing.h"
#include "platform/uikit/UITableViewLayout.h"
#include "platform/uikit/UITableViewRows.h"

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {

// Long enough that a row under a finger that starts to scroll does not flash.
constexpr double kHighlightDelay = 0.1;
constexpr double kLongPressSeconds = 0.5;

}

UITableViewSelection::~UITableViewSelection() {
    NSRunLoop::cancelPerform(delay_);
    NSRunLoop::cancelPerform(longPress_);
}

void UITableViewSelection::select(const NSIndexPath& path, bool animated) {
    if (selected_ && *selected_ != path)
        deselect(*selected_, animated);
    selected_ = path;
    if (auto cell = rows_.cellAt(path))
        cell->setSelected(true, animated);
}

void UITableViewSelection::deselect(const NSIndexPath& path, bool animated) {
    if (selected_ != path)
        return;
    selected_.reset();
    if (auto cell = rows_.cellAt(path))
        cell->setSelected(false, animated);
}

void UITableViewSelection::clear() {
    touchCancelled();
    selected_.reset();
}

void UITableViewSelection::remap(
    const std::function<std::optional<NSIndexPath>(const NSIndexPath&)>& moved) {
    touchCancelled();
    if (selected_)
        selected_ = moved(*selected_);
    // The row below takes the place of one that is gone, and the keyboard.
    for (auto* row : {&focused_, &resting_})
        if (*row)
            *row = moved(**row).value_or(**row);
}

void UITableViewSelection::settleKeyboard() {
    for (auto* row : {&focused_, &resting_})
        if (*row && !layout_.contains(**row))
            *row = layout_.previous(
                {(*row)->section, std::min((*row)->row, layout_.rowCount((*row)->section))});
    highlight(focused_, true);
}

void UITableViewSelection::prepareCell(UITableViewCell& cell, const NSIndexPath& path) {
    const bool selected = selected_ == path;
    cell.setSelected(selected, false);
    if (!selected && focused_ == path)
        cell.setHighlighted(true, false);
}

void UITableViewSelection::highlight(const std::optional<NSIndexPath>& path, bool highlighted) {
    if (!path)
        return;
    auto cell = rows_.cellAt(*path);
    if (cell && !cell->isSelected())
        cell->setHighlighted(highlighted, false);
}

// Touches.

void UITableViewSelection::touchBegan(UITableViewCell& cell) {
    leaveKeyboard();
    if (table_.isEditing())
        return;
    pressed_ = rows_.pathOf(cell);
    if (const auto delegate = table_.delegate(); delegate && pressed_)
        delegate->tableViewDidTouchRowAtIndexPath(table_, *pressed_);
    delay_ = NSRunLoop::performAfterDelay(kHighlightDelay, [this] {
        delay_ = 0;
        highlight(pressed_, true);
    });
    longPress_ = NSRunLoop::performAfterDelay(kLongPressSeconds, [this] {
        longPress_ = 0;
        const auto path = pressed_;
        // The rest of the touch selects nothing.
        if (path && showMenu(*path))
            touchCancelled();
    });
}

void UITableViewSelection::touchStrayed() {
    NSRunLoop::cancelPerform(std::exchange(longPress_, 0));
}

void UITableViewSelection::touchCancelled() {
    touchStrayed();
    NSRunLoop::cancelPerform(std::exchange(delay_, 0));
    highlight(std::exchange(pressed_, std::nullopt), false);
}

void UITableViewSelection::touchEnded() {
    touchStrayed();
    NSRunLoop::cancelPerform(std::exchange(delay_, 0));
    if (const auto path = std::exchange(pressed_, std::nullopt))
        selectForUser(*path);
}

void UITableViewSelection::activate(UITableViewCell& cell) {
    touchBegan(cell);
    touchEnded();
}

void UITableViewSelection::selectForUser(const NSIndexPath& path) {
    const auto hold = table_.weak_from_this().lock();
    select(path, false);
    if (const auto delegate = table_.delegate())
        delegate->tableViewDidSelectRowAtIndexPath(table_, path);
}

bool UITableViewSelection::showMenu(const NSIndexPath& path) {
    const auto hold = table_.weak_from_this().lock();
    const auto delegate = table_.delegate();
    if (!delegate || table_.isEditing() ||
        !delegate->tableViewShowMenuForRowAtIndexPath(table_, path))
        return false;
    editing_.hideConfirmation(true);
    return true;
}

// The keyboard.

void UITableViewSelection::leaveKeyboard() {
    resting_.reset();
    highlight(std::exchange(focused_, std::nullopt), false);
}

void UITableViewSelection::restKeyboard() {
    const auto row = focused_ ? focused_ : resting_;
    leaveKeyboard();
    resting_ = row;
}

void UITableViewSelection::enterKeyboard() {
    if (focused_)
        return;
    const bool showsSelected = selected_ && rows_.cellAt(*selected_);
    if (showsSelected)
        focus(selected_);
    else
        focus(resting_ ? resting_ : layout_.firstRowBelow(table_.bounds().minY()));
}

void UITableViewSelection::focus(std::optional<NSIndexPath> path) {
    leaveKeyboard();
    focused_ = path;
    if (!path)
        return;
    table_.scrollToRowAtIndexPath(*path, true);
    highlight(path, true);
}

std::optional<NSIndexPath> UITableViewSelection::pageAway(int direction) const {
    const auto from = focused_ ? focused_ : layout_.first();
    if (!from)
        return std::nullopt;
    const double page = table_.bounds().size.height * direction;
    const double aim = layout_.row(*from).top + page;
    if (aim <= 0)
        return layout_.first();
    const auto found = layout_.firstRowBelow(aim);
    return found ? found : layout_.last();
}

std::optional<NSIndexPath> UITableViewSelection::keyboardAim(const UIKey& key) const {
    const auto from = focused_ ? focused_ : selected_;
    const auto firstShown = layout_.firstRowBelow(table_.bounds().minY());
    switch (key.code) {
    case UIKeyCode::Down:
        return from ? layout_.next(*from) : firstShown;
    case UIKeyCode::Up:
        return from ? layout_.previous(*from) : firstShown;
    case UIKeyCode::PageDown:
        return pageAway(1);
    case UIKeyCode::PageUp:
        return pageAway(-1);
    case UIKeyCode::Home:
        return layout_.first();
    case UIKeyCode::End:
        return layout_.last();
    default:
        return std::nullopt;
    }
}

bool UITableViewSelection::keyPressed(const UIKey& key) {
    switch (key.code) {
    case UIKeyCode::Enter:
    case UIKeyCode::Space:
        return activateFocused();
    case UIKeyCode::Delete:
    case UIKeyCode::Backspace:
        return askForDeletion();
    case UIKeyCode::Menu:
        return focused_ && showMenu(NSIndexPath(*focused_));
    case UIKeyCode::Escape:
        return editing_.hideConfirmation(true);
    default:
        break;
    }
    const auto aim = keyboardAim(key);
    if (!aim)
        return false;
    editing_.hideConfirmation(true);
    focus(aim);
    return true;
}

bool UITableViewSelection::activateFocused() {
    if (editing_.confirming()) {
        editing_.commitConfirmed();
        return true;
    }
    if (!focused_ || table_.isEditing())
        return false;
    selectForUser(*focused_);
    return true;
}

bool UITableViewSelection::askForDeletion() {
    if (!focused_ || !editing_.canDelete(*focused_))
        return false;
    editing_.showConfirmation(*focused_);
    return true;
}

}
