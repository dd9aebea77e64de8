// Object geometry for every module above: the cut sizes of top-level objects,
// the root of a master chain and the exclusive clip limits of objects and texts.
#pragma once

#include "velumo.h"

#include <cstdint>

namespace velumo::detail {

// Pixel positions, edges and scroll offsets are stored unsigned and computed
// with 32-bit wrap-around; read as signed screen coordinates, a bound one
// left of column 0 compares as -1.
constexpr int32_t as_signed(uint32_t v)
{
    return static_cast<int32_t>(v);
}

// Exclusive clip limits: a pixel (x, y) is usable when left < x < right and
// top < y < bottom.  Bounds may run negative after the one-pixel shifts at
// the edges, so they are kept signed.
struct Limits {
    int32_t left = 0;
    int32_t right = 0;
    int32_t top = 0;
    int32_t bottom = 0;
};

// Usable width and height of a top-level object: its size, or what is left
// of it before the screen's right (bottom) edge.
uint32_t cut_width(vel_context *ctx, uint32_t obj);
uint32_t cut_height(vel_context *ctx, uint32_t obj);

// The ancestor without a master, 0 for a top-level object; on a cycle an
// object of the cycle.
uint32_t root_master(vel_context *ctx, uint32_t obj);

// The area inside an object's margins, given its outer right and bottom
// edges (which depend on whether and how the object is cut).
Limits inner_limits(const vel_object &o, uint32_t right, uint32_t bottom);

// What a dependent may use inside its masters; obj must have a master.
Limits dependent_limits(vel_context *ctx, uint32_t obj);

// The text area of an object: its inner area, for a dependent narrowed to
// dependent_limits.
Limits text_limits(vel_context *ctx, uint32_t obj);

} // namespace velumo::detail
