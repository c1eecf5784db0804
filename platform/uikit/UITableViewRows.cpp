#include "platform/uikit/UITableViewRows.h"

#include "platform/uikit/UITableView.h"
#include "platform/uikit/UITableViewCell.h"
#include "platform/uikit/UITableViewEditing.h"
#include "platform/uikit/UITableViewLayout.h"
#include "platform/uikit/UITableViewSelection.h"
#include "platform/uikit/UIViewAnimation.h"

#include <algorithm>
#include <utility>

namespace vistrel {

void UITableViewRows::tile(double top, double bottom,
                           const std::function<void(const Row&)>& arrived) {
    const UITableViewLayout& layout = *table_.layout_;
    const auto isAway = [&](const Row& row) {
        const auto span = layout.row(row.path);
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
    for (auto path = layout.firstRowBelow(top); path && layout.row(*path).top < bottom;
         path = layout.next(*path), ++place) {
        if (place < visible_.size() && visible_[place].path == *path)
            continue;
        const Row row = make(*source, *path);
        // Asking the data source may have reloaded the table.
        if (!layout.contains(*path))
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
    if (table_.separatorStyle_ == UITableViewCellSeparatorStyle::None)
        cell.setSeparator(std::nullopt);
    else
        cell.setSeparator(table_.separatorColor_);
    table_.editing_->prepareCell(cell, row.path);
    table_.selection_->prepareCell(cell, row.path);
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

void UITableViewRows::updateSeparators() {
    for (const Row& row : visible_)
        row.cell->setSeparator(table_.separatorStyle_ == UITableViewCellSeparatorStyle::None
                                   ? std::nullopt
                                   : std::optional(table_.separatorColor_));
}

}
