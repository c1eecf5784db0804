#include "platform/linux/window/PictureNodes.h"

#include "platform/linux/window/GraphenePlaces.h"

#include <algorithm>

namespace vistrel {

namespace {

constexpr std::uint64_t kFramesKept = 90;
/// The toolkit holds what it drew last until it has drawn the next.
constexpr std::uint64_t kFramesRetired = 3;

using PictureReference = std::shared_ptr<const Bitmap>;

void dropReference(void* reference) {
    delete static_cast<PictureReference*>(reference);
}

/// The bitmap's memory where it lies.
cairo_surface_t* makeSurface(const PictureReference& picture) {
    static const cairo_user_data_key_t key{};
    cairo_surface_t* surface = cairo_image_surface_create_for_data(
        const_cast<unsigned char*>(picture->data()),
        picture->isOpaque() ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32, picture->width(),
        picture->height(), picture->stride());
    cairo_surface_set_user_data(surface, &key, new PictureReference(picture), dropReference);
    return surface;
}

/// The surface must outlive the node, which would else take a copy of it.
GskRenderNode* makePaintingNode(cairo_surface_t* surface, CGSize size) {
    const double width = cairo_image_surface_get_width(surface);
    const double height = cairo_image_surface_get_height(surface);
    const graphene_rect_t bounds =
        grapheneRectangle(0, 0, static_cast<float>(size.width), static_cast<float>(size.height));
    GskRenderNode* node = gsk_cairo_node_new(&bounds);
    cairo_t* cr = gsk_cairo_node_get_draw_context(node);
    cairo_scale(cr, size.width / width, size.height / height);
    cairo_set_source_surface(cr, surface, 0, 0);
    cairo_pattern_set_extend(cairo_get_source(cr), CAIRO_EXTEND_PAD);
    cairo_rectangle(cr, 0, 0, width, height);
    cairo_fill(cr);
    cairo_destroy(cr);
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
        release(entry);
    dropRetired(frame_ + 1);
}

void PictureNodes::make(Entry& entry) {
    entry.surface = nullptr;
    if (software_) {
        entry.surface = makeSurface(entry.picture);
        entry.node = makePaintingNode(entry.surface, entry.size);
    } else {
        entry.node = makeTextureNode(entry.picture, entry.size);
    }
}

void PictureNodes::release(Entry& entry) {
    gsk_render_node_unref(entry.node);
    if (entry.surface)
        retired_.push_back({entry.surface, frame_});
}

void PictureNodes::dropRetired(std::uint64_t before) {
    const auto kept =
        std::find_if(retired_.begin(), retired_.end(),
                     [before](const Retired& retired) { return retired.frame >= before; });
    std::for_each(retired_.begin(), kept,
                  [](const Retired& retired) { cairo_surface_destroy(retired.surface); });
    retired_.erase(retired_.begin(), kept);
}

PictureNodes::Node PictureNodes::nodeFor(const std::shared_ptr<const Bitmap>& picture,
                                         CGSize size) {
    auto [place, isNew] = entries_.try_emplace(picture.get());
    Entry& entry = place->second;
    if (isNew || entry.generation != picture->generation()) {
        if (!isNew)
            release(entry);
        entry.picture = picture;
        entry.generation = picture->generation();
        entry.size = size;
        make(entry);
    }
    entry.lastFrame = frame_;
    return {entry.node, entry.size};
}

void PictureNodes::frameEnded() {
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
