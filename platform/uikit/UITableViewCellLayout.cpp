#include "platform/uikit/UITableViewCellLayout.h"

#include <algorithm>
#include <cmath>

namespace vistrel {

namespace {

constexpr double kMargin = 10;
constexpr CGSize kAccessory{10, 14};
constexpr double kCircle = 26;
constexpr double kConfirmationHeight = 32;
constexpr double kIndentation = kMargin + kCircle;

CGRect centredIn(double rowHeight, double x, CGSize size) {
    return CGRectMake(x, std::round((rowHeight - size.height) / 2), size.width, size.height);
}

CGSize fitted(CGSize size, double height) {
    if (size.height <= height)
        return size;
    return {std::round(size.width * height / size.height), height};
}

}

UITableViewCellLayout UITableViewCellLayout::forInput(const UITableViewCellLayoutInput& input) {
    const double width = input.size.width;
    const double height = input.size.height;
    UITableViewCellLayout layout;

    layout.deleteCircle =
        centredIn(height, input.editing ? kMargin : -kIndentation, {kCircle, kCircle});
    const CGSize button{input.confirmationWidth, std::min(kConfirmationHeight, height - 4)};
    layout.confirmation = centredIn(
        height, input.confirming ? width - kMargin - button.width : width + kMargin, button);
    layout.accessory = centredIn(height, width - kMargin - kAccessory.width, kAccessory);

    double left = input.editing ? kIndentation + kMargin : kMargin;
    if (input.imageSize.width > 0) {
        layout.image = centredIn(height, left, fitted(input.imageSize, height - 1));
        left = layout.image.maxX() + kMargin;
    }
    double right = width - kMargin;
    if (input.confirming)
        right = layout.confirmation.minX() - kMargin;
    else if (input.accessory)
        right = layout.accessory.minX() - kMargin;
    layout.text = CGRectMake(left, 0, std::max(right - left, 0.0), height);
    return layout;
}

}
