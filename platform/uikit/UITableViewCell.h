#pragma once
#include "platform/uikit/UIView.h"

#include <memory>
#include <string>

namespace vistrel {
class UIImageView;
class UILabel;
class UITableView;

enum class UITableViewCellStyle { Default = 0, Value1 = 1, Value2 = 2, Subtitle = 3 };
enum class UITableViewCellAccessoryType {
    None = 0,
    DisclosureIndicator = 1,
    DetailDisclosureButton = 2,
    Checkmark = 3
};
enum class UITableViewCellSelectionStyle { None = 0, Blue = 1, Gray = 2 };

/// One row of a table. Label and picture are made when first asked for; a cell that draws itself
/// has neither.
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
    void setSelectionStyle(UITableViewCellSelectionStyle style) { selectionStyle_ = style; }
    UITableViewCellSelectionStyle selectionStyle() const { return selectionStyle_; }

    bool isHighlighted() const { return highlighted_; }
    /// Requests a redraw of the cell (setNeedsDisplay) when the flag changes.
    virtual void setHighlighted(bool highlighted, bool animated);
    bool isSelected() const { return selected_; }
    /// A selected cell is drawn highlighted.
    virtual void setSelected(bool selected, bool animated);
    bool isEditing() const { return editing_; }
    virtual void setEditing(bool editing, bool animated);
    bool showingDeleteConfirmation() const { return showingDeleteConfirmation_; }
    virtual void setShowingDeleteConfirmation(bool showing, bool animated);
    /// Before the cell is used for another row.
    virtual void prepareForReuse();

    /// Lays out label, picture, accessory and editing controls; the editing controls lie above
    /// everything that subclasses add.
    void layoutSubviews() override;
    UIAccessibilityElement accessibilityElement() const override;

private:
    friend class UITableView;
    class Controls; ///< accessory, delete circle, confirmation button, selection background

    std::string reuseIdentifier_;
    UITableViewCellStyle style_;
    UITableViewCellAccessoryType accessoryType_ = UITableViewCellAccessoryType::None;
    UITableViewCellSelectionStyle selectionStyle_ = UITableViewCellSelectionStyle::Blue;
    bool highlighted_ = false;
    bool selected_ = false;
    bool editing_ = false;
    bool showingDeleteConfirmation_ = false;
    std::shared_ptr<UILabel> textLabel_;
    std::shared_ptr<UIImageView> imageView_;
    std::unique_ptr<Controls> controls_;
};

}
