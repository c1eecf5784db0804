#pragma once
#include <string>

namespace vistrel {

enum class UIAccessibilityRole {
    None,
    Button,
    Row,
    Label,
    Heading,
    Slider,
    Field,
    ProgressBar,
    Image,
    Alert,
    WebPage
};

/// What screen readers (and journey tests) know about a view.
struct UIAccessibilityElement {
    UIAccessibilityRole role = UIAccessibilityRole::None;
    std::string label;
    std::string value;
    bool enabled = true;
};

}
