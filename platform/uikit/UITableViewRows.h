#pragma once
#include "platform/uikit/NSIndexPath.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vistrel {
class UITableView;
class UITableViewCell;
class UITableViewDataSource;

/// The cells of a table: those on screen with their rows, and those that wait to be used again.
/// A waiting cell stays in the table, hidden, so that its painted picture's memory is kept for the
/// next row.
class UITableViewRows {
public:
    struct Row {
        NSIndexPath path;
        std::shared_ptr<UITableViewCell> cell;
    };

    explicit UITableViewRows(UITableView& table)
        : table_(table) {}

    /// Makes the cells of the rows between the two places be there, and no others. `arrived` hears
    /// of each new one.
    void tile(double top, double bottom, const std::function<void(const Row&)>& arrived = {});
    /// All cells are for reuse.
    void recycleAll();
    void recycle(std::shared_ptr<UITableViewCell> cell);
    /// Null when none waits.
    std::shared_ptr<UITableViewCell> dequeue(const std::string& identifier);

    /// On screen, from top to bottom.
    const std::vector<Row>& visible() const { return visible_; }
    std::vector<Row> takeVisible();
    void setVisible(std::vector<Row> rows) { visible_ = std::move(rows); }
    std::shared_ptr<UITableViewCell> cellAt(const NSIndexPath& path) const;
    std::optional<NSIndexPath> pathOf(const UITableViewCell& cell) const;
    void updateSeparators();

private:
    Row make(UITableViewDataSource& source, const NSIndexPath& path);
    void place(const Row& row);
    void returnUnused(const UITableViewCell* used);

    UITableView& table_;
    std::vector<Row> visible_;
    std::map<std::string, std::vector<std::shared_ptr<UITableViewCell>>> waiting_;
    /// Handed out while a row is being made; what the data source does not give back waits again.
    std::vector<std::shared_ptr<UITableViewCell>> handedOut_;
};

}
