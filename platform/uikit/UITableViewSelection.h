#pragma once
#include "platform/foundation/NSRunLoop.h"
#include "platform/uikit/NSIndexPath.h"

#include <functional>
#include <optional>

namespace vistrel {
class UITableView;
class UITableViewCell;
class UITableViewEditing;
class UITableViewLayout;
class UITableViewRows;
struct UIKey;

/// Which row is pressed, selected, or under the keyboard's highlight.
class UITableViewSelection {
public:
    UITableViewSelection(UITableView& table, const UITableViewLayout& layout,
                         const UITableViewRows& rows, UITableViewEditing& editing)
        : table_(table)
        , layout_(layout)
        , rows_(rows)
        , editing_(editing) {}
    ~UITableViewSelection();

    const std::optional<NSIndexPath>& selected() const { return selected_; }
    void select(const NSIndexPath& path, bool animated);
    void deselect(const NSIndexPath& path, bool animated);
    /// When the table reloads.
    void clear();
    /// After rows were deleted; `moved` gives a row's new place or nothing.
    void remap(const std::function<std::optional<NSIndexPath>(const NSIndexPath&)>& moved);
    /// Gives a cell that comes on screen its state.
    void prepareCell(UITableViewCell& cell, const NSIndexPath& path);

    void touchBegan(UITableViewCell& cell);
    void touchStrayed();
    void touchEnded();
    void touchCancelled();
    /// Acts like a tap.
    void activate(UITableViewCell& cell);

    bool keyPressed(const UIKey& key);
    /// The row's own menu; false when it has none.
    bool showMenu(const NSIndexPath& path);
    /// The keyboard's highlight appears, on the selected row or the first that is shown.
    void enterKeyboard();
    const std::optional<NSIndexPath>& focused() const { return focused_; }
    void leaveKeyboard();

private:
    void highlight(const std::optional<NSIndexPath>& path, bool highlighted);
    void selectForUser(const NSIndexPath& path);
    void focus(const std::optional<NSIndexPath>& path);
    std::optional<NSIndexPath> pageAway(int direction) const;
    std::optional<NSIndexPath> keyboardAim(const UIKey& key) const;
    bool activateFocused();
    bool askForDeletion();

    UITableView& table_;
    const UITableViewLayout& layout_;
    const UITableViewRows& rows_;
    UITableViewEditing& editing_;
    std::optional<NSIndexPath> selected_;
    std::optional<NSIndexPath> pressed_; ///< under the finger
    std::optional<NSIndexPath> focused_; ///< under the keyboard's highlight
    NSRunLoop::Token delay_ = 0;
    NSRunLoop::Token longPress_ = 0;
};

}
