#include "web/UIToolbarAdditions.h"

#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UIToolbar.h"

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {

auto findTag(const std::vector<std::shared_ptr<UIBarButtonItem>>& items, int tag) {
    return std::find_if(
        items.begin(), items.end(), [tag](const auto& item) { return item->tag() == tag; });
}

}

std::shared_ptr<UIBarButtonItem> itemWithTag(const UIToolbar& toolbar, int tag) {
    const auto found = findTag(toolbar.items(), tag);
    return found == toolbar.items().end() ? nullptr : *found;
}

void replaceItemWithTagWithItem(UIToolbar& toolbar, int tag,
                                std::shared_ptr<UIBarButtonItem> item) {
    const auto found = findTag(toolbar.items(), tag);
    if (found == toolbar.items().end())
        return;
    auto items = toolbar.items();
    items[static_cast<std::size_t>(found - toolbar.items().begin())] = std::move(item);
    toolbar.setItems(std::move(items));
}

}
