#include "platform/graphics/CGContext.h"

#include <vector>

namespace vistrel {

namespace {
std::vector<CGContext*>& contexts() {
    static std::vector<CGContext*> stack;
    return stack;
}
}

CGContext* UIGraphicsGetCurrentContext() {
    return contexts().empty() ? nullptr : contexts().back();
}

void UIGraphicsPushContext(CGContext& context) {
    contexts().push_back(&context);
}

void UIGraphicsPopContext() {
    if (!contexts().empty())
        contexts().pop_back();
}

void CGContextFillRect(CGContext* context, const CGRect& rect) {
    if (context != nullptr)
        context->fillRect(rect);
}

void UIColor::set() const {
    if (auto* context = UIGraphicsGetCurrentContext()) {
        context->setFillColor(*this);
        context->setStrokeColor(*this);
    }
}

}
