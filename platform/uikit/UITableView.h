#pragma once
#include "platform/uikit/NSIndexPath.h"
#include "platform/uikit/UIScrollView.h"
#include "platform/uikit/UITableViewDataSource.h"
#include "platform/uikit/UITableViewDelegate.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vistrel {
class UITableViewCell;

enum class UITableViewStyle { Plain = 0, Grouped = 1 };
enum class UITableViewCellSeparatorStyle { None = 0, SingleLine = 1 };
/// Numbers are the phone's.
enum class UITableViewRowAnimation { Fade = 0, Right = 1, Left = 2, Top = 3, Bottom = 4, None = 5 };

/// A scrolling list of rows in sections. Keeps cells only for rows on screen and reuses them by
/// identifier. Main thread only. Does not retain its delegate or data source.
class UITableView : public UIScrollView {
public:
    explicit UITableView(CGRect frame = {}, UITableViewStyle style = UITableViewStyle::Plain);
    ~UITableView() override;

    void setDataSource(UITableViewDataSource* dataSource);
    void setDelegate(UITableViewDelegate* delegate);
    UITableViewDataSource* dataSource() const;
    UITableViewDelegate* delegate() const;

    double rowHeight() const; ///< default 44
    void setRowHeight(double height);
    double sectionHeaderHeight() const; ///< default 23; one height for all headers
    /// Applies to headers laid out from now on, also when set while a header view is being handed
    /// out.
    void setSectionHeaderHeight(double height);
    void setSeparatorStyle(UITableViewCellSeparatorStyle style);
    void setSeparatorColor(const UIColor& color);
    void setAllowsSelection(bool allows);
    const std::shared_ptr<UIView>& tableFooterView() const;
    void setTableFooterView(std::shared_ptr<UIView> view);
    void setTableHeaderView(std::shared_ptr<UIView> view);

    /// Rows are asked for again and the scroll offset is kept. The selection is cleared.
    void reloadData();
    int numberOfSections() const;
    int numberOfRowsInSection(int section) const;
    std::shared_ptr<UITableViewCell>
    dequeueReusableCellWithIdentifier(const std::string& identifier);
    /// Null when the row is not on screen.
    std::shared_ptr<UITableViewCell> cellForRowAtIndexPath(const NSIndexPath& indexPath) const;
    std::optional<NSIndexPath> indexPathForCell(const UITableViewCell& cell) const;
    std::vector<std::shared_ptr<UITableViewCell>> visibleCells() const;
    std::vector<NSIndexPath> indexPathsForVisibleRows() const;
    std::optional<NSIndexPath> indexPathForRowAtPoint(CGPoint point) const;
    CGRect rectForRowAtIndexPath(const NSIndexPath& indexPath) const;
    CGRect rectForHeaderInSection(int section) const;
    std::shared_ptr<UIView> headerViewForSection(int section) const;

    std::optional<NSIndexPath> indexPathForSelectedRow() const;
    void selectRowAtIndexPath(const NSIndexPath& indexPath, bool animated);
    void deselectRowAtIndexPath(const NSIndexPath& indexPath, bool animated);
    void scrollToRowAtIndexPath(const NSIndexPath& indexPath, bool animated);

    bool isEditing() const;
    void setEditing(bool editing, bool animated);
    /// The row whose delete confirmation shows; nothing for none.
    std::optional<NSIndexPath> indexPathForDeleteConfirmation() const;

    void beginUpdates();
    void endUpdates();
    /// The data source must agree with the result at endUpdates (or on return, outside a pair);
    /// when it does not, the table reloads.
    void deleteRowsAtIndexPaths(const std::vector<NSIndexPath>& indexPaths,
                                UITableViewRowAnimation animation);

    void layoutSubviews() override;
    void setFrame(const CGRect& frame) override;
    bool keyPressed(const UIKey& key) override;
    bool canBecomeFirstResponder() const override { return true; }
    bool shouldCaptureTouch(const UITouch& touch) override;

protected:
    void didScroll() override;

private:
    friend class UITableViewCell;
    /// Where rows and headers lie (heights, offsets): pure arithmetic over sections.
    class Layout;
    /// Cells and headers on screen, and those waiting to be used again.
    class Rows;
    /// Touch selection, swipe to delete, editing controls, row deletion.
    class Editing;

    UITableViewStyle style_;
    UITableViewDataSource* dataSource_ = nullptr;
    UITableViewDelegate* delegate_ = nullptr;
    std::unique_ptr<Layout> layout_;
    std::unique_ptr<Rows> rows_;
    std::unique_ptr<Editing> editing_;
};

}
