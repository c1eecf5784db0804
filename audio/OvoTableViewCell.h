#pragma once
#include "platform/uikit/UITableViewCell.h"

#include <string>

namespace vistrel {
class OvoTableViewCellView;

/// A row of the music player that one view paints in a single pass, over the table's background.
/// Subclasses fill the background, then draw text and marks.
class OvoTableViewCell : public UITableViewCell {
public:
    OvoTableViewCell(UITableViewCellStyle style, std::string reuseIdentifier);
    ~OvoTableViewCell() override;

    /// The view that draws the row and covers the whole cell. Owned by the view hierarchy.
    OvoTableViewCellView* contentView() const { return contentView_; }
    void setFrame(const CGRect& frame) override;
    /// Also resizes the content view.
    void setNeedsDisplay() override;
    /// Draws the row into the current context; `rect` is in the content view's coordinates.
    virtual void drawContentView(const CGRect& rect);

private:
    OvoTableViewCellView* contentView_ = nullptr;
};

}
