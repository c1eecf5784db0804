#pragma once
#include "platform/graphics/CGGeometry.h"
#include "platform/graphics/UIColor.h"
#include "platform/uikit/UIBarButtonItem.h"

#include <string>

namespace vistrel {

/// The symbols and names of system items.
namespace UIBarSymbols {

/// False for items that are words ("Done") or spaces.
bool isSymbol(UIBarButtonSystemItem item);
/// Draws the symbol about `center`, 20 points wide, into the current context.
void draw(UIBarButtonSystemItem item, CGPoint center, const UIColor& color);
/// The word on the button, and what screen readers say for a symbol; in the user's language.
std::string name(UIBarButtonSystemItem item);

}
}
