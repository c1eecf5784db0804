#include "platform/linux/window/PictureNodes.h"

#include "platform/linux/window/GraphenePlaces.h"

#include <algorithm>
#include <utility>

namespace vistrel {

namespace {

constexpr std::uint64_t kFramesKept = 90;
/// The toolkit keeps the last frame until it has drawn the next.
constexpr std::uint64_t kFramesRetired = 3;

using PictureReference = std::shared_ptr<const Bitmap>;

void dropReference(void* reference) {
    delete static_cast<PictureReference*>(reference);
}

/// Shares the bitmap's memory.
cairo_pattern_t* makePixels(const PictureReference& picture) {
    static const cairo_user_data_key_t key{};
    cairo_surface_t* surface = cairo_image_surface_create_for_data(
        const_cast<unsigned char*>(picture->data()),
        picture->isOpaque() ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32, picture->width(),
        picture->height(), picture->stride());
    cairo_surface_set_user_data(surface, &key, new PictureReference(picture), dropReference);
    cairo_pattern_t* pixels = cairo_pattern_create_for_surface(surface);
    cairo_surface_destroy(surface);
    cairo_pattern_set_extend(pixels, CAIRO_EXTEND_PAD);
    return pixels;
}

/// The pixels must outlive the node, which does not copy them.
GskRenderNode* makePaintingNode(cairo_pattern_t* pixels, CGSize size) {
    const graphene_rect_t bounds =
        grapheneRectangle(0, 0, static_cast<float>(size.width), static_cast<float>(size.height));
    GskRenderNode* node = gsk_cairo_node_new(&bounds);
    cairo_t* cairo = gsk_cairo_node_get_draw_context(node);
    setPixelsAsSource(cairo, pixels, {{}, size}, {});
    cairo_rectangle(cairo, 0, 0, size.width, size.height);
    cairo_fill(cairo);
    cairo_destroy(cairo);
    return node;
}

GskRenderNode* makeTextureNode(const PictureReference& picture, CGSize size) {
    GBytes* bytes = g_bytes_new_with_free_func(
        picture->data(), static_cast<gsize>(picture->stride()) * picture->height(), dropReference,
        new PictureReference(picture));
    GdkTexture* texture =
        gdk_memory_texture_new(picture->width(), picture->height(), GDK_MEMORY_DEFAULT, bytes,
                               static_cast<gsize>(picture->stride()));
    const graphene_rect_t bounds =
        grapheneRectangle(0, 0, static_cast<float>(size.width), static_cast<float>(size.height));
    GskRenderNode* node = gsk_texture_node_new(texture, &bounds);
    g_object_unref(texture);
    g_bytes_unref(bytes);
    return node;
}

}

void setPixelsAsSource(cairo_t* cairo, cairo_pattern_t* pixels, const CGRect& rect,
                       const CGAffineTransform& transform) {
    cairo_surface_t* surface = nullptr;
    cairo_pattern_get_surface(pixels, &surface);
    const double across = cairo_image_surface_get_width(surface) / rect.size.width;
    const double down = cairo_image_surface_get_height(surface) / rect.size.height;
    const CGAffineTransform toPixels = transform.inverted().concat(
        {across, 0, 0, down, -rect.origin.x * across, -rect.origin.y * down});
    const cairo_matrix_t matrix{toPixels.a, toPixels.b,  toPixels.c,
                                toPixels.d, toPixels.tx, toPixels.ty};
    cairo_pattern_set_matrix(pixels, &matrix);
    cairo_set_source(cairo, pixels);
}

PictureNodes::~PictureNodes() {
    for (const Group& group : groups_)
        gsk_render_node_unref(group.node);
    for (auto& [bitmap, entry] : entries_)
        release(entry);
    dropRetired(frame_ + 1);
}

void PictureNodes::release(Entry& entry) {
    g_clear_pointer(&entry.node, gsk_render_node_unref);
    if (entry.pixels)
        retired_.push_back({std::exchange(entry.pixels, nullptr), frame_});
}

void PictureNodes::dropRetired(std::uint64_t before) {
    const auto kept = std::find_if(
        retired_.begin(), retired_.end(),
        [before](const Retired& retired) { return retired.frame >= before; });
    std::for_each(retired_.begin(), kept,
                  [](const Retired& retired) { cairo_pattern_destroy(retired.pixels); });
    retired_.erase(retired_.begin(), kept);
}

PictureNodes::Entry& PictureNodes::entryFor(const std::shared_ptr<const Bitmap>& picture) {
    Entry& entry = entries_[picture.get()];
    if (entry.picture && entry.generation != picture->generation())
        release(entry);
    if (entry.picture != picture)
        entry.picture = picture;
    entry.generation = picture->generation();
    entry.lastFrame = frame_;
    return entry;
}

cairo_pattern_t* PictureNodes::pixelsOf(const std::shared_ptr<const Bitmap>& picture) {
    Entry& entry = entryFor(picture);
    if (!entry.pixels)
        entry.pixels = makePixels(picture);
    return entry.pixels;
}

PictureNodes::Node PictureNodes::nodeFor(const std::shared_ptr<const Bitmap>& picture,
                                         CGSize size) {
    Entry& entry = entryFor(picture);
    if (!entry.node) {
        entry.size = size;
        entry.node =
            software_ ? makePaintingNode(pixelsOf(picture), size) : makeTextureNode(picture, size);
    }
    return {entry.node, entry.size};
}

GskRenderNode* PictureNodes::groupWith(const std::vector<std::uint64_t>& content) {
    const auto found = std::find_if(groups_.begin(), groups_.end(),
                                    [&](const Group& group) { return group.content == content; });
    if (found == groups_.end())
        return nullptr;
    found->lastFrame = frame_;
    return found->node;
}

void PictureNodes::keepGroup(std::vector<std::uint64_t> content, GskRenderNode* node) {
    groups_.push_back({std::move(content), node, frame_});
}

void PictureNodes::frameEnded() {
    std::erase_if(groups_, [this](const Group& group) {
        const bool isOld = group.lastFrame != frame_;
        if (isOld)
            gsk_render_node_unref(group.node);
        return isOld;
    });
    ++frame_;
    if (frame_ > kFramesRetired)
        dropRetired(frame_ - kFramesRetired);
    if (frame_ % kFramesKept != 0)
        return;
    for (auto entry = entries_.begin(); entry != entries_.end();) {
        if (entry->second.lastFrame + kFramesKept < frame_) {
            release(entry->second);
            entry = entries_.erase(entry);
        } else {
            ++entry;
        }
    }
}

}
