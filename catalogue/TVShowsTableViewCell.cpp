#include "catalogue/TVShowsTableViewCell.h"

#include "platform/graphics/CGContext.h"
#include "platform/graphics/UIFont.h"
#include "platform/graphics/UIImage.h"
#include "platform/graphics/UIStringDrawing.h"

#include <utility>

namespace vistrel {

namespace {

const UIFont tvShowTextFont = UIFont::boldSystemFontOfSize(20);
constexpr CGRect kTextRect = CGRectMake(12, 9, 220, 10);

}

TVShowsTableViewCell::TVShowsTableViewCell(std::string reuseIdentifier)
    : ABTableViewCellOpaque(UITableViewCellStyle::Default, std::move(reuseIdentifier)) {}

TVShowsTableViewCell::~TVShowsTableViewCell() = default;

void TVShowsTableViewCell::setTvShowText(std::string text) {
    tvShowText_ = std::move(text);
    setNeedsDisplay();
}

void TVShowsTableViewCell::setBackgroundImage(std::shared_ptr<const UIImage> image) {
    backgroundImage_ = std::move(image);
}

void TVShowsTableViewCell::setSelectedBackgroundImage(std::shared_ptr<const UIImage> image) {
    selectedBackgroundImage_ = std::move(image);
}

void TVShowsTableViewCell::drawContentView(const CGRect& rect) {
    const bool highlighted = isHighlighted();
    const UIColor background = highlighted ? UIColor::clearColor() : UIColor::whiteColor();
    const UIColor text =
        highlighted ? UIColor::whiteColor() : UIColor::colorWithRedGreenBlueAlpha(1, 1, 1, 0.8F);

    background.set();
    CGContextFillRect(UIGraphicsGetCurrentContext(), rect);
    if (const auto& image = highlighted ? selectedBackgroundImage_ : backgroundImage_)
        image->drawAtPoint({0, 0});
    text.set();
    drawInRectWithFont(tvShowText_, kTextRect, tvShowTextFont, UILineBreakMode::TailTruncation);
}

}
