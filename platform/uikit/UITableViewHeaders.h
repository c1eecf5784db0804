#pragma once
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vistrel {
class UITableView;
class UIView;

/// The section headers of a table: views of the delegate or titles of the data source, of which
/// those on screen are in the table.
class UITableViewHeaders {
public:
    explicit UITableViewHeaders(UITableView& table)
        : table_(table) {}

    /// Forgets all.
    void clear();
    /// Asks for the next section's header. Its height; 0 when it has none.
    double load(int section);
    /// Makes the headers that show between the two places be there, and no others.
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
    std::vector<Header> headers_;
    std::map<int, std::shared_ptr<UIView>> visible_;
};

}
