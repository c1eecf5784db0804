#pragma once
#include <memory>

namespace vistrel {
class UIBarButtonItem;
class UIToolbar;

/// The first item, in order, with the tag; null for none.
std::shared_ptr<UIBarButtonItem> itemWithTag(const UIToolbar& toolbar, int tag);
/// Puts `item` in the place of the first item with the tag, without animation. Nothing when there
/// is none.
void replaceItemWithTagWithItem(UIToolbar& toolbar, int tag, std::shared_ptr<UIBarButtonItem> item);

}
