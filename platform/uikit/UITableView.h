#pragma once
#include "platform/uikit/NSIndexPath.h"
#include "platform/uikit/UIScrollView.h"
#include "platform/uikit/UITableViewCellOwner.h"
#include "platform/uikit/UITableViewDataSource.h"
#include "platform/uikit/UITableViewDelegate.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vistrel {
class UITableViewEditing;
class UITableViewHeaders;
class UITableViewLayout;
class UITableViewRows;
class UITableViewSelection;
class UITableViewUpdates;

enum class UITableViewStyle { Plain = 0, Grouped = 1 };
enum class UITableViewCellSeparatorStyle { None = 0, SingleLine = 1 };
/// Numbers are the phone's.
enum class UITableViewRowAnimation { Top = 3 };

/// A scrolling list of rows in sections. Keeps cells only for rows on screen and reuses them by
/// identifier. Main thread only. Does not retain its delegate or data source.
class UITableView : public UIScrollView, public UITableViewCellOwner {
public:
    explicit UITableView(CGRect frame = {}, UITableViewStyle style = UITableViewStyle::Plain);
    ~UITableView() override;

    void setDataSource(std::weak_ptr<UITableViewDataSource> dataSource);
    void setDelegate(std::weak_ptr<UITableViewDelegate> delegate);
    /// Null when unset or gone.
    std::shared_ptr<UITableViewDataSource> dataSource() const { return dataSource_.lock(); }
    std::shared_ptr<UITableViewDelegate> delegate() const { return delegate_.lock(); }

    double rowHeight() const; ///< default 44
    void setRowHeight(double height);
    double sectionHeaderHeight() const; ///< default 23; one height for all headers
    /// Applies to headers requested from now on: they are requested section by section when the
    /// table loads, and each takes the height set after its call.
    void setSectionHeaderHeight(double height);
    void setSeparatorStyle(UITableViewCellSeparatorStyle style);
    void setSeparatorColor(const UIColor& color);
    /// Scrolls with the rows, below them.
    void setTableFooterView(std::shared_ptr<UIView> view);

    /// Requests the rows again and keeps the scroll offset. The selection is cleared.
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
    /// Moves the keyboard's highlight to the row, if the table shows it.
    void moveKeyboardToRowAtIndexPath(const NSIndexPath& indexPath);

    bool isEditing() const;
    void setEditing(bool editing, bool animated);
    /// The row that shows its delete confirmation, if any.
    std::optional<NSIndexPath> indexPathForDeleteConfirmation() const;
    /// Scrolls to the row and asks as after a swipe, if it can be deleted.
    void showDeleteConfirmationForRowAtIndexPath(const NSIndexPath& indexPath);

    void beginUpdates();
    void endUpdates();
    /// The data source must agree with the result at endUpdates (or on return, outside a pair);
    /// when it does not, the table reloads.
    void deleteRowsAtIndexPaths(const std::vector<NSIndexPath>& indexPaths,
                                UITableViewRowAnimation animation);

    void layoutSubviews() override;
    void setFrame(const CGRect& frame) override;
    /// Arrows, page keys, Home and End move a highlight over the rows, Enter selects the row under
    /// it, Delete asks for its deletion, Menu for its menu.
    bool keyPressed(const UIKey& key) override;
    bool menuRequested(CGPoint point) override;
    /// Nothing while the list is dragged; an offer to delete is withdrawn.
    std::optional<std::string> fileDraggedFrom(CGPoint point) override;
    bool canBecomeFirstResponder() const override { return true; }
    void focusChanged(bool focused) override;
    /// The row under the keyboard's highlight.
    std::shared_ptr<UIView> focusedPart() override;
    UIAccessibilityElement accessibilityElement() const override {
        return {UIAccessibilityRole::List, UIView::accessibilityElement().label, {}, true};
    }
    /// Drags, and swipes over rows that can be deleted.
    bool shouldCaptureTouch(const UITouch& touch) override;
    bool touchWillBeginInside(const UITouch& touch) override;
    void touchesBegan(const UITouch& touch) override;
    void touchesMoved(const UITouch& touch) override;

protected:
    void willBeginDragging() override;

private:
    void cellTouchBegan(UITableViewCell& cell) override;
    void cellTouchStrayed() override;
    void cellTouchEnded() override;
    void cellTouchCancelled() override;
    void cellActivated(UITableViewCell& cell) override;
    void cellDeleteCirclePressed(UITableViewCell& cell) override;
    void cellConfirmationPressed(UITableViewCell& cell) override;

    void loadIfNeeded() const;
    void rebuildLayout();
    void placeFooter();
    void updateSeparators();

    UITableViewStyle style_;
    std::weak_ptr<UITableViewDataSource> dataSource_;
    std::weak_ptr<UITableViewDelegate> delegate_;
    double rowHeight_ = 44;
    double sectionHeaderHeight_ = 23;
    UITableViewCellSeparatorStyle separatorStyle_ = UITableViewCellSeparatorStyle::SingleLine;
    UIColor separatorColor_ = UIColor::colorWithWhiteAlpha(0.88F, 1);
    bool loaded_ = false;
    bool tiling_ = false;
    std::shared_ptr<UIView> footerView_;

    std::unique_ptr<UITableViewLayout> layout_;       ///< where rows and headers lie
    std::unique_ptr<UITableViewRows> rows_;           ///< cells on screen and for reuse
    std::unique_ptr<UITableViewHeaders> headers_;     ///< section headers on screen
    std::unique_ptr<UITableViewEditing> editing_;     ///< editing mode, swipes, confirmations
    std::unique_ptr<UITableViewSelection> selection_; ///< touch and keyboard selection
    std::unique_ptr<UITableViewUpdates> updates_;     ///< animated row deletion
};

}
