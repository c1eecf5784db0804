#pragma once
#include "platform/graphics/Bitmap.h"
#include "platform/graphics/CGGeometry.h"

#include <gtk/gtk.h>

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace vistrel {

/// Paints the whole surface over (0, 0) to `size`.
void paintSurface(cairo_t* cairo, cairo_surface_t* surface, CGSize size);

/// Render nodes of finished pictures, made once for each picture and content. With the software
/// renderer a node paints the picture's memory directly; with a GPU it is a texture that stays
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

    /// The picture's memory as it lies, to be painted from in this frame. For the software
    /// renderer.
    cairo_surface_t* surfaceFor(const std::shared_ptr<const Bitmap>& picture);

    void setSoftwareRenderer(bool software) { software_ = software; }
    bool isForSoftwareRenderer() const { return software_; }
    /// Once a frame: forgets what has not been drawn for a while, and the memory behind it.
    void frameEnded();
    std::size_t size() const { return entries_.size(); }

private:
    struct Entry {
        std::shared_ptr<const Bitmap> picture;
        std::uint64_t generation = 0;
        GskRenderNode* node = nullptr;      ///< null until it is asked for
        cairo_surface_t* surface = nullptr; ///< null where nothing is painted from it
        CGSize size;
        std::uint64_t lastFrame = 0;
    };
    /// A node's surface that the toolkit may still paint from.
    struct Retired {
        cairo_surface_t* surface;
        std::uint64_t frame;
    };
    Entry& entryFor(const std::shared_ptr<const Bitmap>& picture);
    void release(Entry& entry);
    void dropRetired(std::uint64_t before);

    std::unordered_map<const Bitmap*, Entry> entries_;
    std::vector<Retired> retired_; ///< oldest first
    std::uint64_t frame_ = 0;
    bool software_ = true;
};

}
