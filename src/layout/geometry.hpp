// Exclusive clip limits shared by painting and borders: a pixel (x, y) is
// usable when left < x < right and top < y < bottom.
#pragma once

#include "velumo.h"

#include <cstdint>

namespace velumo::detail {

// Bounds are screen coordinates that may run negative after the one-pixel
// shifts at the edges, so they are compared as signed numbers.
struct Limits {
    int32_t left = 0;
    int32_t right = 0;
    int32_t top = 0;
    int32_t bottom = 0;
};

// The area inside an object's margins, given its outer right and bottom
// edges (which depend on whether and how the object is cut).
Limits inner_limits(const vel_object &o, uint32_t right, uint32_t bottom);

Limits dependent_limits(vel_context *ctx, uint32_t obj);
Limits text_limits(vel_context *ctx, uint32_t obj);

} // namespace velumo::detail
