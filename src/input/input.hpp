// What the input module offers the modules above it: the selection loop and
// the strict point-in-object test.
#pragma once

#include "velumo.h"

#include <cstdint>

namespace velumo::detail {

// Runs the selection loop until a left release hits stop_a, stop_b or frame
// button 7; that object.
uint32_t run_selection(vel_context *ctx, int32_t stop_a, int32_t stop_b);

// The point lies strictly inside obj and, for a dependent, strictly inside
// the limits its masters leave it.
bool contains_point(vel_context *ctx, uint32_t obj, int32_t x, int32_t y);

} // namespace velumo::detail
