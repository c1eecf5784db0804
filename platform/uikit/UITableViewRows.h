#pragma once
#include "platform/graphics/UIColor.h"
#include "platform/uikit/NSIndexPath.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vistrel {
class UITableView;
class UITableViewCell;
class UITableViewDataSource;
class UITableViewLayout;

/// The cells of a table: those on screen with their rows, and those waiting for reuse. A waiting
/// cell stays in the table, hidden, so that the memory of its picture is kept for the next row.
class UITableViewRows {
public:
    struct Row {
        NSIndexPath path;
        std::shared_ptr<UITableViewCell> cell;
    };

    using Prepare = std::function<void(UITableViewCell&, const NSIndexPath&)>;

    /// `prepare` is called for each cell that comes on screen.
    UITableViewRows(UITableView& table, const UITableViewLayout& layout, Prepare prepare)
        : table_(table)
        , layout_(layout)
        , prepare_(std::move(prepare)) {}

    /// Shows exactly the rows between the two places. `arrived` is called for each new one.
    void tile(double top, double bottom, const std::function<void(const Row&)>& arrived = {});
    void recycleAll();
    void recycle(std::shared_ptr<UITableViewCell> cell);
    /// Null when no cell waits.
    std::shared_ptr<UITableViewCell> dequeue(const std::string& identifier);

    /// On screen, from top to bottom.
    const std::vector<Row>& visible() const { return visible_; }
    std::vector<Row> takeVisible();
    void setVisible(std::vector<Row> rows) { visible_ = std::move(rows); }
    std::shared_ptr<UITableViewCell> cellAt(const NSIndexPath& path) const;
    std::optional<NSIndexPath> pathOf(const UITableViewCell& cell) const;
    /// The line under each row; nothing for none.
    void setSeparator(const std::optional<UIColor>& color);

private:
    Row make(UITableViewDataSource& source, const NSIndexPath& path);
    void place(const Row& row);
    void returnUnused(const UITableViewCell* used);

    UITableView& table_;
    const UITableViewLayout& layout_;
    const Prepare prepare_;
    std::optional<UIColor> separator_;
    std::vector<Row> visible_;
    std::map<std::string, std::vector<std::shared_ptr<UITableViewCell>>> waiting_;
    /// Dequeued while a row is made; cells that the data source does not return wait again.
    std::vector<std::shared_ptr<UITableViewCell>> handedOut_;
};

}
