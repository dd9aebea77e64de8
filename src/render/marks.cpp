// Selection marks of the active window: the outline one pixel outside its cut
// rectangle and the 10 x 10 square left of its top corner, drawn and erased.
#include "layout/screen.hpp"
#include "layout/geometry.hpp"
#include "model/tables.hpp"
#include "render/render.hpp"

namespace {

using namespace velumo::detail;

enum class Clamp { drawing_outline, drawing_square, erasing };

// Drawing clamps every object with small vertical limits; erasing clamps
// top-level windows only, the same way painting does.
void clamp_for(const vel_context *ctx, vel_object &o, Clamp clamp)
{
    switch (clamp) {
    case Clamp::drawing_outline:
        if (static_cast<int32_t>(o.x) <= 10) o.x = 11;
        if (static_cast<int32_t>(o.y) <= 0) o.y = 2;
        break;
    case Clamp::drawing_square:
        if (static_cast<int32_t>(o.x) <= 10) o.x = 11;
        if (static_cast<int32_t>(o.y) <= 1) o.y = 2;
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
    vel_draw_box(ctx, o.x - 10, o.y - 1, 10, 10, colour.r, colour.g, colour.b);
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
