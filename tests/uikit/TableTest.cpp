#include "tests/uikit/TableTest.h"

namespace vistrel {

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
    for (const NSIndexPath& path : std::exchange(owner.menus, {}))
        text << " menu " << path.row;
    return text.str().empty() ? "" : text.str().substr(1);
}

}
