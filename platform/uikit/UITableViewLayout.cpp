#include "platform/uikit/UITableViewLayout.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

double UITableViewLayout::Section::rowsHeight() const {
    return rowBottoms.empty() ? rows * rowHeight : rowBottoms.back();
}

UITableViewLayout::Span UITableViewLayout::Section::row(int row) const {
    if (rowBottoms.empty())
        return {rowsTop() + row * rowHeight, rowHeight};
    const double start = row > 0 ? rowBottoms[static_cast<std::size_t>(row) - 1] : 0;
    return {rowsTop() + start, rowBottoms[static_cast<std::size_t>(row)] - start};
}

/// The first row that ends below `y`; `rows` when none does.
int UITableViewLayout::Section::rowBelow(double y) const {
    const double inside = y - rowsTop();
    if (inside < 0)
        return 0;
    if (!rowBottoms.empty()) {
        const auto found = std::upper_bound(rowBottoms.begin(), rowBottoms.end(), inside);
        return static_cast<int>(found - rowBottoms.begin());
    }
    if (rowHeight <= 0)
        return rows;
    return static_cast<int>(std::min<double>(std::floor(inside / rowHeight), rows));
}

void UITableViewLayout::clear() {
    sections_.clear();
    bottom_ = 0;
}

void UITableViewLayout::beginSection(double headerHeight) {
    sections_.push_back(Section{bottom_, std::max(headerHeight, 0.0)});
    bottom_ = sections_.back().bottom();
}

void UITableViewLayout::appendRow(double height) {
    height = std::max(height, 0.0);
    Section& section = sections_.back();
    if (section.rows == 0)
        section.rowHeight = height;
    if (section.rowBottoms.empty() && height != section.rowHeight) {
        section.rowBottoms.reserve(static_cast<std::size_t>(section.rows) * 2);
        for (int row = 1; row <= section.rows; ++row)
            section.rowBottoms.push_back(row * section.rowHeight);
    }
    if (!section.rowBottoms.empty())
        section.rowBottoms.push_back(section.rowBottoms.back() + height);
    ++section.rows;
    bottom_ = section.bottom();
}

void UITableViewLayout::appendRows(int count, double height) {
    if (count <= 0)
        return;
    Section& section = sections_.back();
    if (section.rows == 0) {
        section.rowHeight = std::max(height, 0.0);
        section.rows = count;
        bottom_ = section.bottom();
        return;
    }
    for (int i = 0; i < count; ++i)
        appendRow(height);
}

int UITableViewLayout::rowCount(int section) const {
    if (section < 0 || section >= sectionCount())
        return 0;
    return sections_[static_cast<std::size_t>(section)].rows;
}

int UITableViewLayout::rowCount() const {
    int count = 0;
    for (const Section& section : sections_)
        count += section.rows;
    return count;
}

bool UITableViewLayout::contains(const NSIndexPath& path) const {
    return path.row >= 0 && path.row < rowCount(path.section);
}

UITableViewLayout::Span UITableViewLayout::section(int section) const {
    const Section& found = sections_[static_cast<std::size_t>(section)];
    return {found.top, found.bottom() - found.top};
}

UITableViewLayout::Span UITableViewLayout::header(int section) const {
    const Section& found = sections_[static_cast<std::size_t>(section)];
    return {found.top, found.headerHeight};
}

UITableViewLayout::Span UITableViewLayout::row(const NSIndexPath& path) const {
    return sections_[static_cast<std::size_t>(path.section)].row(path.row);
}

UITableViewLayout::Span UITableViewLayout::stickyHeader(int section, double offset) const {
    const Section& found = sections_[static_cast<std::size_t>(section)];
    const double latest = found.bottom() - found.headerHeight;
    return {std::clamp(offset, found.top, std::max(found.top, latest)), found.headerHeight};
}

int UITableViewLayout::sectionAt(double y) const {
    const auto found =
        std::upper_bound(sections_.begin(), sections_.end(), y,
                         [](double place, const Section& each) { return place < each.top; });
    if (sections_.empty())
        return -1;
    return std::max(static_cast<int>(found - sections_.begin()) - 1, 0);
}

std::optional<NSIndexPath> UITableViewLayout::firstRowBelow(double y) const {
    for (int section = sectionAt(y); section >= 0 && section < sectionCount(); ++section) {
        const Section& found = sections_[static_cast<std::size_t>(section)];
        const int row = found.rowBelow(y);
        if (row < found.rows)
            return NSIndexPath{section, row};
    }
    return std::nullopt;
}

std::optional<NSIndexPath> UITableViewLayout::rowAt(double y) const {
    const auto found = firstRowBelow(y);
    if (!found || row(*found).top > y)
        return std::nullopt;
    return found;
}

std::optional<NSIndexPath> UITableViewLayout::next(NSIndexPath path) const {
    ++path.row;
    while (path.section < sectionCount()) {
        if (path.row < rowCount(path.section))
            return path;
        path = {path.section + 1, 0};
    }
    return std::nullopt;
}

std::optional<NSIndexPath> UITableViewLayout::previous(NSIndexPath path) const {
    --path.row;
    while (path.section >= 0) {
        if (path.row >= 0 && path.row < rowCount(path.section))
            return path;
        --path.section;
        path.row = rowCount(path.section) - 1;
    }
    return std::nullopt;
}

std::optional<NSIndexPath> UITableViewLayout::first() const {
    return next({0, -1});
}

std::optional<NSIndexPath> UITableViewLayout::last() const {
    return previous({sectionCount(), 0});
}

}
