#pragma once
#include "platform/graphics/CGGeometry.h"
#include "platform/uikit/NSIndexPath.h"

#include <optional>
#include <vector>

namespace vistrel {

/// The positions of the rows and headers of a table, from its top down: pure arithmetic. Sections
/// with rows of equal height need no memory per row. Finding a row by position or a position by row
/// takes at most a binary search.
class UITableViewLayout {
public:
    struct Span {
        double top = 0;
        double height = 0;
        double bottom() const { return top + height; }
        CGRect rect(double width) const { return CGRectMake(0, top, width, height); }
        friend bool operator==(const Span&, const Span&) = default;
    };

    /// Empty.
    void clear();
    /// Rows are appended to the last section begun. A height of 0 means no header.
    void beginSection(double headerHeight);
    void appendRow(double height);
    void appendRows(int count, double height);

    int sectionCount() const { return static_cast<int>(sections_.size()); }
    int rowCount(int section) const;
    int rowCount() const;
    double contentHeight() const { return bottom_; }
    bool contains(const NSIndexPath& path) const;

    Span section(int section) const;
    Span header(int section) const;
    Span row(const NSIndexPath& path) const;
    /// Where the header shows when the view begins at `offset`: at its place, or stuck to the top
    /// of the view until the next section pushes it away.
    Span stickyHeader(int section, double offset) const;

    /// The row at a position; nothing between rows and past the ends.
    std::optional<NSIndexPath> rowAt(double y) const;
    /// The first row that ends below `y`; nothing when there is none.
    std::optional<NSIndexPath> firstRowBelow(double y) const;
    /// The section at a position, the last one past the end; -1 when there are none.
    int sectionAt(double y) const;
    std::optional<NSIndexPath> next(NSIndexPath path) const;
    std::optional<NSIndexPath> previous(NSIndexPath path) const;
    std::optional<NSIndexPath> first() const;
    std::optional<NSIndexPath> last() const;

private:
    struct Section {
        double top = 0;
        double headerHeight = 0;
        int rows = 0;
        double rowHeight = 0;             ///< while all rows are equally high
        std::vector<double> rowBottoms{}; ///< from the first row's top; filled once heights differ
        double rowsTop() const { return top + headerHeight; }
        double rowsHeight() const;
        double bottom() const { return rowsTop() + rowsHeight(); }
        Span row(int row) const;
        int rowBelow(double y) const;
    };

    std::vector<Section> sections_;
    double bottom_ = 0;
};

}
