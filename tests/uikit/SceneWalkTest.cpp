#include "platform/graphics/Bitmap.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/CAGradientLayer.h"
#include "platform/uikit/ImageRenderer.h"
#include "platform/uikit/UIView.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

constexpr std::uint32_t kClear = 0;
constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kGreen = 0xFF00FF00;
constexpr std::uint32_t kBlue = 0xFF0000FF;
constexpr UIColor red = UIColor::redColor();
constexpr UIColor green = {0, 1, 0, 1};
constexpr UIColor blue = {0, 0, 1, 1};

std::shared_ptr<UIView> addColored(UIView& above, const CGRect& frame, const UIColor& color) {
    auto view = std::make_shared<UIView>(frame);
    view->setBackgroundColor(color);
    above.addSubview(view);
    return view;
}

void fill(CGContext& context, const UIColor& color, const CGRect& rect) {
    context.setFillColor(color);
    context.fillRect(rect);
}

/// Left half red, right half blue; the upper left quarter green.
void paintQuarters(CGContext& context) {
    fill(context, red, CGRectMake(0, 0, 10, 20));
    fill(context, blue, CGRectMake(10, 0, 10, 20));
    fill(context, green, CGRectMake(0, 0, 10, 10));
}

/// Draws with a function and counts how often.
class Painter : public UIView {
public:
    explicit Painter(CGRect frame, std::function<void(CGContext&)> painting = paintQuarters)
        : UIView(frame)
        , painting_(std::move(painting)) {
        setOpaque(false);
    }
    bool drawsContent() const override { return true; }
    void drawRect(const CGRect& /*rect*/) override {
        ++paintings;
        painting_(*UIGraphicsGetCurrentContext());
    }
    std::shared_ptr<const Bitmap> contentPicture() override { return picture; }

    int paintings = 0;
    std::shared_ptr<const Bitmap> picture;

private:
    std::function<void(CGContext&)> painting_;
};

class SceneWalkTest : public testing::Test {
protected:
    ~SceneWalkTest() override { UIImage::setScreenScale(1); }
    std::uint32_t at(int x, int y) { return renderViewToBitmap(*root, 1)->pixel(x, y); }
    template <typename... Arguments>
    std::shared_ptr<Painter> addPainter(Arguments&&... arguments) {
        auto view = std::make_shared<Painter>(std::forward<Arguments>(arguments)...);
        root->addSubview(view);
        return view;
    }
    std::shared_ptr<UIView> root = std::make_shared<UIView>(CGRectMake(0, 0, 40, 40));
};

TEST_F(SceneWalkTest, LaterSubviewsCoverEarlierOnes) {
    auto below = addColored(*root, CGRectMake(0, 0, 20, 20), red);
    addColored(*root, CGRectMake(10, 10, 20, 20), blue);
    EXPECT_EQ(at(5, 5), kRed);
    EXPECT_EQ(at(15, 15), kBlue);
    EXPECT_EQ(at(35, 35), kClear);
    root->bringSubviewToFront(*below);
    EXPECT_EQ(at(15, 15), kRed);
}

TEST_F(SceneWalkTest, AQuarterTurnMovesEachCornerClockwise) {
    auto view = addPainter(CGRectMake(10, 10, 20, 20));
    EXPECT_EQ(at(12, 12), kGreen);
    EXPECT_EQ(at(12, 28), kRed);
    EXPECT_EQ(at(28, 12), kBlue);
    view->setTransform(CGAffineTransformMakeRotation(M_PI / 2));
    EXPECT_EQ(at(28, 12), kGreen) << "upper left goes to the upper right";
    EXPECT_EQ(at(12, 12), kRed) << "lower left goes to the upper left";
    EXPECT_EQ(at(28, 28), kBlue) << "upper right goes to the lower right";
}

TEST_F(SceneWalkTest, AlphaFadesAViewWithItsSubviewsAsOne) {
    root->setBackgroundColor(UIColor::whiteColor());
    auto group = addColored(*root, CGRectMake(0, 0, 20, 20), red);
    addColored(*group, CGRectMake(0, 0, 20, 10), blue);
    group->setAlpha(0.5);
    const auto upper = at(5, 5);
    EXPECT_NEAR(static_cast<int>(upper >> 16 & 0xFF), 128, 1) << "no red under the blue";
    EXPECT_NEAR(static_cast<int>(upper & 0xFF), 255, 1);
    const auto lower = at(5, 15);
    EXPECT_NEAR(static_cast<int>(lower >> 16 & 0xFF), 255, 1);
    EXPECT_NEAR(static_cast<int>(lower & 0xFF), 128, 1);
}

