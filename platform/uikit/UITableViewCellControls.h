#pragma once
#include "platform/uikit/UITableViewCell.h"
#include "platform/uikit/UITableViewCellLayout.h"

#include <memory>
#include <optional>
#include <string>

namespace vistrel {
class UITableViewCellAccessoryView;
class UITableViewCellConfirmationButton;
class UITableViewCellDeleteCircle;
class UITableViewCellSelectionView;

/// What a table puts on its cells: selection background, separator, disclosure indicator, delete
/// circle, confirmation button. Each is made when first needed.
class UITableViewCellControls {
public:
    explicit UITableViewCellControls(UITableViewCell& cell);
    ~UITableViewCellControls();

    /// The coloured background, under everything.
    void showSelection(bool shows, bool animated);
    void setSeparator(const std::optional<UIColor>& color);
    void setConfirmationTitle(const std::string& title);
    double confirmationWidth() const;
    bool confirmationContains(CGPoint windowPoint) const;
    /// Call before the cell's mode changes: creates the controls of the modes at their old places.
    void prepareForMode();
    /// Puts everything in place, above the cell's content.
    void layout(const UITableViewCellLayout& layout);

private:
    void makeDeleteCircle(const UITableViewCellLayout& layout);
    void makeConfirmation(const UITableViewCellLayout& layout);
    void layoutAccessory(const CGRect& frame);
    void layoutModes(const UITableViewCellLayout& layout);
    void bringToFront();

    UITableViewCell& cell_;
    std::string confirmationTitle_;
    std::shared_ptr<UITableViewCellSelectionView> selection_;
    std::shared_ptr<UIView> separator_;
    std::shared_ptr<UITableViewCellAccessoryView> accessory_;
    std::shared_ptr<UITableViewCellDeleteCircle> circle_;
    std::shared_ptr<UITableViewCellConfirmationButton> confirmation_;
};

}
