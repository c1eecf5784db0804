#pragma once
#include "platform/uikit/UIKey.h"

#include <gdk/gdk.h>

namespace vistrel {

/// The layer's key for a GDK key value and its modifiers.
UIKey keyFromGdk(guint value, GdkModifierType state);

}
