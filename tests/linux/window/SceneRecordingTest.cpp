#include "platform/linux/window/SceneRecording.h"

#include "platform/graphics/Bitmap.h"
#include "platform/host/ForeignContent.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <numbers>
#include <vector>

namespace vistrel {
namespace {

constexpr UIColor kOpaque{1, 0, 0, 1};
constexpr UIColor kTranslucent{1, 0, 0, 0.9F};

/// Notes what is painted.
class Painted : public SceneVisitor {
public:
    explicit Painted(const SceneRecording& scene) {
        for (std::size_t step = 0; step < scene.steps(); ++step)
            scene.replay(step, *this);
    }
    void pushTransform(const CGAffineTransform&) override { ++open; }
    void pushClip(const CGRect&) override { ++open; }
    void pushOpacity(double) override { ++open; }
    void pop() override { --open; }
    void fillColor(const CGRect& rect, const UIColor&) override { rects.push_back(rect); }
    void drawPicture(const CGRect& rect, const std::shared_ptr<const Bitmap>&) override {
        rects.push_back(rect);
    }
    void drawForeign(const CGRect& rect, host::ForeignContent&) override { rects.push_back(rect); }

    std::vector<CGRect> rects;
    int open = 0;
};

/// A fill over (10, 10) to (30, 30), then what the case paints over it: whether the fill is
/// covered.
bool isCovered(const std::function<void(SceneVisitor& scene)>& paintOver, double pixelsPerUnit) {
    SceneRecording scene;
    scene.begin(pixelsPerUnit);
    scene.pushTransform(CGAffineTransform{});
    scene.fillColor(CGRectMake(10, 10, 20, 20), kOpaque);
    scene.pop();
    paintOver(scene);
    scene.finish();
    const Painted painted(scene);
    EXPECT_EQ(painted.open, 0);
    return scene.isCovered(1);
}

TEST(SceneRecordingTest, OnlyWhatIsOpaqueAndReachesAllOfItCovers) {
    const auto opaque = std::make_shared<Bitmap>(4, 4);
    opaque->setOpaque(true);
    const auto clear = std::make_shared<Bitmap>(4, 4);
    const CGRect exactly = CGRectMake(10, 10, 20, 20);
    const CGRect larger = CGRectMake(0, 0, 40, 40);
    struct Case {
        const char* name;
        std::function<void(SceneVisitor& scene)> paintOver;
        bool covered;
    };
    const Case cases[] = {
        {"nothing", [&](SceneVisitor&) {}, false},
        {"a fill", [&](SceneVisitor& s) { s.fillColor(exactly, kOpaque); }, true},
        {"a translucent fill", [&](SceneVisitor& s) { s.fillColor(larger, kTranslucent); }, false},
        {"a picture", [&](SceneVisitor& s) { s.drawPicture(exactly, opaque); }, true},
        {"a picture with holes", [&](SceneVisitor& s) { s.drawPicture(larger, clear); }, false},
        {"a pixel too little",
         [&](SceneVisitor& s) { s.fillColor(CGRectMake(10, 10, 20, 19), kOpaque); }, false},
        {"a fraction too little",
         [&](SceneVisitor& s) { s.fillColor(CGRectMake(10.1, 10, 20, 20), kOpaque); }, false},
        {"two halves",
         [&](SceneVisitor& s) {
             s.fillColor(CGRectMake(10, 10, 8, 20), kOpaque);
             s.fillColor(CGRectMake(18, 10, 12, 20), kOpaque);
         },
         true},
        {"two halves with a seam inside a pixel",
         [&](SceneVisitor& s) {
             s.fillColor(CGRectMake(10, 10, 8.3, 20), kOpaque);
             s.fillColor(CGRectMake(18.3, 10, 11.7, 20), kOpaque);
         },
         false},
        {"a clipped fill",
         [&](SceneVisitor& s) {
             s.pushClip(CGRectMake(0, 0, 25, 40));
             s.fillColor(larger, kOpaque);
             s.pop();
         },
         false},
        {"a fill after a clip",
         [&](SceneVisitor& s) {
             s.pushClip(CGRectMake(0, 0, 25, 40));
             s.pop();
             s.fillColor(larger, kOpaque);
         },
         true},
        {"a fill in a translucent group",
         [&](SceneVisitor& s) {
             s.pushOpacity(0.5);
             s.pushTransform(CGAffineTransformMakeTranslation(0, 0));
             s.fillColor(larger, kOpaque);
             s.pop();
             s.pop();
         },
         false},
        {"a fill moved and scaled onto it",
         [&](SceneVisitor& s) {
             s.pushTransform(CGAffineTransformMakeTranslation(10, 10));
             s.pushTransform(CGAffineTransformMakeScale(2, 2));
             s.fillColor(CGRectMake(0, 0, 10, 10), kOpaque);
             s.pop();
             s.pop();
         },
         true},
        {"a fill moved away",
         [&](SceneVisitor& s) {
             s.pushTransform(CGAffineTransformMakeTranslation(1, 0));
             s.fillColor(exactly, kOpaque);
             s.pop();
         },
         false},
        {"a turned fill, whose box would reach",
         [&](SceneVisitor& s) {
             s.pushTransform(CGAffineTransformMakeRotation(std::numbers::pi / 8));
             s.fillColor(CGRectMake(-100, -100, 300, 300), kOpaque);
             s.pop();
         },
         false},
    };
    for (const auto& each : cases) {
        for (const double pixels : {1.0, 2.0})
            EXPECT_EQ(isCovered(each.paintOver, pixels), each.covered)
                << each.name << " at " << pixels;
    }
}

TEST(SceneRecordingTest, EachPaintOfAWalkIsJudgedInItsOrder) {
    SceneRecording scene;
    scene.begin(1);
    scene.fillColor(CGRectMake(0, 0, 320, 480), kOpaque);  // under everything
    scene.fillColor(CGRectMake(0, 20, 320, 460), kOpaque); // under the list
    scene.pushClip(CGRectMake(0, 20, 320, 460));
    scene.fillColor(CGRectMake(-30, 10, 350, 240), kTranslucent); // under a row
    scene.fillColor(CGRectMake(-30, 0, 350, 250), kOpaque);       // a row, seen
    scene.fillColor(CGRectMake(-30, 250, 350, 300), kOpaque);     // a row, seen
    scene.fillColor(CGRectMake(-30, 550, 350, 60), kOpaque);      // a row outside the clip
    scene.pop();
    scene.fillColor(CGRectMake(0, 0, 320, 20), kOpaque); // the bar
    scene.finish();
    const std::vector<CGRect> expected{CGRectMake(-30, 0, 350, 250), CGRectMake(-30, 250, 350, 300),
                                       CGRectMake(0, 0, 320, 20)};
    EXPECT_EQ(Painted(scene).rects, expected);
}

class Anything : public host::ForeignContent {};

/// In columns of their own, so that none covers another.
void fillRows(SceneVisitor& scene, double left, int rows) {
    for (int row = 0; row < rows; ++row)
        scene.fillColor(CGRectMake(left, 60.0 * row, 20, 60), kOpaque);
}

TEST(SceneRecordingTest, InnermostClipsWithManyPaintsAreOneNode) {
    SceneRecording scene;
    scene.begin(1);
    scene.pushClip(CGRectMake(0, 0, 320, 480)); // holds another
    fillRows(scene, 0, 8);
    scene.pushClip(CGRectMake(0, 64, 320, 416)); // a list
    scene.pushTransform(CGAffineTransformMakeTranslation(0, 64));
    fillRows(scene, 20, 7);
    scene.pop();
    scene.pop();
    scene.pop();
    scene.pushClip(CGRectMake(0, 0, 320, 480)); // few can be seen
    fillRows(scene, 40, 3);
    scene.pop();
    scene.pushClip(CGRectMake(0, 0, 320, 480)); // holds foreign content
    fillRows(scene, 60, 7);
    Anything foreign;
    scene.pushOpacity(0.5);
    scene.drawForeign(CGRectMake(0, 0, 320, 60), foreign);
    scene.pop();
    scene.pop();
    scene.finish();
    std::vector<CGRect> clips;
    for (std::size_t step = 0; step < scene.steps(); ++step)
        if (scene.isOneNode(step))
            clips.push_back(scene.rectOf(step));
    EXPECT_EQ(clips, (std::vector{CGRectMake(0, 64, 320, 416)}));
}

}
}
