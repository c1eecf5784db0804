#include "platform/uikit/UITableView.h"

#include "platform/uikit/UITableViewCell.h"
#include "platform/uikit/UITableViewEditing.h"
#include "platform/uikit/UITableViewHeaders.h"
#include "platform/uikit/UITableViewLayout.h"
#include "platform/uikit/UITableViewRows.h"
#include "platform/uikit/UITableViewSelection.h"
#include "platform/uikit/UITableViewUpdates.h"
#include "platform/uikit/UIViewAnimation.h"

#include <algorithm>

namespace vistrel {

UITableView::UITableView(CGRect frame, UITableViewStyle style)
    : UIScrollView(frame)
    , style_(style)
    , layout_(std::make_unique<UITableViewLayout>())
    , rows_(
          std::make_unique<UITableViewRows>(*this, *layout_,
                                            [this](UITableViewCell& cell, const NSIndexPath& path) {
                                                editing_->prepareCell(cell, path);
                                                selection_->prepareCell(cell, path);
                                            }))
    , headers_(
          std::make_unique<UITableViewHeaders>(*this, *layout_, style == UITableViewStyle::Plain))
    , editing_(std::make_unique<UITableViewEditing>(*this, *rows_))
    , selection_(std::make_unique<UITableViewSelection>(*this, *layout_, *rows_, *editing_))
    , updates_(std::make_unique<UITableViewUpdates>(
          *this, UITableViewUpdates::Parts{*layout_, *rows_, *selection_, *editing_},
          [this] { rebuildLayout(); })) {
    UIView::setBackgroundColor(UIColor::whiteColor());
    setAlwaysBounceVertical(true);
    updateSeparators();
}

UITableView::~UITableView() = default;

// Content.

void UITableView::setDataSource(std::weak_ptr<UITableViewDataSource> dataSource) {
    dataSource_ = std::move(dataSource);
    loaded_ = false;
    setNeedsLayout();
}

void UITableView::setDelegate(std::weak_ptr<UITableViewDelegate> delegate) {
    delegate_ = std::move(delegate);
    loaded_ = false;
    setNeedsLayout();
}

double UITableView::rowHeight() const {
    return rowHeight_;
}

void UITableView::setRowHeight(double height) {
    rowHeight_ = height;
    loaded_ = false;
    setNeedsLayout();
}

double UITableView::sectionHeaderHeight() const {
    return sectionHeaderHeight_;
}

void UITableView::setSectionHeaderHeight(double height) {
    sectionHeaderHeight_ = height;
}

void UITableView::setSeparatorStyle(UITableViewCellSeparatorStyle style) {
    separatorStyle_ = style;
    updateSeparators();
}

void UITableView::setSeparatorColor(const UIColor& color) {
    separatorColor_ = color;
    updateSeparators();
}

void UITableView::updateSeparators() {
    rows_->setSeparator(separatorStyle_ == UITableViewCellSeparatorStyle::None
                            ? std::nullopt
                            : std::optional(separatorColor_));
}

void UITableView::setTableFooterView(std::shared_ptr<UIView> view) {
    if (footerView_)
        footerView_->removeFromSuperview();
    footerView_ = std::move(view);
    if (footerView_)
        addContentInFront(footerView_);
    loaded_ = false;
    setNeedsLayout();
}

// Loading and layout.

void UITableView::reloadData() {
    selection_->clear();
    editing_->forgetConfirmation();
    rows_->recycleAll();
    rebuildLayout();
    selection_->settleKeyboard();
    setNeedsLayout();
}

void UITableView::loadIfNeeded() const {
    if (!loaded_)
        const_cast<UITableView*>(this)->reloadData();
}

void UITableView::rebuildLayout() {
    loaded_ = true;
    headers_->clear();
    layout_->clear();
    const auto source = dataSource();
    const auto owner = delegate();
    const int sections = source ? source->numberOfSectionsInTableView(*this) : 0;
    for (int section = 0; section < sections; ++section) {
        const int rows = source->tableViewNumberOfRowsInSection(*this, section);
        layout_->beginSection(headers_->load(section));
        if (!owner) {
            layout_->appendRows(rows, rowHeight_);
            continue;
        }
        for (int row = 0; row < rows; ++row)
            layout_->appendRow(owner->tableViewHeightForRowAtIndexPath(*this, {section, row})
                                   .value_or(rowHeight_));
    }
    const double footer = footerView_ ? footerView_->frame().size.height : 0;
    setContentSize({bounds().size.width, layout_->contentHeight() + footer});
}

void UITableView::setFrame(const CGRect& frame) {
    const double width = bounds().size.width;
    UIScrollView::setFrame(frame);
    setNeedsLayout();
    if (bounds().size.width == width || !loaded_)
        return;
    setContentSize({bounds().size.width, contentSize().height});
    for (const auto& row : rows_->visible())
        row.cell->setFrame(rectForRowAtIndexPath(row.path));
}

void UITableView::layoutSubviews() {
    if (tiling_)
        return;
    loadIfNeeded();
    tiling_ = true;
    const CGRect area = bounds();
    rows_->tile(area.minY(), area.maxY());
    headers_->tile(area.minY() + contentInset().top, area.maxY());
    tiling_ = false;
    placeFooter();
}

void UITableView::placeFooter() {
    if (!footerView_)
        return;
    const UITableViewLayout::Span place{layout_->contentHeight(), footerView_->frame().size.height};
    const CGRect frame = place.rect(bounds().size.width);
    if (footerView_->frame() != frame)
        footerView_->setFrame(frame);
}

// Rows.

int UITableView::numberOfSections() const {
    loadIfNeeded();
    return layout_->sectionCount();
}

int UITableView::numberOfRowsInSection(int section) const {
    loadIfNeeded();
    return layout_->rowCount(section);
}

std::shared_ptr<UITableViewCell>
UITableView::dequeueReusableCellWithIdentifier(const std::string& identifier) {
    return rows_->dequeue(identifier);
}

std::shared_ptr<UITableViewCell>
UITableView::cellForRowAtIndexPath(const NSIndexPath& indexPath) const {
    return rows_->cellAt(indexPath);
}

std::optional<NSIndexPath> UITableView::indexPathForCell(const UITableViewCell& cell) const {
    return rows_->pathOf(cell);
}

std::vector<std::shared_ptr<UITableViewCell>> UITableView::visibleCells() const {
    std::vector<std::shared_ptr<UITableViewCell>> cells;
    for (const auto& row : rows_->visible())
        cells.push_back(row.cell);
    return cells;
}

std::vector<NSIndexPath> UITableView::indexPathsForVisibleRows() const {
    std::vector<NSIndexPath> paths;
    for (const auto& row : rows_->visible())
        paths.push_back(row.path);
    return paths;
}

std::optional<NSIndexPath> UITableView::indexPathForRowAtPoint(CGPoint point) const {
    loadIfNeeded();
    return layout_->rowAt(point.y);
}

CGRect UITableView::rectForRowAtIndexPath(const NSIndexPath& indexPath) const {
    loadIfNeeded();
    if (!layout_->contains(indexPath))
        return {};
    return layout_->row(indexPath).rect(bounds().size.width);
}

CGRect UITableView::rectForHeaderInSection(int section) const {
    loadIfNeeded();
    if (section < 0 || section >= layout_->sectionCount())
        return {};
    return layout_->header(section).rect(bounds().size.width);
}

std::shared_ptr<UIView> UITableView::headerViewForSection(int section) const {
    return headers_->viewFor(section);
}

void UITableView::scrollToRowAtIndexPath(const NSIndexPath& indexPath, bool animated) {
    loadIfNeeded();
    if (!layout_->contains(indexPath))
        return;
    CGRect rect = rectForRowAtIndexPath(indexPath);
    if (style_ == UITableViewStyle::Plain) {
        // Room for the header that sticks over the rows.
        const double header = layout_->header(indexPath.section).height;
        rect.origin.y -= header;
        rect.size.height += header;
    }
    scrollRectToVisible(rect, animated);
}

// Selection, editing, updates: see the classes of those names.

std::optional<NSIndexPath> UITableView::indexPathForSelectedRow() const {
    return selection_->selected();
}

void UITableView::selectRowAtIndexPath(const NSIndexPath& indexPath, bool animated) {
    selection_->select(indexPath, animated);
}

void UITableView::deselectRowAtIndexPath(const NSIndexPath& indexPath, bool animated) {
    selection_->deselect(indexPath, animated);
}

bool UITableView::isEditing() const {
    return editing_->isEditing();
}

void UITableView::setEditing(bool editing, bool animated) {
    editing_->setEditing(editing, animated);
}

std::optional<NSIndexPath> UITableView::indexPathForDeleteConfirmation() const {
    return editing_->confirming();
}

void UITableView::showDeleteConfirmationForRowAtIndexPath(const NSIndexPath& indexPath) {
    loadIfNeeded();
    if (!editing_->canDelete(indexPath))
        return;
    scrollToRowAtIndexPath(indexPath, false);
    layoutIfNeeded();
    editing_->showConfirmation(indexPath);
}

void UITableView::beginUpdates() {
    loadIfNeeded();
    updates_->begin();
}

void UITableView::endUpdates() {
    updates_->end();
}

void UITableView::deleteRowsAtIndexPaths(const std::vector<NSIndexPath>& indexPaths,
                                         UITableViewRowAnimation) {
    updates_->deleteRows(indexPaths);
}

}
