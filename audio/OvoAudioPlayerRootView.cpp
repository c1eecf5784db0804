#include "audio/OvoAudioPlayerRootView.h"

#include "platform/uikit/UIKey.h"

#include <utility>

namespace vistrel {

OvoAudioPlayerRootView::OvoAudioPlayerRootView(CGRect frame, std::function<void()> playOrPause)
    : UIView(frame)
    , playOrPause_(std::move(playOrPause)) {
    UIView::setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
}

bool OvoAudioPlayerRootView::keyPressed(const UIKey& key) {
    if (key.code != UIKeyCode::Space)
        return UIView::keyPressed(key);
    playOrPause_();
    return true;
}

}