TEST_F(SceneWalkTest, OnlyAClippingViewCutsItsSubviewsAndItsOriginScrollsThem) {
    auto frame = std::make_shared<UIView>(CGRectMake(0, 0, 10, 10));
    addColored(*frame, CGRectMake(0, 0, 20, 20), green);
    root->addSubview(frame);
    EXPECT_EQ(at(15, 15), kGreen);
    frame->setClipsToBounds(true);
    EXPECT_EQ(at(5, 5), kGreen);
    EXPECT_EQ(at(15, 15), kClear);
    frame->setBounds(CGRectMake(0, 15, 10, 10));
    EXPECT_EQ(at(5, 3), kGreen);
    EXPECT_EQ(at(5, 7), kClear);
    frame->setHidden(true);
    EXPECT_EQ(at(5, 3), kClear);
}

TEST_F(SceneWalkTest, OnlyADirtyViewInsideTheClipIsPainted) {
    root->setClipsToBounds(true);
    auto view = addPainter(CGRectMake(0, 50, 20, 20));
    const auto paintingsAfter = [&](auto change) {
        change();
        renderViewToBitmap(*root, 1);
        renderViewToBitmap(*root, 1);
        return view->paintings;
    };
    EXPECT_EQ(paintingsAfter([] {}), 0);
    EXPECT_EQ(paintingsAfter([&] { view->setFrame(CGRectMake(0, 30, 20, 20)); }), 1);
    EXPECT_EQ(paintingsAfter([&] { view->setCenter({25, 25}); }), 1);
    EXPECT_EQ(paintingsAfter([&] { view->setAlpha(0.5); }), 1);
    EXPECT_EQ(paintingsAfter([&] { view->setTransform(CGAffineTransformMakeScale(2, 0.5)); }), 1);
    EXPECT_EQ(paintingsAfter([&] { view->setHidden(true); }), 1);
    EXPECT_EQ(paintingsAfter([&] { view->setHidden(false); }), 1);
    EXPECT_EQ(paintingsAfter([&] { root->setBounds(CGRectMake(0, 5, 40, 40)); }), 1);
    EXPECT_EQ(paintingsAfter([&] { view->setNeedsDisplay(); }), 2);
    EXPECT_EQ(paintingsAfter([&] { view->setFrame(CGRectMake(0, 0, 30, 20)); }), 3);
    EXPECT_EQ(paintingsAfter([] { UIImage::setScreenScale(2); }), 4);
}

TEST_F(SceneWalkTest, RepaintingStartsFromAClearPicture) {
    int round = 0;
    auto view = addPainter(CGRectMake(0, 0, 20, 20), [&](CGContext& context) {
        fill(context, green, CGRectMake(round++ * 10, 0, 10, 20));
    });
    EXPECT_EQ(at(5, 5), kGreen);
    view->setNeedsDisplay();
    EXPECT_EQ(at(5, 5), kClear);
    EXPECT_EQ(at(15, 5), kGreen);
}

TEST_F(SceneWalkTest, AGradientAboveZeroCoversTheSubviews) {
    addColored(*root, CGRectMake(0, 0, 40, 40), red);
    auto layer = std::make_shared<CAGradientLayer>();
    layer->frame = CGRectMake(0, 0, 40, 20);
    layer->gradient.colors = {blue, blue};
    root->insertGradientLayerAtIndex(layer, 0);
    EXPECT_EQ(at(5, 5), kRed);
    layer->zPosition = 2147483648.0;
    EXPECT_EQ(at(5, 5), kBlue);
    EXPECT_EQ(at(5, 25), kRed);
    layer->gradient.colors = {UIColor::clearColor(), blue};
    EXPECT_EQ(at(5, 0) >> 16 & 0xFF, 0xF9U) << "repainted";
    layer->frame = CGRectMake(0, 10, 40, 20);
    EXPECT_EQ(at(5, 5), kRed) << "moved";
    root->removeGradientLayer(*layer);
    EXPECT_EQ(at(5, 15), kRed);
}

TEST_F(SceneWalkTest, AFinishedPictureNeedsNoPainting) {
    auto bitmap = std::make_shared<Bitmap>(1, 2);
    *bitmap->row(0) = kRed;
    *bitmap->row(1) = kBlue;
    auto view = addPainter(CGRectMake(0, 0, 40, 40));
    view->picture = bitmap;
    EXPECT_EQ(at(20, 2), kRed);
    EXPECT_EQ(at(20, 37), kBlue);
    EXPECT_EQ(view->paintings, 0);
}

TEST_F(SceneWalkTest, ARenderedViewsOwnPlaceIsIgnored) {
    Painter view(CGRectMake(100, 200, 20, 20));
    view.setAlpha(0.2);
    view.setTransform(CGAffineTransformMakeRotation(1));
    const auto picture = renderViewToBitmap(view, 2);
    EXPECT_EQ(picture->width(), 40);
    EXPECT_EQ(picture->height(), 40);
    EXPECT_EQ(picture->pixel(5, 5), kGreen);
    EXPECT_TRUE(picture->isOpaque());
}

}
}
