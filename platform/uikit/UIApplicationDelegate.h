#pragma once

namespace vistrel {
class NSURL;
class UIApplication;

class UIApplicationDelegate {
public:
    virtual ~UIApplicationDelegate() = default;
    virtual void applicationDidFinishLaunching(UIApplication& application) = 0;
    /// The desktop asks to open an address. False when the application does not.
    virtual bool applicationHandleOpenURL(UIApplication&, const NSURL&) { return false; }
    virtual void applicationWillTerminate(UIApplication&) {}
    virtual void applicationDidReceiveMemoryWarning(UIApplication&) {}
};

}
