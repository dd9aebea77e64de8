// Internals of the pull-down menu shared with its tests: the display
// rectangle a menu refreshes.
#pragma once

#include "velumo.h"

#include <cstdint>

namespace velumo::detail {

// The rectangle refreshed for a menu of the given visible size: its corner
// where it lies on the screen, 0 for a coordinate left of or above the
// screen, 5 pixels short of the edge for one beyond it; then cut to the
// screen so SDL is never handed pixels outside the display.
SDL_Rect menu_update_rect(const vel_context *ctx, const vel_object &menu, uint32_t width,
                          uint32_t height);

} // namespace velumo::detail
