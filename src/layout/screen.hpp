// The screen as a whole: the corner a top-level window keeps clear of, and
// the rectangles handed to SDL for refreshing, cut to the display surface.
#pragma once

#include "model/tables.hpp"

#include <algorithm>
#include <cstdint>

namespace velumo::detail {

// A top-level window never stands closer to the screen's top left corner
// than (11, 25): the frame buttons sit 24 pixels above it.  The record is
// changed.  Comparisons are signed, so a position "left of 0" is clamped too.
inline void clamp_top_level_window(const vel_context *ctx, vel_object &o)
{
    if (o.type != VEL_TYPE_WINDOW || master_of(ctx, o) != 0) return;
    if (static_cast<int32_t>(o.x) <= 10) o.x = 11;
    if (static_cast<int32_t>(o.y) <= 24) o.y = 25;
}

// Hands a rectangle to SDL_UpdateRects cut to the display surface: SDL
// reads the pixels of every rectangle it is given without clipping.
inline void update_screen_rect(vel_context *ctx, const SDL_Rect &rect)
{
    const SDL_Surface *screen = ctx->screen;
    const int64_t left = std::clamp<int64_t>(rect.x, 0, screen->w);
    const int64_t top = std::clamp<int64_t>(rect.y, 0, screen->h);
    const int64_t right = std::clamp<int64_t>(int64_t{rect.x} + rect.w, left, screen->w);
    const int64_t bottom = std::clamp<int64_t>(int64_t{rect.y} + rect.h, top, screen->h);
    SDL_Rect cut{static_cast<Sint16>(left), static_cast<Sint16>(top),
                 static_cast<Uint16>(right - left), static_cast<Uint16>(bottom - top)};
    SDL_UpdateRects(ctx->screen, 1, &cut);
}

} // namespace velumo::detail
