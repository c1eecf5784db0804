#include "platform/uikit/UIBarButtonItem.h"
#include "platform/uikit/UINavigationBar.h"
#include "shell/AboutPageViewController.h"
#include "shell/RootViewController.h"
#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

class AboutPageTest : public support::ScreenTest {
protected:
    std::shared_ptr<RootViewController> menu_ = show<RootViewController>();
};

TEST_F(AboutPageTest, TheCreditsButtonAndTheLogoOpenItAndDoneClosesIt) {
    for (const char* opener : {"Credits", "Vistrel"}) {
        EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, opener)) << opener;
        const auto page = presented<AboutPageViewController>();
        ASSERT_TRUE(page) << opener;
        using Orientation = UIInterfaceOrientation;
        EXPECT_TRUE(page->shouldAutorotateToInterfaceOrientation(Orientation::Portrait));
        EXPECT_FALSE(page->shouldAutorotateToInterfaceOrientation(Orientation::LandscapeLeft));
        const auto picture = find(UIAccessibilityRole::Image, "About Vistrel");
        EXPECT_EQ(picture->frame(), CGRectMake(0, 44, 320, 416)) << "below the bar";
        EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Done"));
        EXPECT_FALSE(presented());
        EXPECT_EQ(top(), menu_);
    }
}

TEST_F(AboutPageTest, DonateOpensTheAddressWithItsQueryInOrder) {
    deterministicHost().settings = {{"donation/host", "pay.example"},
                                    {"donation/business", "A&B"},
                                    {"donation/item-name", "Zoë's fund"}};
    EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Credits"));
    EXPECT_TRUE(tapElement(UIAccessibilityRole::Button, "Donate"));
    EXPECT_THAT(desktop().openedURLs(),
                ElementsAre("https://pay.example/cgi-bin/webscr?cmd=_donations&business=A%26B&lc=IE"
                            "&item_name=Zo%C3%AB%27s%20fund&currency_code=EUR"
                            "&bn=PP%2dDonationsBF%3abtn_donate_LG%2egif%3aNonHosted"));
}

TEST_F(AboutPageTest, TheButtonsOfAPageThatHasGoneDoNothing) {
    auto page = std::make_shared<AboutPageViewController>();
    const auto view = page->view();
    const auto bar = std::dynamic_pointer_cast<UINavigationBar>(view->subviews().front());
    page.reset();
    bar->topItem()->leftBarButtonItem()->perform();
    bar->topItem()->rightBarButtonItem()->perform();
    EXPECT_THAT(desktop().openedURLs(), IsEmpty());
}

}
}
