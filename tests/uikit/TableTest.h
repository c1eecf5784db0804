#pragma once
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UITableViewCell.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {

/// A cell that paints itself and counts how often.
class CountingCell : public UITableViewCell {
public:
    CountingCell()
        : UITableViewCell(UITableViewCellStyle::Default, "Cell") {
        ++made;
    }
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect&) override { ++painted; }
    std::string accessibilityLabel() const override { return text; }

    std::string text;
    inline static int made = 0;
    inline static int painted = 0;
};

/// Rows by section, with what a table asks of its owner.
class RowsOwner : public UITableViewDataSource, public UITableViewDelegate {
public:
    std::vector<std::vector<std::string>> rows;
    std::map<int, std::string> titles;                  ///< of the headers
    std::map<int, std::shared_ptr<UIView>> headerViews; ///< before titles
    std::map<int, double> headerHeights;                ///< set while a header view is handed out
    std::optional<double> height;
    bool deletes = false;
    std::set<NSIndexPath> fixedRows;

    std::string heard;     ///< " selected 2 deleted 3 menu 4"
    bool hasMenus = false; ///< rows named "1" have none
    bool hasFiles = false; ///< rows named "1" have none
    int heightsAsked = 0;

    int numberOfSectionsInTableView(UITableView&) override { return static_cast<int>(rows.size()); }
    int tableViewNumberOfRowsInSection(UITableView&, int section) override {
        return static_cast<int>(rows.at(static_cast<std::size_t>(section)).size());
    }
    std::shared_ptr<UITableViewCell>
    tableViewCellForRowAtIndexPath(UITableView& table, const NSIndexPath& path) override {
        auto cell =
            std::static_pointer_cast<CountingCell>(table.dequeueReusableCellWithIdentifier("Cell"));
        if (!cell)
            cell = std::make_shared<CountingCell>();
        cell->text = *at(path);
        cell->setNeedsDisplay();
        return cell;
    }
    std::optional<std::string> tableViewTitleForHeaderInSection(UITableView&,
                                                                int section) override {
        return titles.contains(section) ? std::optional(titles[section]) : std::nullopt;
    }
    std::shared_ptr<UIView> tableViewViewForHeaderInSection(UITableView& table,
                                                            int section) override {
        if (headerHeights.contains(section))
            table.setSectionHeaderHeight(headerHeights[section]);
        return headerViews[section];
    }
    std::optional<double> tableViewHeightForRowAtIndexPath(UITableView&,
                                                           const NSIndexPath&) override {
        ++heightsAsked;
        return height;
    }
    std::optional<bool> tableViewCanEditRowAtIndexPath(UITableView&,
                                                       const NSIndexPath& path) override {
        return !fixedRows.contains(path);
    }
    bool implementsCommitEditingStyle() const override { return deletes; }
    void tableViewCommitEditingStyleForRowAtIndexPath(UITableView& table,
                                                      UITableViewCellEditingStyle style,
                                                      const NSIndexPath& path) override {
        EXPECT_EQ(style, UITableViewCellEditingStyle::Delete);
        heard += " deleted " + std::to_string(path.row);
        table.beginUpdates();
        rows[static_cast<std::size_t>(path.section)].erase(at(path));
        table.deleteRowsAtIndexPaths({path}, UITableViewRowAnimation::Top);
        table.endUpdates();
    }
    void tableViewDidSelectRowAtIndexPath(UITableView&, const NSIndexPath& path) override {
        heard += " selected " + std::to_string(path.row);
    }
    std::optional<std::string> tableViewFileForRowAtIndexPath(UITableView&,
                                                              const NSIndexPath& path) override {
        return hasFiles && *at(path) != "1" ? std::optional("/" + *at(path)) : std::nullopt;
    }
    bool tableViewShowMenuForRowAtIndexPath(UITableView&, const NSIndexPath& path) override {
        if (!hasMenus || *at(path) == "1")
            return false;
        heard += " menu " + std::to_string(path.row);
        return true;
    }

private:
    std::vector<std::string>::iterator at(const NSIndexPath& path) {
        return rows[static_cast<std::size_t>(path.section)].begin() + path.row;
    }
};

/// A table of 320 x 400 at the window's top, with rows of 40 points unless the owner says more.
class TableTest : public support::ScreenTest {
protected:
    TableTest()
        : table(add<UITableView>(CGRectMake(0, 0, 320, 400))) {
        CountingCell::made = 0;
        CountingCell::painted = 0;
        table->setRowHeight(40);
        table->setDataSource(sharedOwner);
        table->setDelegate(sharedOwner);
    }

    /// One section of that many rows named "0", "1" and so on.
    void fill(int count) {
        owner.rows.assign(1, {});
        for (int row = 0; row < count; ++row)
            owner.rows[0].push_back(std::to_string(row));
        table->reloadData();
        screenshot();
    }
    /// Without animation, then shows a frame.
    void scrollTo(double y) {
        table->setContentOffset({0, y});
        screenshot();
    }
    double topOf(const NSIndexPath& path) { return table->rectForRowAtIndexPath(path).minY(); }
    /// Texts of the rows on screen.
    std::vector<std::string> shown() {
        std::vector<std::string> texts;
        for (const auto& each : table->visibleCells())
            texts.push_back(each->accessibilityLabel());
        return texts;
    }
    UITableViewCell& cell(int row, int section = 0) {
        return *table->cellForRowAtIndexPath({section, row});
    }
    /// "at 120 dragged lit 12 offers 12 selected 11 deleted 3 menu 4": the offset unless it is 0,
    /// whether it is dragged or moves, highlighted rows, the row that offers its deletion, and what
    /// the owner heard since the last time.
    std::string state() {
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
        text << std::exchange(owner.heard, {});
        return text.str().empty() ? "" : text.str().substr(1);
    }
    void expectSteps(const std::vector<Step>& steps) {
        ScreenTest::expectSteps(steps, [this] { return state(); });
    }

    std::shared_ptr<RowsOwner> sharedOwner = std::make_shared<RowsOwner>();
    RowsOwner& owner = *sharedOwner;
    std::shared_ptr<UITableView> table;
};

}
