#include "platform/linux/window/CoveredPaints.h"

#include "platform/graphics/Bitmap.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <numbers>
#include <vector>

namespace vistrel {
namespace {

constexpr UIColor kOpaque{1, 0, 0, 1};
constexpr UIColor kTranslucent{1, 0, 0, 0.9F};

/// A fill over (10, 10) to (30, 30), then what the case paints over it: whether the fill is
/// covered.
bool isCovered(const std::function<void(SceneVisitor& scene)>& paintOver, double pixelsPerUnit) {
    CoveredPaints scene(pixelsPerUnit);
    scene.fillColor(CGRectMake(10, 10, 20, 20), kOpaque);
    paintOver(scene);
    return scene.find().front();
}

TEST(CoveredPaintsTest, OnlyWhatIsOpaqueAndReachesAllOfItCovers) {
    const auto opaque = std::make_shared<Bitmap>(4, 4);
    opaque->setOpaque(true);
    const auto clear = std::make_shared<Bitmap>(4, 4);
    const CGRect exactly = CGRectMake(10, 10, 20, 20);
    const CGRect larger = CGRectMake(0, 0, 40, 40);
    const CGGradient solid{{kOpaque, kOpaque}, {}};
    const CGGradient fading{{kOpaque, kTranslucent}, {}};
    struct Case {
        const char* name;
        std::function<void(SceneVisitor& scene)> paintOver;
        bool covered;
    };
    const Case cases[] = {
        {"nothing", [&](SceneVisitor&) {}, false},
        {"a fill", [&](SceneVisitor& s) { s.fillColor(exactly, kOpaque); }, true},
        {"a translucent fill", [&](SceneVisitor& s) { s.fillColor(larger, kTranslucent); }, false},
        {"a gradient", [&](SceneVisitor& s) { s.fillGradient(exactly, solid); }, true},
        {"a fading gradient", [&](SceneVisitor& s) { s.fillGradient(larger, fading); }, false},
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

TEST(CoveredPaintsTest, EachPaintOfAWalkIsJudgedInItsOrder) {
    CoveredPaints scene(1);
    scene.fillColor(CGRectMake(0, 0, 320, 480), kOpaque);  // under everything
    scene.fillColor(CGRectMake(0, 20, 320, 460), kOpaque); // under the list
    scene.pushClip(CGRectMake(0, 20, 320, 460));
    scene.fillColor(CGRectMake(-30, 10, 350, 240), kTranslucent); // under a row
    scene.fillColor(CGRectMake(-30, 0, 350, 250), kOpaque);       // a row, seen
    scene.fillColor(CGRectMake(-30, 250, 350, 300), kOpaque);     // a row, seen
    scene.fillColor(CGRectMake(-30, 550, 350, 60), kOpaque);      // a row outside the clip
    scene.pop();
    scene.fillColor(CGRectMake(0, 0, 320, 20), kOpaque); // the bar
    EXPECT_EQ(scene.find(), (std::vector{true, true, true, false, false, true, false}));
}

}
}
