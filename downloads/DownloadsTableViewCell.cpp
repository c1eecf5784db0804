#include "downloads/DownloadsTableViewCell.h"

#include "platform/graphics/CGContext.h"
#include "platform/graphics/UIFont.h"
#include "platform/graphics/UIImage.h"
#include "platform/graphics/UIStringDrawing.h"

#include <utility>

namespace vistrel {

namespace {

constexpr double kEditingShift = 30;
constexpr CGRect kShadowTextRect = CGRectMake(90, 18, 230, 5);
constexpr CGRect kTextRect = CGRectMake(90, 17, 230, 5);
constexpr CGRect kIconRect = CGRectMake(45, 15, 32, 32);

const UIFont& downloadsTextFont() {
    static const UIFont font = UIFont::boldSystemFontOfSize(20);
    return font;
}

}

DownloadsTableViewCell::DownloadsTableViewCell(std::string reuseIdentifier)
    : ABTableViewCellOpaque(UITableViewCellStyle::Default, std::move(reuseIdentifier)) {}

void DownloadsTableViewCell::setFileName(std::string fileName) {
    fileName_ = std::move(fileName);
    setNeedsDisplay();
}

void DownloadsTableViewCell::layoutSubviews() {
    CGRect rect = bounds();
    rect.size.width += kEditingShift;
    if (!isEditing() || showingDeleteConfirmation())
        rect.origin.x -= kEditingShift;
    contentView()->setFrame(rect);
    ABTableViewCellOpaque::layoutSubviews();
}

void DownloadsTableViewCell::drawContentView(const CGRect& rect) {
    const bool highlighted = isHighlighted();
    const UIColor textColor = highlighted
                                  ? UIColor::whiteColor()
                                  : UIColor::colorWithRedGreenBlueAlpha(0.102F, 0.102F, 0.102F, 1);
    const UIColor shadowColor =
        highlighted ? UIColor::blackColor()
                    : UIColor::colorWithRedGreenBlueAlpha(0.988F, 0.988F, 0.988F, 0.7F);

    UIColor::clearColor().set();
    CGContextFillRect(UIGraphicsGetCurrentContext(), rect);
    if (!highlighted) {
        if (const auto background = UIImage::imageNamed("DownloadsTableViewCell.png"))
            background->stretchableImage(0, 0)->drawInRect(rect);
    }
    shadowColor.set();
    drawInRectWithFont(fileName_, kShadowTextRect, downloadsTextFont(),
                       UILineBreakMode::TailTruncation);
    textColor.set();
    drawInRectWithFont(fileName_, kTextRect, downloadsTextFont(), UILineBreakMode::TailTruncation);
    if (fileImage_)
        fileImage_->drawInRect(kIconRect);
}

UIAccessibilityElement DownloadsTableViewCell::accessibilityElement() const {
    return {UIAccessibilityRole::Row, fileName_, {}, true};
}

}
