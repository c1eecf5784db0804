#include "catalogue/MoviesTableViewCell.h"

#include "platform/graphics/CGContext.h"
#include "platform/graphics/UIFont.h"
#include "platform/graphics/UIImage.h"
#include "platform/graphics/UIStringDrawing.h"

#include <utility>

namespace vistrel {

namespace {

const UIFont moviesTextFont = UIFont::boldSystemFontOfSize(19);
constexpr UIColor kLightGreen = UIColor::colorWithRedGreenBlueAlpha(0.816F, 0.956F, 0.851F, 1);
constexpr UIColor kDarkGrey = UIColor::colorWithRedGreenBlueAlpha(0.102F, 0.102F, 0.102F, 1);

void drawText(const std::string& text, double y, const UIColor& color, UILineBreakMode mode) {
    color.set();
    drawInRectWithFont(text, CGRectMake(75, y, 175, 40), moviesTextFont, mode,
                       UITextAlignment::Center);
}

}

MoviesTableViewCell::MoviesTableViewCell(std::string reuseIdentifier)
    : ABTableViewCell(UITableViewCellStyle::Default, std::move(reuseIdentifier)) {}

void MoviesTableViewCell::setTopTextLabel(std::string text) {
    topTextLabel_ = std::move(text);
    setNeedsDisplay();
}

void MoviesTableViewCell::setBottomTextLabel(std::string text) {
    bottomTextLabel_ = std::move(text);
    setNeedsDisplay();
}

void MoviesTableViewCell::drawContentView(const CGRect& rect) {
    UIColor::clearColor().set();
    CGContextFillRect(UIGraphicsGetCurrentContext(), rect);
    if (const auto card = UIImage::imageNamed("MoviesTableViewCell.png"))
        card->drawAtPoint({0, 0});
    drawText(topTextLabel_, 54, kLightGreen, UILineBreakMode::TailTruncation);
    drawText(topTextLabel_, 55, kDarkGrey, UILineBreakMode::TailTruncation);
    drawText(bottomTextLabel_, 81, kLightGreen, UILineBreakMode::WordWrap);
    drawText(bottomTextLabel_, 80, kDarkGrey, UILineBreakMode::WordWrap);
}

}
