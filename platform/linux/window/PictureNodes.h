#pragma once
#include "platform/graphics/Bitmap.h"
#include "platform/graphics/CGGeometry.h"

#include <gtk/gtk.h>

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace vistrel {

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

    void setSoftwareRenderer(bool software) { software_ = software; }
    /// Once a frame: forgets what has not been drawn for a while, and the memory behind it.
    void frameEnded();
    std::size_t size() const { return entries_.size(); }

private:
    struct Entry {
        std::shared_ptr<const Bitmap> picture;
        std::uint64_t generation;
        GskRenderNode* node;
        cairo_surface_t* surface; ///< what the node paints from; null for a texture
        CGSize size;
        std::uint64_t lastFrame;
    };
    /// A node's surface that the toolkit may still paint from.
    struct Retired {
        cairo_surface_t* surface;
        std::uint64_t frame;
    };
    void make(Entry& entry);
    void release(Entry& entry);
    void dropRetired(std::uint64_t before);

    std::unordered_map<const Bitmap*, Entry> entries_;
    std::vector<Retired> retired_; ///< oldest first
    std::uint64_t frame_ = 0;
    bool software_ = true;
};

}
