#include "platform/linux/main/GraphicsChoice.h"

#include <cstdlib>
#include <filesystem>
#include <string>

namespace vistrel {

namespace {

bool hasRenderNode() {
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator("/dev/dri", error))
        if (entry.path().filename().string().starts_with("renderD"))
            return true;
    return false;
}

}

void chooseRenderer() {
    if (hasRenderNode())
        return;
    setenv("GSK_RENDERER", "cairo", 0);
    setenv("GDK_DEBUG", "gl-disable", 0);
    // Otherwise the page engine still looks for GL when it starts, which delays the first page.
    setenv("WEBKIT_DISABLE_COMPOSITING_MODE", "1", 0);
}

}
