// Scene drawing: the order in which a whole form, one window or one object's
// dependents are painted, the fitting and visibility of dependents, erasing.
#include "layout/clip.hpp"
#include "layout/geometry.hpp"
#include "layout/screen.hpp"
#include "model/tables.hpp"
#include "render/render.hpp"
#include "text/formatting.hpp"

#include <algorithm>

namespace {

using namespace velumo::detail;

// Dependents of these styles cover their master's inner area.
bool fitted_to_master(uint32_t border_style)
{
    return border_style == VEL_BORDER_FITTED || border_style == VEL_BORDER_FITTED_FRAME ||
           border_style == VEL_BORDER_FITTED_SHADOW;
}

void paint_with_cursor(vel_context *ctx, uint32_t n)
{
    paint_object(ctx, n);
    if (cursor_object(ctx) == n && takes_cursor(object(ctx, n).type)) vel_draw_cursor(ctx, n);
}

void format_all(vel_context *ctx)
{
    const uint32_t count = loaded_object_count(ctx);
    for (uint32_t k = 1; k <= count; ++k) {
        const vel_object &o = object(ctx, k);
        if (!has_size(o)) continue;
        switch (o.type) {
        case VEL_TYPE_CHAIN:
            if (master_of(ctx, o) == 0) flow_chain(ctx, k);
            break;
        case VEL_TYPE_WINDOW:
        case VEL_TYPE_TEXT: format_object_text(ctx, k); break;
        case VEL_TYPE_LABEL:
        case VEL_TYPE_ENTRY:
        case VEL_TYPE_NUMERIC_ENTRY: format_caption(ctx, k); break;
        default: break;
        }
    }
}

// Free-standing objects lie beneath all windows.  Top-level windows and text
// areas are left out on purpose: windows come from the stack.
void draw_desktop(vel_context *ctx)
{
    const uint32_t count = loaded_object_count(ctx);
    for (uint32_t k = VEL_FRAME_BUTTONS + 1; k <= count; ++k) {
        const vel_object &o = object(ctx, k);
        if (!is_visible(o) || master_of(ctx, o) != 0) continue;
        if (o.type == VEL_TYPE_EMPTY || o.type == VEL_TYPE_WINDOW || o.type == VEL_TYPE_TEXT)
            continue;
        paint_with_cursor(ctx, k);
        if (o.dep_objs[0] != 0) draw_dependents(ctx, k);
    }
}

// From the bottom of the stack up to the entry just under the top; no marks
// and no cursor for windows in the background.
void draw_background_windows(vel_context *ctx)
{
    for (uint32_t i = stack_count(ctx); i-- > 1;) {
        const uint32_t w = stacked_window(ctx, i);
        const vel_object &o = object(ctx, w);
        if (o.type != VEL_TYPE_WINDOW || !is_visible(o) || w == active_window(ctx)) continue;
        paint_object(ctx, w);
        draw_dependents(ctx, w);
    }
}

void draw_frame_buttons(vel_context *ctx)
{
    const uint32_t last = std::min<uint32_t>(VEL_FRAME_BUTTONS, loaded_object_count(ctx));
    for (uint32_t k = 1; k <= last; ++k)
        if (object(ctx, k).hidden == 0) paint_object(ctx, k);
}

// Paints obj's visible dependents and theirs, in list order, after fitting
// and hiding them against their masters (vel_switch_dep_object).
void draw_dependents_in(vel_context *ctx, DependentWalk &walk, uint32_t obj)
{
    if (object(ctx, obj).dep_objs[0] != 0) vel_switch_dep_object(ctx, obj);
    for_each_dependent(ctx, walk, obj, [ctx, &walk](uint32_t d) {
        const vel_object &o = object(ctx, d);
        if (is_visible(o)) {
            paint_with_cursor(ctx, d);
            if (o.dep_objs[0] != 0) draw_dependents_in(ctx, walk, d);
        }
        return true;
    });
}

void draw_active_window(vel_context *ctx)
{
    const uint32_t active = active_window(ctx);
    if (active != 0) {
        paint_object(ctx, active);
        // Here without the type test of paint_with_cursor.
        if (cursor_object(ctx) == active) vel_draw_cursor(ctx, active);
        draw_dependents(ctx, active);
    }
    draw_frame_buttons(ctx);
}

} // namespace

