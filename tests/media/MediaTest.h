#pragma once
#include "platform/foundation/NSNotificationCenter.h"
#include "platform/media/AudioSession.h"
#include "platform/media/MPMoviePlayerController.h"
#include "platform/uikit/UIApplication.h"
#include "tests/support/HostTest.h"

namespace vistrel {

/// A fresh host, application, audio session and player interface for each test.
class MediaTest : public support::HostTest {
protected:
    MediaTest() { forget(); }
    ~MediaTest() override { forget(); }

private:
    static void forget() {
        AudioSessionReset();
        UIApplication::resetSharedApplication();
        MPMoviePlayerController::setOfferedInterface(
            MPMoviePlayerController::Interface::LoadStates);
    }
};

}
