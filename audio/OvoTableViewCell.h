#pragma once
#include "platform/uikit/UITableViewCell.h"

#include <string>

namespace vistrel {
class OvoTableViewCellView;

/// A row of the music player that one view paints in a single pass, over whatever lies behind the
/// table. Subclasses fill the background, then draw the text and marks.
class OvoTableViewCell : public UITableViewCell {
public:
    OvoTableViewCell(UITableViewCellStyle style, std::string reuseIdentifier);
    ~OvoTableViewCell() override;

    /// The view that draws the row; lies over the whole cell. The view hierarchy owns it.
    OvoTableViewCellView* contentView() const { return contentView_; }
    void setFrame(const CGRect& frame) override;
    /// The content view too.
    void setNeedsDisplay() override;
    /// Paints the row into the current context; `rect` is the content view's.
    virtual void drawContentView(const CGRect& rect);

private:
    OvoTableViewCellView* contentView_ = nullptr;
};

}
