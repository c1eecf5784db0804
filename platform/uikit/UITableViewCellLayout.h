#pragma once
#include "platform/graphics/CGGeometry.h"

namespace vistrel {

/// What determines the layout of a row.
struct UITableViewCellLayoutInput {
    CGSize size;             ///< the row
    CGSize imageSize;        ///< zero: no picture
    bool accessory = false;  ///< a disclosure indicator is wanted
    bool editing = false;    ///< the delete circle shows
    bool confirming = false; ///< the confirmation button shows
    double confirmationWidth = 0;
};

/// The parts of a row, in the cell's coordinates. Hidden controls are placed beside the row.
struct UITableViewCellLayout {
    CGRect image;
    CGRect text;
    CGRect accessory;
    CGRect deleteCircle;
    CGRect confirmation;

    static UITableViewCellLayout forInput(const UITableViewCellLayoutInput& input);
};

}
