#pragma once

namespace vistrel {

/// Names of the notifications that the application posts. Here, because those who only listen to
/// them need no screen.
inline constexpr const char* UIApplicationDidFinishLaunchingNotification =
    "UIApplicationDidFinishLaunchingNotification";
inline constexpr const char* UIApplicationWillTerminateNotification =
    "UIApplicationWillTerminateNotification";
inline constexpr const char* UIApplicationWillResignActiveNotification =
    "UIApplicationWillResignActiveNotification";
inline constexpr const char* UIApplicationDidEnterBackgroundNotification =
    "UIApplicationDidEnterBackgroundNotification";
inline constexpr const char* UIApplicationWillEnterForegroundNotification =
    "UIApplicationWillEnterForegroundNotification";
inline constexpr const char* UIApplicationDidBecomeActiveNotification =
    "UIApplicationDidBecomeActiveNotification";
inline constexpr const char* UIApplicationDidChangeStatusBarOrientationNotification =
    "UIApplicationDidChangeStatusBarOrientationNotification";

}
