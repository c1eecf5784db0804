#pragma once
#include "platform/uikit/UIView.h"

#include <functional>

namespace vistrel {

/// The music player's root view: the space bar plays and pauses, wherever the focus is.
class OvoAudioPlayerRootView : public UIView {
public:
    OvoAudioPlayerRootView(CGRect frame, std::function<void()> playOrPause);
    bool keyPressed(const UIKey& key) override;

private:
    std::function<void()> playOrPause_;
};

}
