#include "audio/OvoAudioPlayerTableViewCell.h"

#include "platform/graphics/CGContext.h"
#include "platform/graphics/UIFont.h"
#include "platform/graphics/UIStringDrawing.h"

#include <utility>

namespace vistrel {

namespace {

const UIFont textFont = UIFont::boldSystemFontOfSize(15);
constexpr CGRect kTitleRect = CGRectMake(75, 12, 185, 15);
constexpr CGRect kNumberRect = CGRectMake(5, 12, 35, 15);
constexpr CGRect kDurationRect = CGRectMake(270, 12, 45, 15);

void strokeColumnLines(CGContext& context, double height, const UIColor& color) {
    context.setStrokeColor(color);
    context.setLineWidth(0.5);
    context.beginPath();
    context.moveTo(63.5, 0);
    context.lineTo(63.5, height);
    context.moveTo(260.5, 0);
    context.lineTo(260.5, height);
    context.strokePath();
}

void fillTriangle(CGContext& context, const UIColor& color) {
    context.setFillColor(color);
    context.beginPath();
    context.moveTo(45, 17);
    context.lineTo(45, 27);
    context.lineTo(55, 22);
    context.closePath();
    context.fillPath();
}

}

OvoAudioPlayerTableViewCell::OvoAudioPlayerTableViewCell(std::string reuseIdentifier)
    : OvoTableViewCell(UITableViewCellStyle::Default, std::move(reuseIdentifier)) {}

void OvoAudioPlayerTableViewCell::setTitle(std::string title) {
    title_ = std::move(title);
    setNeedsDisplay();
}

void OvoAudioPlayerTableViewCell::setNumber(std::string number) {
    number_ = std::move(number);
    setNeedsDisplay();
}

void OvoAudioPlayerTableViewCell::setDuration(std::string duration) {
    duration_ = std::move(duration);
    setNeedsDisplay();
}

void OvoAudioPlayerTableViewCell::setIsSelectedIndex(bool isSelectedIndex) {
    isSelectedIndex_ = isSelectedIndex;
    setNeedsDisplay();
}

void OvoAudioPlayerTableViewCell::drawContentView(const CGRect& rect) {
    CGContext& context = *UIGraphicsGetCurrentContext();
    const bool highlighted = isHighlighted();
    const UIColor clear = UIColor::clearColor();
    const UIColor band = UIColor::colorWithWhiteAlpha(0, 0.25F);
    const UIColor lines = UIColor::colorWithRedGreenBlueAlpha(0.986F, 0.933F, 0.994F, 0.13F);
    const UIColor mark = UIColor::colorWithRedGreenBlueAlpha(0.09F, 0.274F, 0.873F, 1);

    context.setFillColor(isEven_ && !highlighted ? band : clear);
    context.fillRect(rect);

    UIColor::whiteColor().set();
    drawInRectWithFont(title_, kTitleRect, textFont, UILineBreakMode::TailTruncation);
    drawInRectWithFont(number_, kNumberRect, textFont, UILineBreakMode::TailTruncation);
    drawInRectWithFont(duration_, kDurationRect, textFont, UILineBreakMode::TailTruncation,
                       UITextAlignment::Right);
    strokeColumnLines(context, rect.size.height, highlighted ? clear : lines);
    if (isSelectedIndex_)
        fillTriangle(context, highlighted ? UIColor::whiteColor() : mark);
}

}
