#include "platform/uikit/UITextCaret.h"

#include "platform/foundation/NSTimer.h"
#include "platform/host/Display.h"
#include "platform/host/Host.h"

#include <cmath>
#include <utility>

namespace vistrel {

namespace {
constexpr double kHalfPeriod = 0.5;
constexpr double kWidth = 2;
using TextEntry = host::Display::TextEntry;

void announce(TextEntry entry) {
    if (auto* display = host::current().display)
        display->textEntryChanged(entry);
}
}

UITextCaret::UITextCaret() {
    UIView::setBackgroundColor(UIColor::colorWithRedGreenBlueAlpha(0.26F, 0.42F, 0.95F, 1));
    setUserInteractionEnabled(false);
    setHidden(true);
}

UITextCaret::~UITextCaret() {
    if (active_)
        announce(TextEntry::None);
    if (timer_)
        timer_->invalidate();
}

void UITextCaret::setActive(bool active) {
    const auto entry = secret_ ? TextEntry::Secret : TextEntry::Text;
    if (std::exchange(active_, active) != active)
        announce(active ? entry : TextEntry::None);
    restart();
}

void UITextCaret::moveTo(const CGRect& line) {
    const CGRect place = CGRectMake(std::floor(line.minX()), line.minY(), kWidth, line.size.height);
    if (frame() == place)
        return;
    setFrame(place);
    restart();
}

void UITextCaret::restart() {
    if (timer_)
        timer_->invalidate();
    timer_ = nullptr;
    setHidden(!active_);
    if (active_)
        timer_ = NSTimer::scheduledTimer(kHalfPeriod, NSTimer::Repeats::Yes,
                                         [this] { setHidden(!isHidden()); });
}

}
