#include "platform/uikit/UITableViewRows.h"

#include "platform/uikit/UITableView.h"
#include "platform/uikit/UITableViewCell.h"
#include "platform/uikit/UITableViewCellControls.h"
#include "platform/uikit/UITableViewLayout.h"
#include "platform/uikit/UIViewAnimation.h"

#include <algorithm>
#include <utility>

namespace vistrel {

void UITableViewRows::tile(double top, double bottom,
                           const std::function<void(const Row&)>& arrived) {
    const auto isAway = [&](const Row& row) {
        const auto span = layout_.row(row.path);
        return span.bottom() <= top || span.top >= bottom;
    };
    for (const Row& row : visible_)
        if (isAway(row))
            recycle(row.cell);
    std::erase_if(visible_, isAway);

    const auto source = table_.dataSource();
    if (!source)
        return;
    std::size_t place = 0;
    for (auto path = layout_.firstRowBelow(top); path && layout_.row(*path).top < bottom;
         path = layout_.next(*path), ++place) {
        if (place < visible_.size() && visible_[place].path == *path)
            continue;
        const Row row = make(*source, *path);
        // The data source may have reloaded the table.
        if (!layout_.contains(*path))
            return;
        place = std::min(place, visible_.size());
        visible_.insert(visible_.begin() + static_cast<std::ptrdiff_t>(place), row);
        if (arrived)
            arrived(row);
    }
}

UITableViewRows::Row UITableViewRows::make(UITableViewDataSource& source, const NSIndexPath& path) {
    auto cell = source.tableViewCellForRowAtIndexPath(table_, path);
    if (!cell)
        cell = std::make_shared<UITableViewCell>();
    returnUnused(cell.get());
    Row row{path, std::move(cell)};
    UIViewAnimation::withoutAnimation([&] { place(row); });
    return row;
}

void UITableViewRows::place(const Row& row) {
    UITableViewCell& cell = *row.cell;
    if (cell.superview() != &table_)
        table_.addContentAtBack(row.cell);
    const CGRect frame = table_.rectForRowAtIndexPath(row.path);
    if (cell.frame() != frame)
        cell.setFrame(frame);
    cell.setAlpha(1);
    cell.setHidden(false);
    cell.controls().setSeparator(separator_);
    prepare_(cell, row.path);
}

void UITableViewRows::recycle(std::shared_ptr<UITableViewCell> cell) {
    cell->setHidden(true);
    auto& waiting = waiting_[cell->reuseIdentifier()];
    if (cell->reuseIdentifier().empty())
        cell->removeFromSuperview();
    else
        waiting.push_back(std::move(cell));
}

void UITableViewRows::recycleAll() {
    for (const Row& row : std::exchange(visible_, {}))
        recycle(row.cell);
}

std::shared_ptr<UITableViewCell> UITableViewRows::dequeue(const std::string& identifier) {
    const auto found = waiting_.find(identifier);
    if (found == waiting_.end() || found->second.empty())
        return nullptr;
    auto cell = std::move(found->second.back());
    found->second.pop_back();
    handedOut_.push_back(cell);
    UIViewAnimation::withoutAnimation([&] { cell->prepareForReuse(); });
    return cell;
}

void UITableViewRows::returnUnused(const UITableViewCell* used) {
    for (auto& cell : std::exchange(handedOut_, {}))
        if (cell.get() != used)
            waiting_[cell->reuseIdentifier()].push_back(std::move(cell));
}

std::vector<UITableViewRows::Row> UITableViewRows::takeVisible() {
    return std::exchange(visible_, {});
}

std::shared_ptr<UITableViewCell> UITableViewRows::cellAt(const NSIndexPath& path) const {
    const auto found = std::lower_bound(
        visible_.begin(), visible_.end(), path,
        [](const Row& row, const NSIndexPath& wanted) { return row.path < wanted; });
    return found != visible_.end() && found->path == path ? found->cell : nullptr;
}

std::optional<NSIndexPath> UITableViewRows::pathOf(const UITableViewCell& cell) const {
    for (const Row& row : visible_)
        if (row.cell.get() == &cell)
            return row.path;
    return std::nullopt;
}

void UITableViewRows::setSeparator(const std::optional<UIColor>& color) {
    separator_ = color;
    for (const Row& row : visible_)
        row.cell->controls().setSeparator(color);
}

}
