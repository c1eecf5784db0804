#pragma once
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vistrel {
class UITableView;
class UITableViewLayout;
class UIView;

/// The section headers of a table: views of the delegate or titles of the data source. Those on
/// screen are in the table.
class UITableViewHeaders {
public:
    /// `sticks`: a header stays at the top while rows of its section show.
    UITableViewHeaders(UITableView& table, const UITableViewLayout& layout, bool sticks)
        : table_(table)
        , layout_(layout)
        , sticks_(sticks) {}

    void clear();
    /// Asks for the next section's header. Its height; 0 when it has none.
    double load(int section);
    /// Shows exactly the headers between the two places.
    void tile(double top, double bottom);
    /// Null when the header is not on screen.
    std::shared_ptr<UIView> viewFor(int section) const;

private:
    struct Header {
        std::shared_ptr<UIView> view; ///< given by the delegate, or made for the title
        std::string title;
    };

    void show(int section);

    UITableView& table_;
    const UITableViewLayout& layout_;
    const bool sticks_;
    std::vector<Header> headers_;
    std::map<int, std::shared_ptr<UIView>> visible_;
};

}
