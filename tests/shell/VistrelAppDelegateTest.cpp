#include "shell/VistrelAppDelegate.h"

#include "platform/foundation/NSURL.h"
#include "platform/uikit/UIAlertView.h"
#include "platform/uikit/UIApplication.h"
#include "platform/uikit/UINavigationController.h"
#include "shell/MainInterface.h"
#include "shell/RootViewController.h"
#include "tests/support/HostTest.h"
#include "web/WebBrowserViewController.h"

namespace vistrel {
namespace {

constexpr const char* kFolder = "/var/mobile/Library/Downloads";

/// Leaves when it is asked to, if it may.
class ModalScreen : public UIViewController {
public:
    bool escapePressed() override { return mayLeave && UIViewController::escapePressed(); }
    bool mayLeave = false;
};

class StartUpTest : public support::HostTest {
protected:
    ~StartUpTest() override { UIApplication::resetSharedApplication(); }

    void launch() {
        UIApplication::resetSharedApplication();
        delegate_ = std::dynamic_pointer_cast<VistrelAppDelegate>(makeMainInterface());
        UIApplication::sharedApplication().setDelegate(delegate_);
        UIApplication::sharedApplication().finishLaunching();
    }

    std::shared_ptr<VistrelAppDelegate> delegate_;
};

TEST_F(StartUpTest, TheSplashCoversTheMenuThenGrowsAndFades) {
    files().putFolder(kFolder);
    launch();
    const auto window = delegate_->window();
    ASSERT_EQ(window->subviews().size(), 2U);
    const std::weak_ptr<UIView> splash = window->subviews().back();
    EXPECT_EQ(splash.lock()->presentationState().bounds.size, (CGSize{320, 480}));
    advance(0.25);
    const CGSize grown = splash.lock()->presentationState().bounds.size;
    EXPECT_GT(grown.width, 320);
    EXPECT_LT(grown.width, 440);
    EXPECT_GT(splash.lock()->presentationState().alpha, 0);
    advance(0.35);
    EXPECT_TRUE(splash.expired());
    EXPECT_EQ(window->subviews().size(), 1U);
    EXPECT_TRUE(std::dynamic_pointer_cast<RootViewController>(
        delegate_->navigationController()->topViewController()));
}

TEST_F(StartUpTest, AnAddressFromTheDesktopOpensOnTopOfWhatIsOpen) {
    files().putFolder(kFolder);
    launch();
    auto& application = UIApplication::sharedApplication();
    const auto open = [&](const char* address) {
        return delegate_->applicationHandleOpenURL(application, *NSURL::URLWithString(address));
    };
    const auto navigation = delegate_->navigationController();
    const auto modal = std::make_shared<ModalScreen>();
    navigation->presentModalViewController(modal, false);
    EXPECT_TRUE(open("http://films.example/page"));
    EXPECT_EQ(navigation->modalViewController(), modal) << "as a mail that is being written";
    modal->mayLeave = true;
    EXPECT_TRUE(open("http://films.example/page"));
    EXPECT_FALSE(navigation->modalViewController());
    advance(1);
    navigation->popViewControllerAnimated(false);
    navigation->presentModalViewController(modal, false);
    EXPECT_FALSE(open("ftp://films.example/page"));
    EXPECT_TRUE(open("file:///etc/passwd"));
    advance(0);
    ASSERT_EQ(UIAlertView::visibleAlerts().size(), 1U) << "a file is never a page";
    EXPECT_EQ(UIAlertView::visibleAlerts().front()->title(), "Cannot Be Played");
    EXPECT_EQ(navigation->modalViewController(), modal) << "nothing closes for a question";
    advance(1);
    EXPECT_EQ(navigation->viewControllers().size(), 2U);
    const auto browser =
        std::dynamic_pointer_cast<WebBrowserViewController>(navigation->topViewController());
    ASSERT_TRUE(browser);
    EXPECT_EQ(browser->URL()->absoluteString(), "http://films.example/page");
}

TEST_F(StartUpTest, AMissingDownloadsFolderIsCreated) {
    launch(); // without the folder above nothing can be
    const std::vector<std::string> creates{"Creating Downloads Directory"};
    EXPECT_EQ(std::exchange(logLines(), {}), creates);
    EXPECT_FALSE(files().info(kFolder).ok());
    files().putFolder("/var/mobile/Library");
    launch();
    EXPECT_EQ(std::exchange(logLines(), {}), creates);
    EXPECT_TRUE(files().info(kFolder).ok());
    launch();
    EXPECT_TRUE(logLines().empty());
}

}
}
