#pragma once

namespace vistrel {

/// Tells the user that no content site is set, when none is, and offers to open the settings file,
/// which is created with a first entry to fill in when it is missing.
void remindOfMissingSite();

}