namespace velumo::detail {

void draw_scene(vel_context *ctx, bool format_first, bool refresh)
{
    if (format_first) format_all(ctx);
    draw_desktop(ctx);
    draw_background_windows(ctx);

    const uint32_t active = active_window(ctx);
    if (active != 0 && stacked_window(ctx, 0) != 0 && object(ctx, active).hidden == 0) {
        paint_object(ctx, active);
        vel_draw_selected_box(ctx, active);
        vel_draw_selected_lines(ctx, active);
        if (cursor_object(ctx) == active && takes_cursor(object(ctx, active).type))
            vel_draw_cursor(ctx, active);
        draw_dependents(ctx, active);
    }
    draw_frame_buttons(ctx);
    if (refresh) update_screen_rect(ctx, ctx->screen_rect);
}

void draw_dependents(vel_context *ctx, uint32_t obj)
{
    DependentWalk walk(ctx);
    draw_dependents_in(ctx, walk, obj);
}

void draw_and_show_active_window(vel_context *ctx)
{
    draw_active_window(ctx);
    const uint32_t active = active_window(ctx);
    const vel_object &o = object(ctx, active);
    update_screen_rect(ctx, cut_to_screen(o.x, o.y, cut_width(ctx, active), cut_height(ctx, active),
                                          ctx->screen_width, ctx->screen_height));
}

void erase_object(vel_context *ctx, uint32_t obj)
{
    vel_object &o = object(ctx, obj);
    clamp_top_level_window(ctx, o);
    // The full record size, not the cut one: SDL clips the fill to the screen.
    vel_draw_box(ctx, o.x, o.y, o.width, o.height, ctx->background_colour.r,
                 ctx->background_colour.g, ctx->background_colour.b);
}

} // namespace velumo::detail

extern "C" {

uint32_t vel_draw_all_objects(vel_context *ctx, uint32_t format_first, uint32_t refresh)
{
    draw_scene(ctx, format_first == 1, refresh == 1);
    return 1;
}

void vel_draw_dep_objs(vel_context *ctx, uint32_t obj)
{
    draw_dependents(ctx, obj);
}

void vel_switch_dep_object(vel_context *ctx, uint32_t master)
{
    master = object_number(ctx, master);
    const vel_object &m = object(ctx, master);
    for_each_dependent(ctx, master, [ctx, master, &m](uint32_t d) {
        vel_object &o = object(ctx, d);
        if (fitted_to_master(o.border_style) && master != 0) {
            const uint32_t inset = m.border_inset;
            o.x = m.x + m.margin_left - inset;
            o.y = m.y + m.margin_top - inset;
            o.width = m.width - m.margin_left - m.margin_right + 2 * inset;
            o.height = m.height - m.margin_top - m.margin_bottom + 2 * inset;
        }
        if (has_size(o) && o.type != VEL_TYPE_MENU) {
            const Limits limits = dependent_limits(ctx, d);
            const bool vertical =
                fit_run(as_signed(o.y), as_signed(o.y + o.height - 1), limits.top, limits.bottom)
                    .overlaps();
            const bool horizontal =
                fit_run(as_signed(o.x), as_signed(o.x + o.width - 1), limits.left, limits.right)
                    .overlaps();
            o.hidden = vertical && horizontal ? 0 : 1;
        }
        return true;
    });
}

void vel_draw_selected_window(vel_context *ctx)
{
    draw_active_window(ctx);
}

void vel_draw_and_screenup_selected_window(vel_context *ctx)
{
    draw_and_show_active_window(ctx);
}

void vel_undraw_object(vel_context *ctx, uint32_t obj)
{
    erase_object(ctx, obj);
}

} // extern "C"
