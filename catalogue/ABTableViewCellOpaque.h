#pragma once
#include "platform/uikit/UITableViewCell.h"

#include <string>

namespace vistrel {
class ABTableViewCellOpaqueView;

/// A row that one opaque view paints in a single pass: subclasses paint every point of it. They
/// fill the background, draw the picture, then the text.
class ABTableViewCellOpaque : public UITableViewCell {
public:
    ABTableViewCellOpaque(UITableViewCellStyle style, std::string reuseIdentifier);
    ~ABTableViewCellOpaque() override;

    /// The view that draws the row; covers the whole cell. The view hierarchy owns it.
    ABTableViewCellOpaqueView* contentView() const { return contentView_; }
    void setFrame(const CGRect& frame) override;
    /// Also redraws the content view.
    void setNeedsDisplay() override;
    /// Paints the row into the current context; `rect` is the content view's.
    virtual void drawContentView(const CGRect& rect);

private:
    ABTableViewCellOpaqueView* contentView_ = nullptr;
};

}
