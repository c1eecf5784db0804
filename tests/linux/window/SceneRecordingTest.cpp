#include "platform/linux/window/SceneRecording.h"

#include "platform/graphics/Bitmap.h"
#include "platform/host/ForeignContent.h"
#include "platform/linux/window/GtkForeignContent.h"
#include "tests/support/Testing.h"

#include <numbers>

namespace vistrel {
namespace {

constexpr UIColor kOpaque{1, 0, 0, 1};
constexpr UIColor kTranslucent{1, 0, 0, 0.9F};

/// Records what is painted.
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

/// A paint inside what the fields say.
struct Paint {
    CGRect rect{};
    UIColor color = kOpaque;
    std::shared_ptr<const Bitmap> picture{}; ///< in place of a fill
    CGAffineTransform transform{};
    std::optional<CGRect> clip{};
    double opacity = 1;

    void on(SceneVisitor& scene) const {
        scene.pushOpacity(opacity);
        if (clip)
            scene.pushClip(*clip);
        scene.pushTransform(transform);
        if (picture)
            scene.drawPicture(rect, picture);
        else
            scene.fillColor(rect, color);
        scene.pop();
        if (clip)
            scene.pop();
        scene.pop();
    }
};

/// Whether a fill over (10, 10) to (30, 30) is covered by the paints over it.
bool isCovered(const std::vector<Paint>& paints, double pixelsPerUnit) {
    SceneRecording scene;
    scene.begin(pixelsPerUnit);
    scene.pushTransform(CGAffineTransform{});
    scene.fillColor(CGRectMake(10, 10, 20, 20), kOpaque);
    scene.pop();
    for (const Paint& paint : paints)
        paint.on(scene);
    scene.finish();
    EXPECT_EQ(Painted(scene).open, 0);
    return scene.isCovered(1);
}

TEST(SceneRecordingTest, OnlyAnOpaquePaintThatReachesEverythingCovers) {
    const auto opaque = std::make_shared<Bitmap>(4, 4);
    opaque->setOpaque(true);
    const auto clear = std::make_shared<Bitmap>(4, 4);
    const CGRect exactly = CGRectMake(10, 10, 20, 20);
    const CGRect larger = CGRectMake(0, 0, 40, 40);
    const CGRect clip = CGRectMake(0, 0, 25, 40);
    const auto moved = [](double x, double y) {
        return CGAffineTransformMakeTranslation(x, y);
    };
    const std::tuple<const char*, std::vector<Paint>, bool> cases[] = {
        {"nothing", {}, false},
        {"a fill", {{exactly}}, true},
        {"a translucent fill", {{larger, kTranslucent}}, false},
        {"a picture", {{.rect = exactly, .picture = opaque}}, true},
        {"a picture with holes", {{.rect = larger, .picture = clear}}, false},
        {"a pixel too little", {{CGRectMake(10, 10, 20, 19)}}, false},
        {"a fraction too little", {{CGRectMake(10.1, 10, 20, 20)}}, false},
        {"two halves", {{CGRectMake(10, 10, 8, 20)}, {CGRectMake(18, 10, 12, 20)}}, true},
        {"two halves with a seam inside a pixel",
         {{CGRectMake(10, 10, 8.3, 20)}, {CGRectMake(18.3, 10, 11.7, 20)}},
         false},
        {"a clipped fill", {{.rect = larger, .clip = clip}}, false},
        {"a fill after a clip", {{.clip = clip}, {larger}}, true},
        {"a fill in a translucent group", {{.rect = larger, .opacity = 0.5}}, false},
        {"a fill moved and scaled onto it",
         {{.rect = CGRectMake(0, 0, 10, 10),
           .transform = CGAffineTransformMakeScale(2, 2).concat(moved(10, 10))}},
         true},
        {"a fill turned onto it by a quarter, an angle in single precision",
         {{.rect = CGRectMake(10, -30, 20, 20),
           .transform = CGAffineTransformMakeRotation(1.5707964F)}},
         true},
        {"a fill moved away", {{.rect = exactly, .transform = moved(1, 0)}}, false},
        {"a turned fill whose box would reach",
         {{.rect = CGRectMake(-100, -100, 300, 300),
           .transform = CGAffineTransformMakeRotation(std::numbers::pi / 8)}},
         false},
    };
    for (const auto& [name, paints, covered] : cases) {
        for (const double pixels : {1.0, 2.0})
            EXPECT_EQ(isCovered(paints, pixels), covered) << name << " at " << pixels;
    }
}

TEST(SceneRecordingTest, OnlyWhatCanBeSeenIsPainted) {
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

struct Film : host::ForeignContent, GtkForeignContent {
    bool isOpaque() const override { return hasFrame; }
    bool hasFrame = true;
};

TEST(SceneRecordingTest, OfAFillBehindAFilmOnlyTheBarsArePainted) {
    const CGRect screen = CGRectMake(0, 0, 480, 320);
    const CGRect place = CGRectMake(0, 25, 480, 270);
    for (const bool hasFrame : {true, false}) {
        Film film;
        film.hasFrame = hasFrame;
        SceneRecording scene;
        scene.begin(1.5); // the film's edges are in the middle of pixels
        scene.fillColor(screen, kOpaque);
        scene.drawForeign(place, film);
        scene.finish();
        std::vector<CGRect> inPixels = Painted(scene).rects;
        for (CGRect& rect : inPixels)
            rect = CGAffineTransformMakeScale(1.5, 1.5).apply(rect);
        const CGRect filmInPixels = CGRectMake(0, 37.5, 720, 405);
        const std::vector<CGRect> bars{CGRectMake(0, 0, 720, 38), CGRectMake(0, 443, 720, 37),
                                       filmInPixels};
        const std::vector<CGRect> all{CGRectMake(0, 0, 720, 480), filmInPixels};
        EXPECT_EQ(inPixels, hasFrame ? bars : all);
    }
}

/// Each call uses another column, so that nothing is covered.
void fillRows(SceneVisitor& scene, double left, int rows) {
    for (int row = 0; row < rows; ++row)
        scene.fillColor(CGRectMake(left, 60.0 * row, 20, 60), kOpaque);
}

TEST(SceneRecordingTest, AnInnermostClipWithManyPaintsIsOneNode) {
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
