#pragma once
#include "platform/uikit/UITableViewCell.h"

#include <string>

namespace vistrel {
class ABTableViewCellView;

/// A row that one view paints in a single pass, over whatever is behind the table. Subclasses
/// fill the background, draw the picture, then the text.
class ABTableViewCell : public UITableViewCell {
public:
    ABTableViewCell(UITableViewCellStyle style, std::string reuseIdentifier);
    ~ABTableViewCell() override;

    /// The view that draws the row; covers the whole cell. The view hierarchy owns it.
    ABTableViewCellView* contentView() const { return contentView_; }
    void setFrame(const CGRect& frame) override;
    /// Also redraws the content view.
    void setNeedsDisplay() override;
    /// Paints the row into the current context; `rect` is the content view's.
    virtual void drawContentView(const CGRect& rect);

private:
    ABTableViewCellView* contentView_ = nullptr;
};

}
