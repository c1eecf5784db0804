#include "platform/graphics/Bitmap.h"
#include "platform/graphics/UIImage.h"
#include "platform/uikit/CAGradientLayer.h"
#include "platform/uikit/ImageRenderer.h"
#include "platform/uikit/UIView.h"
#include "tests/support/ui/Pixels.h"

namespace vistrel {
namespace {

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
    Painter(CGRect frame, std::function<void(CGContext&)> painting)
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
    std::string seen(const std::string& points) { return colors(*root, points); }
    std::shared_ptr<Painter> addPainter(CGRect frame,
                                        std::function<void(CGContext&)> painting = paintQuarters) {
        auto view = std::make_shared<Painter>(frame, std::move(painting));
        root->addSubview(view);
        return view;
    }
    std::shared_ptr<UIView> root = std::make_shared<UIView>(CGRectMake(0, 0, 40, 40));
};

TEST_F(SceneWalkTest, LaterSubviewsCoverEarlierOnes) {
    auto below = addColored(*root, CGRectMake(0, 0, 20, 20), red);
    addColored(*root, CGRectMake(10, 10, 20, 20), blue);
    EXPECT_EQ(seen("5,5 15,15 35,35"), "red blue clear");
    root->bringSubviewToFront(*below);
    EXPECT_EQ(seen("15,15 25,25"), "red blue");
}

TEST_F(SceneWalkTest, AQuarterTurnMovesEachCornerClockwise) {
    auto view = addPainter(CGRectMake(10, 10, 20, 20));
    // The upper left corner, the upper right, the lower right, the lower left.
    const std::string corners = "12,12 28,12 28,28 12,28";
    EXPECT_EQ(seen(corners), "green blue blue red");
    view->setTransform(CGAffineTransformMakeRotation(M_PI / 2));
    EXPECT_EQ(seen(corners), "red green blue blue");
}

TEST_F(SceneWalkTest, AlphaFadesAViewWithItsSubviewsAsOne) {
    root->setBackgroundColor(UIColor::whiteColor());
    auto group = addColored(*root, CGRectMake(0, 0, 20, 20), red);
    addColored(*group, CGRectMake(0, 0, 20, 10), blue);
    group->setAlpha(0.5);
    const auto channel = [&](int y, int shift) {
        return static_cast<int>(pixelOf(*root, 5, y) >> shift & 0xFF);
    };
    EXPECT_NEAR(channel(5, 16), 128, 1) << "no red under the blue";
    EXPECT_NEAR(channel(5, 0), 255, 1);
    EXPECT_NEAR(channel(15, 16), 255, 1);
    EXPECT_NEAR(channel(15, 0), 128, 1);
}

TEST_F(SceneWalkTest, OnlyAClippingViewCutsItsSubviewsAndItsOriginScrollsThem) {
    auto frame = std::make_shared<UIView>(CGRectMake(0, 0, 10, 10));
    addColored(*frame, CGRectMake(0, 0, 20, 20), green);
    root->addSubview(frame);
    EXPECT_EQ(seen("15,15"), "green");
    frame->setClipsToBounds(true);
    EXPECT_EQ(seen("5,5 15,15"), "green clear");
    frame->setBounds(CGRectMake(0, 15, 10, 10));
    EXPECT_EQ(seen("5,3 5,7"), "green clear");
    frame->setHidden(true);
    EXPECT_EQ(seen("5,3"), "clear");
}

TEST_F(SceneWalkTest, OnlyADirtyViewInsideTheClipIsPainted) {
    root->setClipsToBounds(true);
    auto view = addPainter(CGRectMake(0, 50, 20, 20));
    const auto paintingsAfter = [&](auto change) {
        change();
        seen("");
        seen("");
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
    EXPECT_EQ(seen("5,5 15,5"), "green clear");
    view->setNeedsDisplay();
    EXPECT_EQ(seen("5,5 15,5"), "clear green");
}

TEST_F(SceneWalkTest, AGradientAboveZeroCoversTheSubviews) {
    addColored(*root, CGRectMake(0, 0, 40, 40), red);
    auto layer = std::make_shared<CAGradientLayer>();
    layer->frame = CGRectMake(0, 0, 40, 20);
    layer->gradient.colors = {blue, blue};
    root->insertGradientLayerAtIndex(layer, 0);
    EXPECT_EQ(seen("5,5"), "red");
    layer->zPosition = 2147483648.0;
    EXPECT_EQ(seen("5,5 5,25"), "blue red");
    layer->gradient.colors = {UIColor::clearColor(), blue};
    EXPECT_EQ(pixelOf(*root, 5, 0) >> 16 & 0xFF, 0xF9U) << "repainted";
    layer->frame = CGRectMake(0, 10, 40, 20);
    EXPECT_EQ(seen("5,5"), "red") << "moved";
    root->removeGradientLayer(*layer);
    EXPECT_EQ(seen("5,15"), "red");
}

TEST_F(SceneWalkTest, AFinishedPictureNeedsNoPainting) {
    auto bitmap = std::make_shared<Bitmap>(1, 2);
    *bitmap->row(0) = 0xFFFF0000;
    *bitmap->row(1) = 0xFF0000FF;
    auto view = addPainter(CGRectMake(0, 0, 40, 40));
    view->picture = bitmap;
    EXPECT_EQ(seen("20,2 20,37"), "red blue");
    EXPECT_EQ(view->paintings, 0);
}

TEST_F(SceneWalkTest, ARenderedViewsOwnPlaceIsIgnored) {
    Painter view(CGRectMake(100, 200, 20, 20), paintQuarters);
    view.setAlpha(0.2);
    view.setTransform(CGAffineTransformMakeRotation(1));
    const auto picture = renderViewToBitmap(view, 2);
    EXPECT_EQ(picture->width(), 40);
    EXPECT_EQ(picture->height(), 40);
    EXPECT_EQ(picture->pixel(5, 5), 0xFF00FF00);
    EXPECT_TRUE(picture->isOpaque());
}

}
}
