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
    if (static_cast<int32_t>(o.x) < VEL_WINDOW_MIN_X) o.x = VEL_WINDOW_MIN_X;
    if (static_cast<int32_t>(o.y) < VEL_WINDOW_MIN_Y) o.y = VEL_WINDOW_MIN_Y;
}

// The part of a run from `start`, `size` pixels long, that lies on a screen
// row or column of `extent` pixels: its first coordinate and its length.
struct Span {
    int64_t first;
    int64_t length;
};

constexpr Span span_on_screen(int64_t start, int64_t size, int64_t extent)
{
    const int64_t first = std::clamp<int64_t>(start, 0, extent);
    const int64_t end = std::clamp<int64_t>(start + size, first, extent);
    return {first, end - first};
}

// A rectangle cut to a screen of width x height pixels.
inline SDL_Rect cut_to_screen(int64_t x, int64_t y, int64_t w, int64_t h, int64_t width,
                              int64_t height)
{
    const Span across = span_on_screen(x, w, width);
    const Span down = span_on_screen(y, h, height);
    return SDL_Rect{static_cast<Sint16>(across.first), static_cast<Sint16>(down.first),
                    static_cast<Uint16>(across.length), static_cast<Uint16>(down.length)};
}

// Hands a rectangle to SDL_UpdateRects cut to the display surface: SDL
// reads the pixels of every rectangle it is given without clipping.
inline void update_screen_rect(vel_context *ctx, const SDL_Rect &rect)
{
    SDL_Rect cut = cut_to_screen(rect.x, rect.y, rect.w, rect.h, ctx->screen->w, ctx->screen->h);
    SDL_UpdateRects(ctx->screen, 1, &cut);
}

} // namespace velumo::detail
