#pragma once
#include "platform/foundation/NSNotificationCenter.h"
#include "platform/media/AudioSession.h"
#include "platform/media/MPMoviePlayerController.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {

/// A fresh application, audio session and player interface for each test.
class MediaTest : public support::ScreenTest {
protected:
    MediaTest() { forget(); }
    ~MediaTest() override { forget(); }

private:
    static void forget() {
        AudioSessionReset();
        MPMoviePlayerController::setOfferedInterface(
            MPMoviePlayerController::Interface::LoadStates);
    }
};

}
