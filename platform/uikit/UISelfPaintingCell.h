#pragma once
#include "platform/uikit/UITableViewCell.h"

#include <string>

namespace vistrel {

/// Delegates its drawing to the cell that contains it.
class UISelfPaintingCellView : public UIView {
public:
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
};

/// A row that one view paints in a single pass, without labels and image views. Subclasses fill the
/// background, draw the picture, then the text.
class UISelfPaintingCell : public UITableViewCell {
public:
    /// The view that draws the row; covers the whole cell. The view hierarchy owns it.
    UISelfPaintingCellView* contentView() const { return contentView_; }
    void setFrame(const CGRect& frame) override;
    /// Also redraws the content view.
    void setNeedsDisplay() override;
    /// Paints the row into the current context; `rect` is the content view's.
    virtual void drawContentView(const CGRect& rect);

protected:
    /// Opaque cells paint every point; the others stand over whatever is behind the table.
    enum class Opaque { No, Yes };
    UISelfPaintingCell(UITableViewCellStyle style, std::string reuseIdentifier, Opaque opaque);

private:
    UISelfPaintingCellView* contentView_ = nullptr;
};

}
