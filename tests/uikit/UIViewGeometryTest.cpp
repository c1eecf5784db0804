#include "platform/uikit/UIView.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

using View = std::shared_ptr<UIView>;

View viewAt(double x, double y, double width, double height) {
    return std::make_shared<UIView>(CGRectMake(x, y, width, height));
}

/// Without the small errors of a rotation.
CGRect rounded(const CGRect& rect) {
    return CGRectMake(std::round(rect.minX()), std::round(rect.minY()), std::round(rect.size.width),
                      std::round(rect.size.height));
}

TEST(UIViewGeometryTest, TheFrameIsTheBoundingBoxUnderTheTransform) {
    const std::pair<CGAffineTransform, CGRect> cases[] = {
        {{}, CGRectMake(10, 20, 100, 40)},
        {CGAffineTransformMakeRotation(M_PI / 2), CGRectMake(40, -10, 40, 100)},
        {CGAffineTransformMakeRotation(M_PI), CGRectMake(10, 20, 100, 40)},
        {CGAffineTransformMakeScale(2, 2), CGRectMake(-40, 0, 200, 80)},
        {CGAffineTransformMakeTranslation(5, 7), CGRectMake(15, 27, 100, 40)},
    };
    for (const auto& [transform, frame] : cases) {
        auto view = viewAt(10, 20, 100, 40);
        view->setTransform(transform);
        EXPECT_EQ(rounded(view->frame()), frame);
        EXPECT_EQ(view->bounds(), CGRectMake(0, 0, 100, 40));
        view->setFrame(CGRectMake(30, 40, 60, 80));
        EXPECT_EQ(rounded(view->frame()), CGRectMake(30, 40, 60, 80));
        EXPECT_EQ(view->transform(), transform);
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

TEST(UIViewGeometryTest, AutoresizingSharesTheGrowthDownTheTree) {
    constexpr unsigned left = UIViewAutoresizingFlexibleLeftMargin;
    constexpr unsigned width = UIViewAutoresizingFlexibleWidth;
    constexpr unsigned right = UIViewAutoresizingFlexibleRightMargin;
    constexpr unsigned top = UIViewAutoresizingFlexibleTopMargin;
    constexpr unsigned height = UIViewAutoresizingFlexibleHeight;
    constexpr unsigned bottom = UIViewAutoresizingFlexibleBottomMargin;
    const auto rect = CGRectMake;
    // Before and after the superview goes from 100 x 100 to 200 x 300.
    const std::tuple<const char*, unsigned, CGRect, CGRect> cases[] = {
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
    for (const auto& [name, mask, before, after] : cases) {
        auto root = viewAt(0, 0, 100, 100);
        auto parent = viewAt(0, 0, 100, 100);
        auto child = std::make_shared<UIView>(before);
        parent->setAutoresizingMask(width | height);
        child->setAutoresizingMask(mask);
        root->addSubview(parent);
        parent->addSubview(child);
        root->setFrame(CGRectMake(0, 0, 200, 300));
        EXPECT_EQ(child->frame(), after) << name;
        root->setAutoresizesSubviews(false);
        root->setFrame(CGRectMake(0, 0, 400, 400));
        EXPECT_EQ(parent->frame(), CGRectMake(0, 0, 200, 300)) << name;
    }
}

TEST(UIViewGeometryTest, ATouchGoesToTheFrontmostViewThatAcceptsIt) {
    auto root = viewAt(0, 0, 100, 100);
    auto below = viewAt(0, 0, 100, 100);
    auto above = viewAt(50, 0, 50, 100);
    root->addSubview(below);
    root->addSubview(above);
    const auto hitAfter = [&](auto change) {
        change();
        return root->hitTest({75, 50});
    };
    EXPECT_EQ(hitAfter([] {}), above);
    EXPECT_EQ(hitAfter([&] { root->bringSubviewToFront(*below); }), below);
    EXPECT_EQ(hitAfter([&] { root->sendSubviewToBack(*below); }), above);
    EXPECT_EQ(hitAfter([&] { above->setHidden(true); }), below);
    above->setHidden(false);
    EXPECT_EQ(hitAfter([&] { above->setAlpha(0); }), below);
    above->setAlpha(1);
    EXPECT_EQ(hitAfter([&] { above->setUserInteractionEnabled(false); }), below);
    EXPECT_EQ(hitAfter([&] { below->setUserInteractionEnabled(false); }), root);
    EXPECT_EQ(root->hitTest({100, 50}), nullptr);
    const auto row = viewAt(0, 300, 100, 44);
    root->addSubview(row);
    root->setBounds(CGRectMake(0, 300, 100, 100));
    EXPECT_EQ(root->hitTest({50, 320}), row) << "scrolled";
}

TEST(UIViewGeometryTest, SubviewsKeepTheOrderOfInsertionAndHaveOneSuperview) {
    auto root = viewAt(0, 0, 10, 10);
    const View a = viewAt(0, 0, 1, 1);
    const View b = viewAt(0, 0, 1, 1);
    const View c = viewAt(0, 0, 1, 1);
    const View d = viewAt(0, 0, 1, 1);
    for (const View& each : {a, b, c, d})
        root->addSubview(each);
    root->insertSubviewBelowSubview(d, *b);
    EXPECT_THAT(root->subviews(), ElementsAre(a, d, b, c));
    root->insertSubviewBelowSubview(d, *c);
    EXPECT_THAT(root->subviews(), ElementsAre(a, b, d, c));
    root->insertSubviewAtIndex(d, 0);
    EXPECT_THAT(root->subviews(), ElementsAre(d, a, b, c));
    root->addSubview(a);
    EXPECT_THAT(root->subviews(), ElementsAre(d, b, c, a));
    auto other = viewAt(0, 0, 10, 10);
    other->addSubview(a);
    EXPECT_THAT(root->subviews(), ElementsAre(d, b, c));
    EXPECT_EQ(a->superview(), other.get());
    other.reset();
    EXPECT_EQ(a->superview(), nullptr);
    a->removeFromSuperview();
}

}
}
