// Drawing primitives on the display surface: surface locking, single
// pixels, axis-parallel lines, filled boxes and outline rectangles.
#include "velumo.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace {

// The flags under which SDL wants a surface locked before direct access.
constexpr Uint32 must_lock_flags = SDL_HWSURFACE | SDL_ASYNCBLIT | SDL_RLEACCEL;
static_assert(must_lock_flags == 0x4005);

bool must_lock(const SDL_Surface *surface)
{
    return surface->offset != 0 || (surface->flags & must_lock_flags) != 0;
}

// Draws the pixels from `from` to `to`, both included, along a row
// (horizontal) or a column at `fixed`.  The direction is given, not derived
// from the unsigned values: a falling run whose end lies above its start
// draws nothing.  A falling run to 0 stops after drawing 0.  The run is first
// cut to the surface, whose other pixels vel_draw_pixel would drop one by
// one: a run from an object far beyond the screen's edge stays short.
void draw_run(vel_context *ctx, uint32_t from, uint32_t to, bool falling, bool horizontal,
              uint32_t fixed, uint8_t r, uint8_t g, uint8_t b)
{
    const SDL_Surface *screen = ctx->screen;
    const auto extent = static_cast<uint32_t>(horizontal ? screen->w : screen->h);
    const auto across = static_cast<uint32_t>(horizontal ? screen->h : screen->w);
    if (falling ? from < to : from > to) return;
    if (fixed >= across || extent == 0) return;
    uint32_t &far_end = falling ? from : to;
    if ((falling ? to : from) >= extent) return;
    far_end = std::min(far_end, extent - 1);

    const auto plot = [&](uint32_t v) {
        if (horizontal)
            vel_draw_pixel(ctx, v, fixed, r, g, b);
        else
            vel_draw_pixel(ctx, fixed, v, r, g, b);
    };
    for (uint32_t v = from;; falling ? --v : ++v) {
        plot(v);
        if (v == to) break;
    }
}

} // namespace

void vel_lock(SDL_Surface *surface)
{
    if (must_lock(surface)) SDL_LockSurface(surface);
}

void vel_unlock(SDL_Surface *surface)
{
    if (must_lock(surface)) SDL_UnlockSurface(surface);
}

void vel_draw_pixel(vel_context *ctx, uint32_t x, uint32_t y, uint8_t r, uint8_t g, uint8_t b)
{
    SDL_Surface *screen = ctx->screen;
    const Uint32 colour = SDL_MapRGB(screen->format, r, g, b);
    const uint8_t bytes_per_pixel = screen->format->BytesPerPixel;
    if (bytes_per_pixel == 3) {
        std::puts("24 bit is not supported ! ");
        return;
    }
    if (bytes_per_pixel != 1 && bytes_per_pixel != 2 && bytes_per_pixel != 4) {
        std::puts("Error - can't get color depth. ");
        return;
    }
    // Callers clip against objects, not the surface: a write beyond the
    // surface's edge would land on the next row or outside the buffer.
    if (x >= static_cast<uint32_t>(screen->w) || y >= static_cast<uint32_t>(screen->h)) return;
    const uint32_t row = y * screen->pitch;
    auto *pixels = static_cast<uint8_t *>(screen->pixels);
    switch (bytes_per_pixel) {
    case 1: pixels[row + x] = static_cast<uint8_t>(colour); break;
    case 2:
        reinterpret_cast<uint16_t *>(pixels)[row / 2 + x] = static_cast<uint16_t>(colour);
        break;
    default: reinterpret_cast<uint32_t *>(pixels)[row / 4 + x] = colour; break;
    }
}

void vel_draw_line(vel_context *ctx, uint32_t x1, uint32_t y1, uint32_t x2, uint32_t y2, uint8_t r,
                   uint8_t g, uint8_t b)
{
    const auto dx = static_cast<int32_t>(x1 - x2);
    const auto dy = static_cast<int32_t>(y1 - y2);
    // Only horizontal and vertical lines of two or more pixels are drawn.
    if (dy == 0 && dx != 0)
        draw_run(ctx, x1, x2, dx > 0, true, y1, r, g, b);
    else if (dx == 0 && dy != 0)
        draw_run(ctx, y1, y2, dy > 0, false, x1, r, g, b);
}

void vel_draw_box(vel_context *ctx, uint32_t x, uint32_t y, uint32_t w, uint32_t h, uint8_t r,
                  uint8_t g, uint8_t b)
{
    SDL_Rect rect;
    rect.x = static_cast<Sint16>(x);
    rect.y = static_cast<Sint16>(y);
    rect.w = static_cast<Uint16>(w);
    rect.h = static_cast<Uint16>(h);
    SDL_FillRect(ctx->screen, &rect, SDL_MapRGB(ctx->screen->format, r, g, b));
}

void vel_draw_rectangle(vel_context *ctx, uint32_t x, uint32_t y, uint32_t w, uint32_t h, uint8_t r,
                        uint8_t g, uint8_t b)
{
    const uint32_t x2 = x + w - 1;
    const uint32_t y2 = y + h - 1;
    vel_lock(ctx->screen);
    vel_draw_line(ctx, x, y, x2, y, r, g, b);
    vel_draw_line(ctx, x2, y, x2, y2, r, g, b);
    vel_draw_line(ctx, x2, y2, x, y2, r, g, b);
    vel_draw_line(ctx, x, y2, x, y, r, g, b);
    vel_unlock(ctx->screen);
}
