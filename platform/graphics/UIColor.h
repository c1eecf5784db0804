#pragma once

namespace vistrel {

/// Red, green, blue and alpha from 0 to 1, not premultiplied. A value.
struct UIColor {
    float red = 0;
    float green = 0;
    float blue = 0;
    float alpha = 1;

    static constexpr UIColor colorWithRedGreenBlueAlpha(float r, float g, float b, float a) {
        return {r, g, b, a};
    }
    static constexpr UIColor colorWithWhiteAlpha(float white, float alpha) {
        return {white, white, white, alpha};
    }
    static constexpr UIColor blackColor() { return {0, 0, 0, 1}; }
    static constexpr UIColor whiteColor() { return {1, 1, 1, 1}; }
    static constexpr UIColor clearColor() { return {0, 0, 0, 0}; }
    static constexpr UIColor lightGrayColor() { return {0.667F, 0.667F, 0.667F, 1}; }
    static constexpr UIColor redColor() { return {1, 0, 0, 1}; }

    constexpr UIColor colorWithAlphaComponent(float a) const { return {red, green, blue, a}; }
    /// Makes it the fill and stroke colour of the current context.
    void set() const;

    friend bool operator==(const UIColor&, const UIColor&) = default;
};

}
