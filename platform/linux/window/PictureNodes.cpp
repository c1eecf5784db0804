#include "platform/linux/window/PictureNodes.h"

#include "platform/linux/window/GraphenePlaces.h"
namespace vistrel {

namespace {

constexpr std::uint64_t kFramesKept = 90;

using PictureReference = std::shared_ptr<const Bitmap>;

void dropReference(void* reference) {
    delete static_cast<PictureReference*>(reference);
}

/// Paints the bitmap's memory where it lies; nothing is copied for each frame.
GskRenderNode* makePaintingNode(const PictureReference& picture, CGSize size) {
    static const cairo_user_data_key_t key{};
    const graphene_rect_t bounds =
        grapheneRectangle(0, 0, static_cast<float>(size.width), static_cast<float>(size.height));
    GskRenderNode* node = gsk_cairo_node_new(&bounds);
    cairo_surface_t* surface = cairo_image_surface_create_for_data(
        const_cast<unsigned char*>(picture->data()),
        picture->isOpaque() ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32, picture->width(),
        picture->height(), picture->stride());
    cairo_surface_set_user_data(surface, &key, new PictureReference(picture), dropReference);
    cairo_t* cr = gsk_cairo_node_get_draw_context(node);
    cairo_scale(cr, size.width / picture->width(), size.height / picture->height());
    cairo_set_source_surface(cr, surface, 0, 0);
    cairo_pattern_set_extend(cairo_get_source(cr), CAIRO_EXTEND_PAD);
    cairo_rectangle(cr, 0, 0, picture->width(), picture->height());
    cairo_fill(cr);
    cairo_destroy(cr);
    cairo_surface_destroy(surface);
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

PictureNodes::~PictureNodes() {
    for (auto& [bitmap, entry] : entries_)
        gsk_render_node_unref(entry.node);
}

PictureNodes::Node PictureNodes::nodeFor(const std::shared_ptr<const Bitmap>& picture,
                                         CGSize size) {
    auto [place, isNew] = entries_.try_emplace(picture.get());
    Entry& entry = place->second;
    if (isNew || entry.generation != picture->generation()) {
        if (!isNew)
            gsk_render_node_unref(entry.node);
        entry.picture = picture;
        entry.generation = picture->generation();
        entry.size = size;
        entry.node = software_ ? makePaintingNode(picture, size) : makeTextureNode(picture, size);
    }
    entry.lastFrame = frame_;
    return {entry.node, entry.size};
}

void PictureNodes::frameEnded() {
    ++frame_;
    if (frame_ % kFramesKept != 0)
        return;
    for (auto entry = entries_.begin(); entry != entries_.end();) {
        if (entry->second.lastFrame + kFramesKept < frame_) {
            gsk_render_node_unref(entry->second.node);
            entry = entries_.erase(entry);
        } else {
            ++entry;
        }
    }
}

}
