#pragma once
#include <memory>
#include <string>

namespace vistrel {
class GADDelegateManager;
class GADInterstitialDelegate;
class GADObjectPrivate;
class GADRequest;
class UIImage;
class UIViewController;
class UIWindow;

/// A full-screen ad between two screens of the host, or over its launch picture. Loads once per
/// request, can be presented when it is ready, and may be destroyed at any time.
class GADInterstitial : public std::enable_shared_from_this<GADInterstitial> {
public:
    static std::shared_ptr<GADInterstitial> make();
    ~GADInterstitial();
    GADInterstitial(const GADInterstitial&) = delete;
    GADInterstitial& operator=(const GADInterstitial&) = delete;

    const std::string& adUnitID() const;
    void setAdUnitID(std::string adUnitID);
    std::shared_ptr<GADInterstitialDelegate> delegate() const;
    /// Not retained.
    void setDelegate(std::weak_ptr<GADInterstitialDelegate> delegate);
    /// The ad's page has finished loading.
    bool isReady() const;
    std::shared_ptr<GADDelegateManager> delegateManager() const;

    /// Null: a request without hints.
    void loadRequest(const std::shared_ptr<GADRequest>& request);
    /// When the interstitial is not ready, this is logged and nothing is presented.
    void presentFromRootViewController(const std::shared_ptr<UIViewController>& controller);
    /// Covers the window with the launch picture and shows the ad if it arrives within the number
    /// of seconds in the user default "applicationTimeout". Does nothing if that is 0 or less.
    void loadAndDisplayRequestUsingWindowInitialImage(const std::shared_ptr<GADRequest>& request,
                                                      const std::shared_ptr<UIWindow>& window,
                                                      std::shared_ptr<const UIImage> image);

private:
    GADInterstitial() = default;
    void setUp();
    std::shared_ptr<GADObjectPrivate> privateObject() const;
};

}
