#pragma once
#include "platform/graphics/CGContext.h"
#include "platform/uikit/UIControl.h"
#include "platform/uikit/UITableViewCell.h"

#include <memory>
#include <string>

// The small views that a table puts on its cells.

namespace vistrel {

/// The blue background of a highlighted row.
class UITableViewCellSelectionView : public UIView {
public:
    UITableViewCellSelectionView();
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
};

/// The grey arrow at the right end, white on a highlighted row.
class UITableViewCellAccessoryView : public UIView {
public:
    UITableViewCellAccessoryView();
    void setHighlighted(bool highlighted);
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;

private:
    bool highlighted_ = false;
};

/// The red circle that offers to delete the row; upright while the confirmation shows.
class UITableViewCellDeleteCircle : public UIControl {
public:
    UITableViewCellDeleteCircle();
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
    /// "Delete" and the row's label.
    UIAccessibilityElement accessibilityElement() const override;
};

/// The red button that deletes the row.
class UITableViewCellConfirmationButton : public UIControl {
public:
    UITableViewCellConfirmationButton();
    void setTitle(std::string title);
    static double widthForTitle(const std::string& title);
    void setHighlighted(bool highlighted) override;
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& rect) override;
    UIAccessibilityElement accessibilityElement() const override;

private:
    std::string title_;
};

}
