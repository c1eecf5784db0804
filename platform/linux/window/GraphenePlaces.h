#pragma once
#include <graphene.h>

namespace vistrel {

// The library's own initialisers are compound literals, which C++ does not have.

constexpr graphene_point_t graphenePoint(float x, float y) {
    return {x, y};
}

constexpr graphene_rect_t grapheneRectangle(float x, float y, float width, float height) {
    return {{x, y}, {width, height}};
}

}
