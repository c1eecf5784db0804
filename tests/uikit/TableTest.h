#pragma once
#include "platform/uikit/UITableView.h"
#include "platform/uikit/UITableViewCell.h"
#include "tests/support/ui/ScreenTest.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vistrel {

/// A cell that paints itself and counts how often.
class CountingCell : public UITableViewCell {
public:
    CountingCell();
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
    std::string accessibilityLabel() const override { return text; }

    std::string text;
    static int made;
    static int painted;
};

/// Rows by section, with what a table asks of its owner.
class RowsOwner : public UITableViewDataSource, public UITableViewDelegate {
public:
    std::vector<std::vector<std::string>> rows;
    std::vector<std::string> titles;                  ///< of the headers; empty: none
    std::vector<std::shared_ptr<UIView>> headerViews; ///< before titles
    std::vector<double> headerHeights;                ///< set while a header view is handed out
    std::optional<double> height;
    bool deletes = false;
    std::set<NSIndexPath> fixedRows;

    std::vector<NSIndexPath> selected;
    std::vector<NSIndexPath> committed;
    int heightsAsked = 0;

    int numberOfSectionsInTableView(UITableView& table) override;
    int tableViewNumberOfRowsInSection(UITableView& table, int section) override;
    std::shared_ptr<UITableViewCell>
    tableViewCellForRowAtIndexPath(UITableView& table, const NSIndexPath& path) override;
    std::optional<std::string> tableViewTitleForHeaderInSection(UITableView& table,
                                                                int section) override;
    std::shared_ptr<UIView> tableViewViewForHeaderInSection(UITableView& table,
                                                            int section) override;
    std::optional<double> tableViewHeightForRowAtIndexPath(UITableView& table,
                                                           const NSIndexPath& path) override;
    std::optional<bool> tableViewCanEditRowAtIndexPath(UITableView& table,
                                                       const NSIndexPath& path) override;
    bool implementsCommitEditingStyle() const override { return deletes; }
    void tableViewCommitEditingStyleForRowAtIndexPath(UITableView& table,
                                                      UITableViewCellEditingStyle style,
                                                      const NSIndexPath& path) override;
    void tableViewDidSelectRowAtIndexPath(UITableView& table, const NSIndexPath& path) override;
};

/// A table of 320 x 400 at the window's top, with rows of 40 points unless the owner says more.
class TableTest : public support::ScreenTest {
protected:
    TableTest();

    /// One section of that many rows named "0", "1" and so on.
    void fill(int count);
    /// Without animation, then shows a frame.
    void scrollTo(double y);
    double topOf(const NSIndexPath& path) { return table->rectForRowAtIndexPath(path).minY(); }
    /// Texts of the rows on screen.
    std::vector<std::string> shown();
    UITableViewCell& cell(int row, int section = 0) {
        return *table->cellForRowAtIndexPath({section, row});
    }
    /// "at 120 dragged lit 12 offers 12 selected 11 deleted 3": the offset unless it is 0, whether
    /// it is dragged or moves, highlighted rows, the row that offers its deletion, and what the
    /// owner heard since the last time.
    std::string state();
    void expectSteps(const std::vector<Step>& steps) {
        ScreenTest::expectSteps(steps, [this] { return state(); });
    }

    std::shared_ptr<RowsOwner> sharedOwner = std::make_shared<RowsOwner>();
    RowsOwner& owner = *sharedOwner;
    std::shared_ptr<UITableView> table;
};

}
