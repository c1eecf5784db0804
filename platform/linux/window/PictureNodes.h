#pragma once
#include "platform/graphics/Bitmap.h"
#include "platform/graphics/CGAffineTransform.h"
#include "platform/graphics/CGGeometry.h"

#include <gtk/gtk.h>

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace vistrel {

/// Makes a picture, stretched over a rectangle, Cairo's source. `transform` maps the rectangle's
/// coordinates to Cairo's.
void setPixelsAsSource(cairo_t* cairo, cairo_pattern_t* pixels, const CGRect& rect,
                       const CGAffineTransform& transform);

/// Render nodes of finished pictures, created once for each picture and content. With the software
/// renderer, a node paints from the picture's memory; with a GPU, it is a texture that stays
/// uploaded.
class PictureNodes {
public:
    PictureNodes() = default;
    ~PictureNodes();
    PictureNodes(const PictureNodes&) = delete;
    PictureNodes& operator=(const PictureNodes&) = delete;

    struct Node {
        GskRenderNode* node; ///< covers (0, 0) to `size`; owned by the store
        CGSize size;         ///< points
    };
    /// `size` is used when the node has to be made.
    Node nodeFor(const std::shared_ptr<const Bitmap>& picture, CGSize size);

    /// The picture's own memory as a source for this frame. For the software renderer.
    cairo_pattern_t* pixelsOf(const std::shared_ptr<const Bitmap>& picture);

    /// A node of several pictures that was kept in the last frame or in this one; null when there
    /// is none with this content. Its pictures must be asked for as well, so that they stay.
    GskRenderNode* groupWith(const std::vector<std::uint64_t>& content);
    /// Keeps such a node and takes over the caller's reference.
    void keepGroup(std::vector<std::uint64_t> content, GskRenderNode* node);

    void setSoftwareRenderer(bool software) { software_ = software; }
    bool isForSoftwareRenderer() const { return software_; }
    /// Call once per frame: frees what has not been drawn for a while.
    void frameEnded();
    std::size_t size() const { return entries_.size(); }

private:
    struct Entry {
        std::shared_ptr<const Bitmap> picture;
        std::uint64_t generation = 0;
        GskRenderNode* node = nullptr;     ///< null until it is asked for
        cairo_pattern_t* pixels = nullptr; ///< null where nothing is painted from it
        CGSize size;
        std::uint64_t lastFrame = 0;
    };
    /// Pixels that the toolkit may still paint from.
    struct Retired {
        cairo_pattern_t* pixels;
        std::uint64_t frame;
    };
    struct Group {
        std::vector<std::uint64_t> content;
        GskRenderNode* node;
        std::uint64_t lastFrame;
    };
    Entry& entryFor(const std::shared_ptr<const Bitmap>& picture);
    void release(Entry& entry);
    void dropRetired(std::uint64_t before);

    std::unordered_map<const Bitmap*, Entry> entries_;
    std::vector<Retired> retired_; ///< oldest first
    std::vector<Group> groups_;    ///< few: one for each list on the screen
    std::uint64_t frame_ = 0;
    bool software_ = true;
};

}
