#pragma once

namespace vistrel {
class UIApplication;

class UIApplicationDelegate {
public:
    virtual ~UIApplicationDelegate() = default;
    virtual void applicationDidFinishLaunching(UIApplication& application) = 0;
    virtual void applicationWillTerminate(UIApplication&) {}
    virtual void applicationDidReceiveMemoryWarning(UIApplication&) {}
};

}
