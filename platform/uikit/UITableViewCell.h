#pragma once
#include "platform/uikit/UIView.h"

#include <memory>
#include <string>

namespace vistrel {
class UIImageView;
class UILabel;
class UITableViewCellControls;
class UITableViewCellOwner;

enum class UITableViewCellStyle { Default = 0 };
enum class UITableViewCellAccessoryType { None = 0, DisclosureIndicator = 1 };

/// One row of a table. Label and picture are created on first use; a cell that draws itself has
/// neither. A cell with a label has a white background unless given another colour, others have
/// none.
class UITableViewCell : public UIView {
public:
    explicit UITableViewCell(UITableViewCellStyle style = UITableViewCellStyle::Default,
                             std::string reuseIdentifier = {});
    ~UITableViewCell() override;

    const std::string& reuseIdentifier() const { return reuseIdentifier_; }
    UILabel& textLabel();
    UIImageView& imageView();
    UITableViewCellAccessoryType accessoryType() const { return accessoryType_; }
    void setAccessoryType(UITableViewCellAccessoryType type);

    bool isHighlighted() const { return highlighted_; }
    /// Requests a redraw of the cell (setNeedsDisplay) when the flag changes. Animated: the
    /// coloured background fades.
    virtual void setHighlighted(bool highlighted, bool animated);
    bool isSelected() const { return selected_; }
    /// A selected cell is highlighted too.
    virtual void setSelected(bool selected, bool animated);
    bool isEditing() const { return editing_; }
    virtual void setEditing(bool editing, bool animated);
    bool showingDeleteConfirmation() const { return showingDeleteConfirmation_; }
    virtual void setShowingDeleteConfirmation(bool showing, bool animated);
    /// Before the cell is used for another row.
    virtual void prepareForReuse();

    /// What a screen reader reads; cells that draw themselves give their text here. Default: the
    /// label's text.
    virtual std::string accessibilityLabel() const;

    /// Lays out label, picture, accessory and editing controls; the controls lie above everything
    /// that subclasses add.
    void layoutSubviews() override;
    /// The cell itself, except over one of its controls.
    std::shared_ptr<UIView> hitTest(CGPoint point) override;
    void touchesBegan(const UITouch& touch) override;
    void touchesMoved(const UITouch& touch) override;
    void touchesEnded(const UITouch& touch) override;
    void touchesCancelled(const UITouch& touch) override;
    UIAccessibilityElement accessibilityElement() const override;
    /// Selects the row.
    void accessibilityActivate() override;

    // For the table that shows the cell.
    UITableViewCellControls& controls() { return *controls_; }
    /// Null when the cell is in no table.
    UITableViewCellOwner* owner() const;

private:
    void relayout(bool animated);

    std::string reuseIdentifier_;
    UITableViewCellAccessoryType accessoryType_ = UITableViewCellAccessoryType::None;
    bool highlighted_ = false;
    bool selected_ = false;
    bool editing_ = false;
    bool showingDeleteConfirmation_ = false;
    std::shared_ptr<UILabel> textLabel_;
    std::shared_ptr<UIImageView> imageView_;
    std::unique_ptr<UITableViewCellControls> controls_;
};

}
