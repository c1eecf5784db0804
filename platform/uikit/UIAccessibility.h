#pragma once
#include <optional>
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
    List,
    WebPage
};

/// A value that can be read and set.
struct UIAccessibilityRange {
    double minimum = 0;
    double maximum = 1;
    double now = 0;
    friend bool operator==(const UIAccessibilityRange&, const UIAccessibilityRange&) = default;
};

/// Has screen readers say what no element shows, as that a track begins.
void UIAccessibilityAnnounce(const std::string& text);

/// What screen readers (and journey tests) know about a view.
struct UIAccessibilityElement {
    UIAccessibilityRole role = UIAccessibilityRole::None;
    std::string label;
    std::string value;
    bool enabled = true;
    std::optional<UIAccessibilityRange> range{};
};

}
