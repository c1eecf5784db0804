#include "platform/uikit/UIAccessibilityTree.h"

#include "tests/support/ui/ScreenTest.h"

namespace vistrel {
namespace {

class UIAccessibilityTreeTest : public support::ScreenTest {
protected:
    UIAccessibilityTreeTest() { application().setStatusBarHidden(true); }
    static std::shared_ptr<UIView> element(UIView& above, UIAccessibilityRole role,
                                           const std::string& label, CGRect frame) {
        auto view = std::make_shared<UIView>(frame);
        view->setAccessibility({role, label, {}, true});
        above.addSubview(view);
        return view;
    }
    std::vector<std::string> labels() {
        std::vector<std::string> found;
        for (const auto& seen : accessibilityTree(screen()))
            found.push_back(seen.element.label);
        return found;
    }
    CGRect frameOf(const std::string& label) {
        for (const auto& seen : accessibilityTree(screen())) {
            if (seen.element.label == label)
                return seen.frame;
        }
        return {};
    }
};

TEST_F(UIAccessibilityTreeTest, OnlyWhatCanBePerceivedIsListed) {
    const auto list = add<UIView>(CGRectMake(0, 100, 320, 100));
    list->setClipsToBounds(true);
    const auto row = [&](const char* label, double y) {
        return element(*list, UIAccessibilityRole::Row, label, CGRectMake(0, y, 320, 44));
    };
    row("above", -44);
    row("half", -20);
    auto faded = row("faded", 30);
    row("whole", 30);
    row("below", 100);
    faded->setAlpha(0);
    EXPECT_THAT(labels(), ElementsAre("half", "whole"));
    EXPECT_EQ(frameOf("half"), CGRectMake(0, 100, 320, 24)) << "as far as it is seen";
    EXPECT_EQ(frameOf("whole"), CGRectMake(0, 130, 320, 44));
    list->setBounds(CGRectMake(0, 60, 320, 100));
    EXPECT_THAT(labels(), ElementsAre("whole", "below"));
    list->setHidden(true);
    EXPECT_THAT(labels(), IsEmpty());
}

TEST_F(UIAccessibilityTreeTest, ElementsAreReadAsThePictureIs) {
    using enum UIAccessibilityRole;
    const auto row = element(window(), Row, "Film", CGRectMake(0, 50, 320, 44));
    element(*row, Button, "Delete", CGRectMake(200, 0, 50, 20));
    element(*row, Label, "the row speaks for it", CGRectMake(0, 0, 50, 20));
    element(window(), Button, "Edit", CGRectMake(250, 4, 60, 36));
    element(window(), Heading, "Files", CGRectMake(100, 0, 100, 44));
    const auto back = element(window(), Button, "Back", CGRectMake(5, 7, 60, 30));
    element(*back, Label, "the button speaks for it", CGRectMake(0, 0, 50, 20));
    EXPECT_THAT(labels(), ElementsAre("Back", "Files", "Edit", "Film", "Delete"));
}

TEST_F(UIAccessibilityTreeTest, AnAlertHidesWhatIsBelow) {
    element(window(), UIAccessibilityRole::Button, "below", CGRectMake(0, 0, 50, 50));
    auto alert = std::make_shared<UIWindow>();
    alert->setWindowLevel(UIWindowLevelAlert);
    element(*alert, UIAccessibilityRole::Button, "OK", CGRectMake(0, 0, 50, 50));
    alert->makeKeyAndVisible();
    EXPECT_THAT(labels(), ElementsAre("OK"));
    alert->setUserInteractionEnabled(false);
    EXPECT_THAT(labels(), ElementsAre("below", "OK")) << "a notice that takes no touches";
    alert->setUserInteractionEnabled(true);
    alert->setHidden(true);
    EXPECT_THAT(labels(), ElementsAre("below"));
}

TEST_F(UIAccessibilityTreeTest, FramesFollowTurnsAndPressingTapsThere) {
    class Tapped : public UIView {
    public:
        using UIView::UIView;
        void touchesEnded(const UITouch&) override { ++taps; }
        int taps = 0;
    };
    const auto video = add<UIView>();
    video->setBounds(CGRectMake(0, 0, 480, 320));
    video->setCenter({160, 240});
    video->setTransform(CGAffineTransformMakeRotation(M_PI / 2));
    auto done = std::make_shared<Tapped>(CGRectMake(10, 20, 60, 30));
    done->setAccessibility({UIAccessibilityRole::Button, "Done", {}, true});
    video->addSubview(done);
    EXPECT_EQ(frameOf("Done"), CGRectMake(270, 10, 30, 60));
    EXPECT_NEAR(done->convertPointFromView({40, 35}, video.get()).y, 15, 1e-9);
    EXPECT_NEAR(video->convertPointToView({40, 35}, done.get()).x, 30, 1e-9);
    EXPECT_EQ(window().hitTest({40, 35}), video);
    done->accessibilityActivate();
    EXPECT_EQ(done->taps, 1);
    video->removeFromSuperview();
    done->accessibilityActivate();
    EXPECT_EQ(done->taps, 1) << "not on the screen";
}

}
}
