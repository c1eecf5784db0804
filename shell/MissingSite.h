#pragma once

namespace vistrel {

/// Unless a content site is set, tells the user so and offers to open the settings file, which is
/// created with an entry to fill in when it is missing.
void remindOfMissingSite();

}
