#include "platform/graphics/UIFont.h"

#include "platform/graphics/TextLayout.h"

namespace vistrel {

double UIFont::ascender() const {
    return TextLayout::metricsOfFont(*this).ascender;
}

double UIFont::descender() const {
    return TextLayout::metricsOfFont(*this).descender;
}

double UIFont::lineHeight() const {
    const auto metrics = TextLayout::metricsOfFont(*this);
    return metrics.ascender + metrics.descender;
}

}
