#include "platform/uikit/UIView.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>

namespace vistrel {
namespace {

std::shared_ptr<UIView> viewAt(double x, double y, double width, double height) {
    return std::make_shared<UIView>(CGRectMake(x, y, width, height));
}

MATCHER_P(IsRect, expected, "") {
    *result_listener << "(" << arg.minX() << ", " << arg.minY() << ", " << arg.size.width << ", "
                     << arg.size.height << ")";
    const auto near = [](double a, double b) {
        return std::abs(a - b) < 1e-9;
    };
    return near(arg.minX(), expected.minX()) && near(arg.minY(), expected.minY()) &&
           near(arg.size.width, expected.size.width) && near(arg.size.height, expected.size.height);
}

TEST(UIViewGeometryTest, TheFrameIsTheBoundingBoxUnderTheTransform) {
    const struct {
        const char* name;
        CGAffineTransform transform;
        CGRect frame;
    } cases[] = {
        {"none", {}, CGRectMake(10, 20, 100, 40)},
        {"quarter turn", CGAffineTransformMakeRotation(M_PI / 2), CGRectMake(40, -10, 40, 100)},
        {"half turn", CGAffineTransformMakeRotation(M_PI), CGRectMake(10, 20, 100, 40)},
        {"doubled", CGAffineTransformMakeScale(2, 2), CGRectMake(-40, 0, 200, 80)},
        {"moved", CGAffineTransformMakeTranslation(5, 7), CGRectMake(15, 27, 100, 40)},
    };
    for (const auto& test : cases) {
        auto view = viewAt(10, 20, 100, 40);
        view->setTransform(test.transform);
        EXPECT_THAT(view->frame(), IsRect(test.frame)) << test.name;
        EXPECT_EQ(view->bounds(), CGRectMake(0, 0, 100, 40)) << test.name;
        const auto target = CGRectMake(30, 40, 60, 80);
        view->setFrame(target);
        EXPECT_THAT(view->frame(), IsRect(target)) << test.name;
        EXPECT_EQ(view->transform(), test.transform) << test.name;
    }
}

TEST(UIViewGeometryTest, TheFrameKeepsTheScrollPositionAndBoundsGrowAroundTheCentre) {
    auto view = viewAt(100, 100, 20, 20);
    view->setBounds(CGRectMake(0, 300, 40, 60));
    EXPECT_EQ(view->center(), (CGPoint{110, 110}));
    EXPECT_EQ(view->frame(), CGRectMake(90, 80, 40, 60));
    view->setFrame(CGRectMake(5, 5, 20, 30));
    EXPECT_EQ(view->bounds(), CGRectMake(0, 300, 20, 30));
}

TEST(UIViewGeometryTest, AutoresizingSharesTheGrowth) {
    constexpr unsigned left = UIViewAutoresizingFlexibleLeftMargin;
    constexpr unsigned width = UIViewAutoresizingFlexibleWidth;
    constexpr unsigned right = UIViewAutoresizingFlexibleRightMargin;
    constexpr unsigned top = UIViewAutoresizingFlexibleTopMargin;
    constexpr unsigned height = UIViewAutoresizingFlexibleHeight;
    constexpr unsigned bottom = UIViewAutoresizingFlexibleBottomMargin;
    const auto rect = CGRectMake;
    const struct {
        const char* name;
        unsigned mask;
        CGRect before;
        CGRect after; ///< the superview goes from 100 x 100 to 200 x 300
    } cases[] = {
        {"none", 0, rect(10, 20, 30, 40), rect(10, 20, 30, 40)},
        {"width", width, rect(10, 20, 30, 40), rect(10, 20, 130, 40)},
        {"left margin", left, rect(10, 20, 30, 40), rect(110, 20, 30, 40)},
        {"right margin", right, rect(10, 20, 30, 40), rect(10, 20, 30, 40)},
        {"both margins", left | right, rect(10, 20, 50, 40), rect(30, 20, 50, 40)},
        {"width and right margin", width | right, rect(20, 20, 20, 40), rect(20, 20, 45, 40)},
        {"all across", left | width | right, rect(10, 20, 30, 40), rect(20, 20, 60, 40)},
        {"no flexible parts", left | right, rect(0, 20, 100, 40), rect(50, 20, 100, 40)},
        {"width and top margin", width | top, rect(0, 0, 100, 44), rect(0, 200, 200, 44)},
        {"height", height, rect(10, 20, 30, 40), rect(10, 20, 30, 240)},
        {"margins above and below", top | bottom, rect(0, 20, 10, 20), rect(0, 70, 10, 20)},
        {"width and height", width | height, rect(0, 0, 100, 100), rect(0, 0, 200, 300)},
    };
    for (const auto& test : cases) {
        auto parent = viewAt(0, 0, 100, 100);
        auto child = std::make_shared<UIView>(test.before);
        child->setAutoresizingMask(test.mask);
        parent->addSubview(child);
        parent->setFrame(CGRectMake(0, 0, 200, 300));
        EXPECT_THAT(child->frame(), IsRect(test.after)) << test.name;
    }
}

TEST(UIViewGeometryTest, AutoresizingReachesGrandchildrenAndCanBeSwitchedOff) {
    auto top = viewAt(0, 0, 100, 100);
    auto middle = viewAt(0, 0, 100, 100);
    auto leaf = viewAt(10, 10, 80, 80);
    middle->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
    leaf->setAutoresizingMask(UIViewAutoresizingFlexibleWidth);
    middle->addSubview(leaf);
    top->addSubview(middle);
    top->setFrame(CGRectMake(0, 0, 150, 100));
    EXPECT_EQ(leaf->frame(), CGRectMake(10, 10, 130, 80));
    top->setAutoresizesSubviews(false);
    top->setFrame(CGRectMake(0, 0, 400, 100));
    EXPECT_EQ(middle->frame(), CGRectMake(0, 0, 150, 100));
}

TEST(UIViewGeometryTest, TouchesReachTheRightPlaceOfARotatedView) {
    const auto screen = viewAt(0, 0, 320, 480);
    const auto video = std::make_shared<UIView>();
    const auto doneButton = viewAt(10, 20, 60, 30);
    screen->addSubview(video);
    video->setBounds(CGRectMake(0, 0, 480, 320));
    video->setCenter({160, 240});
    video->setTransform(CGAffineTransformMakeRotation(M_PI / 2));
    video->addSubview(doneButton);
    EXPECT_THAT(video->frame(), IsRect(CGRectMake(0, 0, 320, 480)));
    // The button's middle (40, 35) in the video is at the upper right of the portrait screen.
    const auto onScreen = video->convertPointToView({40, 35}, screen.get());
    EXPECT_NEAR(onScreen.x, 285, 1e-9);
    EXPECT_NEAR(onScreen.y, 40, 1e-9);
    EXPECT_EQ(screen->hitTest(onScreen), doneButton);
    EXPECT_EQ(screen->hitTest({40, 35}), video);
    const auto back = doneButton->convertPointFromView(onScreen, screen.get());
    EXPECT_NEAR(back.x, 30, 1e-9);
    EXPECT_NEAR(back.y, 15, 1e-9);
    EXPECT_THAT(doneButton->convertRectToView(doneButton->bounds(), screen.get()),
                IsRect(CGRectMake(270, 10, 30, 60)));
}

TEST(UIViewGeometryTest, ATouchGoesToTheFrontmostViewThatAcceptsIt) {
    auto root = viewAt(0, 0, 100, 100);
    auto below = viewAt(0, 0, 100, 100);
    auto above = viewAt(50, 0, 50, 100);
    root->addSubview(below);
    root->addSubview(above);
    const auto hit = [&] {
        return root->hitTest({75, 50});
    };
    EXPECT_EQ(hit(), above);
    root->bringSubviewToFront(*below);
    EXPECT_EQ(hit(), below);
    root->sendSubviewToBack(*below);
    above->setHidden(true);
    EXPECT_EQ(hit(), below);
    above->setHidden(false);
    above->setAlpha(0);
    EXPECT_EQ(hit(), below);
    above->setAlpha(1);
    above->setUserInteractionEnabled(false);
    EXPECT_EQ(hit(), below);
    below->setUserInteractionEnabled(false);
    EXPECT_EQ(hit(), root);
    EXPECT_EQ(root->hitTest({100, 50}), nullptr);
    const auto row = viewAt(0, 300, 100, 44);
    root->addSubview(row);
    root->setBounds(CGRectMake(0, 300, 100, 100));
    EXPECT_EQ(root->hitTest({50, 320}), row) << "scrolled";
}

TEST(UIViewGeometryTest, SubviewsKeepTheOrderOfInsertion) {
    auto root = viewAt(0, 0, 10, 10);
    std::vector<std::shared_ptr<UIView>> views;
    for (int i = 0; i < 4; ++i) {
        views.push_back(viewAt(0, 0, 1, 1));
        root->addSubview(views.back());
    }
    using testing::ElementsAre;
    const auto order = [&](const UIView& view) {
        std::vector<std::ptrdiff_t> indices;
        for (const auto& child : view.subviews())
            indices.push_back(std::find(views.begin(), views.end(), child) - views.begin());
        return indices;
    };
    root->insertSubviewBelowSubview(views[3], *views[1]);
    EXPECT_THAT(order(*root), ElementsAre(0, 3, 1, 2));
    root->insertSubviewBelowSubview(views[3], *views[2]);
    EXPECT_THAT(order(*root), ElementsAre(0, 1, 3, 2));
    root->insertSubviewAtIndex(views[3], 0);
    EXPECT_THAT(order(*root), ElementsAre(3, 0, 1, 2));
    root->addSubview(views[0]);
    EXPECT_THAT(order(*root), ElementsAre(3, 1, 2, 0));
}

TEST(UIViewGeometryTest, AViewHasOneSuperviewAtATime) {
    auto first = viewAt(0, 0, 10, 10);
    auto second = viewAt(0, 0, 10, 10);
    auto child = viewAt(0, 0, 1, 1);
    first->addSubview(child);
    second->addSubview(child);
    EXPECT_TRUE(first->subviews().empty());
    EXPECT_EQ(child->superview(), second.get());
    second.reset();
    EXPECT_EQ(child->superview(), nullptr);
    child->removeFromSuperview();
}

TEST(UIViewGeometryTest, LayoutRunsOncePerRequest) {
    class Counting : public UIView {
    public:
        using UIView::UIView;
        void layoutSubviews() override { ++layouts; }
        int layouts = 0;
    };
    auto root = viewAt(0, 0, 10, 10);
    auto middle = viewAt(0, 0, 10, 10);
    auto leaf = std::make_shared<Counting>(CGRectMake(0, 0, 5, 5));
    middle->addSubview(leaf);
    root->addSubview(middle);
    root->layoutIfNeeded();
    root->layoutIfNeeded();
    EXPECT_EQ(leaf->layouts, 1);
    leaf->setFrame(CGRectMake(3, 3, 5, 5));
    root->layoutIfNeeded();
    EXPECT_EQ(leaf->layouts, 1) << "moving needs no layout";
    leaf->setFrame(CGRectMake(3, 3, 6, 5));
    root->layoutIfNeeded();
    EXPECT_EQ(leaf->layouts, 2);
}

}
}
