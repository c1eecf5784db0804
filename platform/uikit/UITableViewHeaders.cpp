#include "platform/uikit/UITableViewHeaders.h"

#include "platform/uikit/UITableView.h"
#include "platform/uikit/UITableViewLayout.h"
#include "platform/uikit/UITableViewTitleHeader.h"
#include "platform/uikit/UIViewAnimation.h"

#include <utility>

namespace vistrel {

void UITableViewHeaders::clear() {
    for (const auto& [section, view] : std::exchange(visible_, {}))
        view->removeFromSuperview();
    headers_.clear();
}

double UITableViewHeaders::load(int section) {
    Header& header = headers_.emplace_back();
    if (const auto delegate = table_.delegate())
        header.view = delegate->tableViewViewForHeaderInSection(table_, section);
    if (const auto source = table_.dataSource(); source && !header.view)
        header.title = source->tableViewTitleForHeaderInSection(table_, section).value_or("");
    const bool hasHeader = header.view || !header.title.empty();
    return hasHeader ? table_.sectionHeaderHeight() : 0;
}

void UITableViewHeaders::tile(double top, double bottom) {
    const auto place = [&](int section) {
        return sticks_ ? layout_.stickyHeader(section, top) : layout_.header(section);
    };
    const auto isAway = [&](int section) {
        const auto span = place(section);
        return span.height <= 0 || span.bottom() <= top || span.top >= bottom;
    };
    for (auto each = visible_.begin(); each != visible_.end();) {
        if (isAway(each->first)) {
            each->second->removeFromSuperview();
            each = visible_.erase(each);
        } else {
            ++each;
        }
    }
    const int first = std::max(layout_.sectionAt(top), 0);
    for (int section = first; section < layout_.sectionCount(); ++section) {
        if (layout_.header(section).top >= bottom)
            break;
        if (isAway(section))
            continue;
        const auto span = place(section);
        const bool arrives = !visible_.contains(section);
        if (arrives)
            show(section);
        UIView& view = *visible_[section];
        const CGRect frame = span.rect(table_.bounds().size.width);
        if (view.frame() == frame)
            continue;
        if (arrives)
            UIViewAnimation::withoutAnimation([&] { view.setFrame(frame); });
        else
            view.setFrame(frame);
    }
}

void UITableViewHeaders::show(int section) {
    Header& header = headers_[static_cast<std::size_t>(section)];
    if (!header.view)
        header.view = std::make_shared<UITableViewTitleHeader>(header.title);
    visible_[section] = header.view;
    table_.addContentInFront(header.view);
}

std::shared_ptr<UIView> UITableViewHeaders::viewFor(int section) const {
    const auto found = visible_.find(section);
    return found == visible_.end() ? nullptr : found->second;
}

}
