#include "tests/uikit/TableTest.h"

#include <sstream>
#include <utility>

namespace vistrel {

int CountingCell::made = 0;
int CountingCell::painted = 0;

CountingCell::CountingCell()
    : UITableViewCell(UITableViewCellStyle::Default, "Cell") {
    ++made;
}

void CountingCell::drawRect(const CGRect&) {
    ++painted;
}

int RowsOwner::numberOfSectionsInTableView(UITableView&) {
    return static_cast<int>(rows.size());
}

int RowsOwner::tableViewNumberOfRowsInSection(UITableView&, int section) {
    return static_cast<int>(rows[static_cast<std::size_t>(section)].size());
}

std::shared_ptr<UITableViewCell>
RowsOwner::tableViewCellForRowAtIndexPath(UITableView& table, const NSIndexPath& path) {
    auto cell =
        std::static_pointer_cast<CountingCell>(table.dequeueReusableCellWithIdentifier("Cell"));
    if (!cell)
        cell = std::make_shared<CountingCell>();
    cell->text = rows[static_cast<std::size_t>(path.section)][static_cast<std::size_t>(path.row)];
    cell->setNeedsDisplay();
    return cell;
}

std::optional<std::string> RowsOwner::tableViewTitleForHeaderInSection(UITableView&, int section) {
    const auto index = static_cast<std::size_t>(section);
    if (index >= titles.size() || titles[index].empty())
        return std::nullopt;
    return titles[index];
}

std::shared_ptr<UIView> RowsOwner::tableViewViewForHeaderInSection(UITableView& table,
                                                                   int section) {
    const auto index = static_cast<std::size_t>(section);
    if (index < headerHeights.size())
        table.setSectionHeaderHeight(headerHeights[index]);
    return index < headerViews.size() ? headerViews[index] : nullptr;
}

std::optional<double> RowsOwner::tableViewHeightForRowAtIndexPath(UITableView&,
                                                                  const NSIndexPath&) {
    ++heightsAsked;
    return height;
}

std::optional<bool> RowsOwner::tableViewCanEditRowAtIndexPath(UITableView&,
                                                              const NSIndexPath& path) {
    return !fixedRows.contains(path);
}

void RowsOwner::tableViewCommitEditingStyleForRowAtIndexPath(UITableView& table,
                                                             UITableViewCellEditingStyle style,
                                                             const NSIndexPath& path) {
    EXPECT_EQ(style, UITableViewCellEditingStyle::Delete);
    committed.push_back(path);
    table.beginUpdates();
    auto& section = rows[static_cast<std::size_t>(path.section)];
    section.erase(section.begin() + path.row);
    table.deleteRowsAtIndexPaths({path}, UITableViewRowAnimation::Top);
    table.endUpdates();
}

void RowsOwner::tableViewDidSelectRowAtIndexPath(UITableView&, const NSIndexPath& path) {
    selected.push_back(path);
}

TableTest::TableTest()
    : table(add<UITableView>(CGRectMake(0, 0, 320, 400))) {
    CountingCell::made = 0;
    CountingCell::painted = 0;
    table->setRowHeight(40);
    table->setDataSource(sharedOwner);
    table->setDelegate(sharedOwner);
}

void TableTest::fill(int count) {
    owner.rows.assign(1, {});
    for (int row = 0; row < count; ++row)
        owner.rows[0].push_back(std::to_string(row));
    table->reloadData();
    screenshot();
}

void TableTest::scrollTo(double y) {
    table->setContentOffset({0, y});
    screenshot();
}

std::vector<std::string> TableTest::shown() {
    std::vector<std::string> texts;
    for (const auto& each : table->visibleCells())
        texts.push_back(each->accessibilityLabel());
    return texts;
}

std::string TableTest::state() {
    std::ostringstream text;
    if (const double y = table->contentOffset().y; y != 0)
        text << " at " << y;
    if (table->isDragging() || table->isDecelerating())
        text << (table->isDragging() ? " dragged" : " moving");
    for (const auto& each : table->visibleCells()) {
        if (each->isHighlighted())
            text << " lit " << each->accessibilityLabel();
    }
    if (const auto offered = table->indexPathForDeleteConfirmation())
        text << " offers " << offered->row;
    for (const NSIndexPath& path : std::exchange(owner.selected, {}))
        text << " selected " << path.row;
    for (const NSIndexPath& path : std::exchange(owner.committed, {}))
        text << " deleted " << path.row;
    return text.str().empty() ? "" : text.str().substr(1);
}

}
