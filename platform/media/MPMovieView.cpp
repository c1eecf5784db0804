#include "platform/media/MPMovieView.h"

#include "platform/foundation/NSBundle.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UIEventDispatcher.h"
#include "platform/uikit/UIKey.h"

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {
constexpr double kKeySeek = 10; ///< seconds
constexpr float kKeyVolume = 0.1F;
}

class MPMovieView::Picture : public UIView {
public:
    Picture() { setUserInteractionEnabled(false); }
    void show(host::ForeignContent* content) {
        content_ = content;
        setNeedsComposition();
    }
    host::ForeignContent* foreignContent() override { return content_; }

private:
    host::ForeignContent* content_ = nullptr;
};

MPMovieView::MPMovieView(CGRect frame, MPMovieControls::Actions actions)
    : UIView(frame)
    , actions_(actions)
    , picture_(std::make_shared<Picture>())
    , controls_(MPMovieControls::withActions(frame, std::move(actions))) {
    setBackgroundColor(UIColor::blackColor());
    setClipsToBounds(true);
    addSubview(picture_);
    addSubview(controls_);
    setAccessibility({UIAccessibilityRole::Image, NSLocalizedString("Video"), {}, true});
}

void MPMovieView::setPlayback(host::MoviePlayback* playback) {
    playback_ = playback;
    if (!playback)
        picture_->show(nullptr);
}

void MPMovieView::setControlsWanted(bool wanted) {
    controls_->setHidden(!wanted);
}

void MPMovieView::refresh(bool playing) {
    if (!playback_)
        return;
    const CGSize size{static_cast<double>(playback_->pictureWidth()),
                      static_cast<double>(playback_->pictureHeight())};
    if (size.width != pictureSize_.width || size.height != pictureSize_.height) {
        pictureSize_ = size;
        picture_->show(size.width > 0 ? &playback_->picture() : nullptr);
        setNeedsLayout();
    }
    controls_->update(
        {playback_->currentTime(), playback_->duration(), playback_->volume(), playing});
}

void MPMovieView::layoutSubviews() {
    const CGRect area = bounds();
    controls_->setFrame(area);
    if (pictureSize_.width <= 0 || pictureSize_.height <= 0)
        return;
    const double scale =
        std::min(area.size.width / pictureSize_.width, area.size.height / pictureSize_.height);
    const CGSize shown{pictureSize_.width * scale, pictureSize_.height * scale};
    picture_->setFrame(CGRectMake((area.size.width - shown.width) / 2,
                                  (area.size.height - shown.height) / 2, shown.width,
                                  shown.height));
}

void MPMovieView::touchesEnded(const UITouch&) {
    if (controls_->areShown())
        controls_->hide();
    else
        controls_->show();
}

bool MPMovieView::keyPressed(const UIKey& key) {
    if (!playback_)
        return false;
    switch (key.code) {
    case UIKeyCode::Space:
        actions_.togglePlay();
        break;
    case UIKeyCode::Left:
        actions_.seek(std::max(0.0, playback_->currentTime() - kKeySeek));
        break;
    case UIKeyCode::Right:
        actions_.seek(playback_->currentTime() + kKeySeek);
        break;
    case UIKeyCode::Home:
        actions_.seek(0);
        break;
    case UIKeyCode::Up:
        actions_.setVolume(std::min(1.0F, playback_->volume() + kKeyVolume));
        break;
    case UIKeyCode::Down:
        actions_.setVolume(std::max(0.0F, playback_->volume() - kKeyVolume));
        break;
    case UIKeyCode::Escape:
        actions_.done();
        return true;
    default:
        return false;
    }
    controls_->show();
    return true;
}

void MPMovieView::didMoveToWindow() {
    if (window())
        UIApplication::sharedApplication().events().setFirstResponder(shared_from_this());
}

}
