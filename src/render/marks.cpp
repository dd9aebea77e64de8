// Selection marks of the active window: the outline one pixel outside its cut
// rectangle and the 10 x 10 square left of its top corner, drawn and erased.
#include "layout/screen.hpp"
#include "layout/geometry.hpp"
#include "model/tables.hpp"
#include "render/render.hpp"

namespace {

using namespace velumo::detail;

enum class Clamp { drawing_outline, drawing_square, erasing };

// The square stands left of the window's corner, one row up.
constexpr uint32_t square_size = 10;
// Drawing moves a mark that would start above row 1 (the outline at or
// above 0, the square at or above 1) down to row 2.
constexpr uint32_t drawn_mark_min_y = 2;

// Drawing clamps every object with small vertical limits; erasing clamps
// top-level windows only, the same way painting does.  Both keep x at
// VEL_WINDOW_MIN_X or more, signed.
void clamp_for(const vel_context *ctx, vel_object &o, Clamp clamp)
{
    switch (clamp) {
    case Clamp::drawing_outline:
        if (static_cast<int32_t>(o.x) < VEL_WINDOW_MIN_X) o.x = VEL_WINDOW_MIN_X;
        if (static_cast<int32_t>(o.y) <= 0) o.y = drawn_mark_min_y;
        break;
    case Clamp::drawing_square:
        if (static_cast<int32_t>(o.x) < VEL_WINDOW_MIN_X) o.x = VEL_WINDOW_MIN_X;
        if (static_cast<int32_t>(o.y) <= 1) o.y = drawn_mark_min_y;
        break;
    case Clamp::erasing: clamp_top_level_window(ctx, o); break;
    }
}

void outline(vel_context *ctx, uint32_t win, vel_rgb colour, Clamp clamp)
{
    win = object_number(ctx, win);
    vel_object &o = object(ctx, win);
    clamp_for(ctx, o, clamp);
    vel_draw_rectangle(ctx, o.x - 1, o.y - 1, cut_width(ctx, win) + 2, cut_height(ctx, win) + 2,
                       colour.r, colour.g, colour.b);
}

void square(vel_context *ctx, uint32_t win, vel_rgb colour, Clamp clamp)
{
    vel_object &o = object(ctx, win);
    clamp_for(ctx, o, clamp);
    vel_draw_box(ctx, o.x - square_size, o.y - 1, square_size, square_size, colour.r, colour.g,
                 colour.b);
}

} // namespace

namespace velumo::detail {

void erase_selection_marks(vel_context *ctx, uint32_t win)
{
    square(ctx, win, ctx->background_colour, Clamp::erasing);
    outline(ctx, win, ctx->background_colour, Clamp::erasing);
}

} // namespace velumo::detail

extern "C" {

void vel_draw_selected_lines(vel_context *ctx, uint32_t win)
{
    outline(ctx, win, ctx->mark_colour, Clamp::drawing_outline);
}

void vel_draw_selected_box(vel_context *ctx, uint32_t win)
{
    square(ctx, win, ctx->mark_colour, Clamp::drawing_square);
}

void vel_undraw_selected_lines(vel_context *ctx, uint32_t win)
{
    outline(ctx, win, ctx->background_colour, Clamp::erasing);
}

void vel_undraw_selected_box(vel_context *ctx, uint32_t win)
{
    square(ctx, win, ctx->background_colour, Clamp::erasing);
}

} // extern "C"
