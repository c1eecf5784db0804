#pragma once

namespace vistrel {

/// What brings up a window over everything: an alert, a sheet.
class UIModalOwner {
public:
    virtual ~UIModalOwner() = default;
};

}
