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
    /// When the table reloads: nothing is pressed or selected. The keyboard stays.
    void clear();
    /// After rows were deleted; `moved` gives a row's new place or nothing.
    void remap(const std::function<std::optional<NSIndexPath>(const NSIndexPath&)>& moved);
    /// After either, once the rows are laid out: the keyboard's row is one that is there.
    void settleKeyboard();
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
    /// The keyboard's highlight appears: on the selected row, where it was, or on the first row
    /// that is shown.
    void enterKeyboard();
    const std::optional<NSIndexPath>& focused() const { return focused_; }
    /// It disappears until it enters again, there.
    void restKeyboard();
    void focus(std::optional<NSIndexPath> path);

private:
    void highlight(const std::optional<NSIndexPath>& path, bool highlighted);
    void selectForUser(const NSIndexPath& path);
    void leaveKeyboard();
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
    std::optional<NSIndexPath> resting_; ///< where that was when the keys went elsewhere
    NSRunLoop::Token delay_ = 0;
    NSRunLoop::Token longPress_ = 0;
};

}
