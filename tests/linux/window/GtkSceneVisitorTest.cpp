#include "platform/linux/window/GtkSceneVisitor.h"

#include "platform/graphics/Bitmap.h"
#include "platform/linux/window/SceneRecording.h"
#include "tests/support/Testing.h"

namespace vistrel {
namespace {

constexpr int kSide = 200; ///< pixels

std::shared_ptr<Bitmap> picture(std::uint32_t pixel, bool isOpaque) {
    auto bitmap = std::make_shared<Bitmap>(30, 20);
    for (int y = 0; y < bitmap->height(); ++y)
        std::fill_n(bitmap->row(y), bitmap->width(), pixel);
    bitmap->setOpaque(isOpaque);
    return bitmap;
}

using Pixels = std::vector<std::uint32_t>;

/// What the software renderer draws from a snapshot.
Pixels rendered(GtkSnapshot* snapshot) {
    Pixels pixels(static_cast<std::size_t>(kSide) * kSide);
    cairo_surface_t* surface =
        cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.data()),
                                            CAIRO_FORMAT_ARGB32, kSide, kSide, kSide * 4);
    cairo_t* cairo = cairo_create(surface);
    GskRenderNode* node = gtk_snapshot_free_to_node(snapshot);
    gsk_render_node_draw(node, cairo);
    gsk_render_node_unref(node);
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
    return pixels;
}

/// A list of five rows that is scrolled a little, under a window's scale.
class List {
public:
    explicit List(double scale)
        : scale_(scale) {}

    void walk(SceneVisitor& scene) const {
        scene.pushTransform(CGAffineTransformMakeScale(scale_, scale_));
        scene.pushTransform(CGAffineTransformMakeTranslation(10, 20));
        scene.pushClip(CGRectMake(5, 10, 60, 50));
        for (int row = 0; row < 5; ++row) {
            scene.pushTransform(CGAffineTransformMakeTranslation(0, 12.0 * row + 4));
            scene.fillColor(CGRectMake(0, 0, 80, 12), UIColor{0.2F * row, 0.5, 0, 1});
            scene.drawPicture(CGRectMake(2, 2, 15, 10), row % 2 == 0 ? red_ : faint_);
            scene.pop();
        }
        scene.drawPicture(CGRectMake(0, 10, 80, 8), faint_);
        scene.pushTransform(CGAffineTransformMakeRotation(0.3));
        scene.fillColor(CGRectMake(20, 10, 20, 6), UIColor{1, 0, 1, 0.7F});
        scene.drawPicture(CGRectMake(30, 12, 15, 10), red_);
        scene.pop();
        scene.pushOpacity(0.5);
        scene.fillColor(CGRectMake(30, 20, 20, 20), UIColor{0, 0, 1, 1});
        scene.fillColor(CGRectMake(40, 30, 20, 20), UIColor{1, 1, 1, 1});
        scene.pop();
        scene.pop();
        scene.pop();
        scene.pop();
    }

    void repaintAPicture() { red_->contentChanged(); }

private:
    double scale_;
    std::shared_ptr<Bitmap> red_ = picture(0xFFFF0000, true);
    std::shared_ptr<const Bitmap> faint_ = picture(0x80008000, false);
};

int largestDifference(const Pixels& one, const Pixels& other) {
    int largest = 0;
    for (std::size_t i = 0; i < one.size(); ++i)
        for (unsigned shift = 0; shift < 32; shift += 8)
            largest = std::max(largest, std::abs(static_cast<int>(one[i] >> shift & 0xFF) -
                                                 static_cast<int>(other[i] >> shift & 0xFF)));
    return largest;
}

/// A frame in which the list is one node.
GtkSnapshot* recorded(const List& list, PictureNodes& nodes) {
    SceneRecording recording;
    recording.begin(1);
    list.walk(recording);
    recording.finish();
    EXPECT_TRUE(recording.isOneNode(2)) << "or nothing is compared";
    GtkSnapshot* snapshot = gtk_snapshot_new();
    GtkSceneVisitor visitor(nullptr, snapshot, nodes);
    visitor.draw(recording);
    nodes.frameEnded();
    return snapshot;
}

/// The node that a frame makes of a list.
std::shared_ptr<GskRenderNode> nodeOfFrame(const List& list, PictureNodes& nodes) {
    GskRenderNode* root = gtk_snapshot_free_to_node(recorded(list, nodes));
    GskRenderNode* child = gsk_render_node_ref(gsk_transform_node_get_child(root));
    gsk_render_node_unref(root);
    return {child, gsk_render_node_unref};
}

TEST(GtkSceneVisitorTest, AListInOneNodeLooksLikeOneInManyNodes) {
    // Registers the node types, even without a display.
    gtk_init_check();
    for (const double scale : {1.0, 1.5, 2.0}) {
        const List list(scale);
        PictureNodes nodes;
        GtkSnapshot* manyNodes = gtk_snapshot_new();
        GtkSceneVisitor plain(nullptr, manyNodes, nodes);
        list.walk(plain);
        const Pixels expected = rendered(manyNodes);
        EXPECT_NE(expected, Pixels(expected.size())) << "or nothing is compared";
        // GTK rotates by single-precision degrees, which shows slightly along rotated edges.
        EXPECT_LE(largestDifference(rendered(recorded(list, nodes)), expected), 8)
            << "at a scale of " << scale;
    }
}

TEST(GtkSceneVisitorTest, AListKeepsItsNodeUntilSomethingInItChanges) {
    gtk_init_check();
    PictureNodes nodes;
    List list(1);
    const auto first = nodeOfFrame(list, nodes);
    EXPECT_EQ(nodeOfFrame(list, nodes), first);
    list.repaintAPicture();
    EXPECT_NE(nodeOfFrame(list, nodes), first);
}

}
}
