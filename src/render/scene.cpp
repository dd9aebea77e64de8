// Scene drawing: the order in which a whole form, one window or one object's
// dependents are painted, the fitting and visibility of dependents, erasing.
#include "layout/screen.hpp"
#include "model/tables.hpp"

#include <algorithm>

namespace {

using namespace velumo::detail;

bool drawable(const vel_object &o)
{
    return o.hidden == 0 && o.width != 0 && o.height != 0;
}

bool has_size(const vel_object &o)
{
    return o.width != 0 && o.height != 0;
}

// Only objects that show editable text carry a cursor.
bool takes_cursor(const vel_object &o)
{
    switch (o.type) {
    case VEL_TYPE_WINDOW:
    case VEL_TYPE_TEXT:
    case VEL_TYPE_ENTRY:
    case VEL_TYPE_NUMERIC_ENTRY:
    case VEL_TYPE_CHAIN: return true;
    default: return false;
    }
}

void paint_with_cursor(vel_context *ctx, uint32_t n)
{
    vel_evoke_object(ctx, n);
    if (cursor_object(ctx) == n && takes_cursor(object(ctx, n))) vel_draw_cursor(ctx, n);
}

void format_all(vel_context *ctx)
{
    const uint32_t count = loaded_object_count(ctx);
    for (uint32_t k = 1; k <= count; ++k) {
        const vel_object &o = object(ctx, k);
        if (!has_size(o)) continue;
        switch (o.type) {
        case VEL_TYPE_CHAIN:
            if (master_of(ctx, o) == 0) vel_format_stream_to_linked_objects(ctx, k);
            break;
        case VEL_TYPE_WINDOW:
        case VEL_TYPE_TEXT: vel_format_object_text(ctx, k); break;
        case VEL_TYPE_LABEL:
        case VEL_TYPE_ENTRY:
        case VEL_TYPE_NUMERIC_ENTRY: vel_format_small_obj(ctx, k); break;
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
        if (!drawable(o) || master_of(ctx, o) != 0) continue;
        if (o.type == VEL_TYPE_EMPTY || o.type == VEL_TYPE_WINDOW || o.type == VEL_TYPE_TEXT)
            continue;
        paint_with_cursor(ctx, k);
        if (o.dep_objs[0] != 0) vel_draw_dep_objs(ctx, k);
    }
}

// From the bottom of the stack up to the entry just under the top; no marks
// and no cursor for windows in the background.
void draw_background_windows(vel_context *ctx)
{
    for (uint32_t i = stack_count(ctx); i-- > 1;) {
        const uint32_t w = stacked_window(ctx, i);
        const vel_object &o = object(ctx, w);
        if (o.type != VEL_TYPE_WINDOW || !drawable(o) || w == active_window(ctx)) continue;
        vel_evoke_object(ctx, w);
        vel_draw_dep_objs(ctx, w);
    }
}

void draw_frame_buttons(vel_context *ctx)
{
    const uint32_t last = std::min<uint32_t>(VEL_FRAME_BUTTONS, loaded_object_count(ctx));
    for (uint32_t k = 1; k <= last; ++k)
        if (object(ctx, k).hidden == 0) vel_evoke_object(ctx, k);
}

bool overlaps(int32_t low_edge, int32_t high_edge, int32_t low_limit, int32_t high_limit)
{
    return (low_limit < low_edge && low_edge < high_limit) ||
           (low_limit < high_edge && high_edge < high_limit) ||
           (low_edge <= low_limit && high_edge >= high_limit);
}

// Paints obj's visible dependents and theirs, in list order, after fitting
// and hiding them against their masters (vel_switch_dep_object).
void draw_dependents(vel_context *ctx, DependentWalk &walk, uint32_t obj)
{
    if (object(ctx, obj).dep_objs[0] != 0) vel_switch_dep_object(ctx, obj);
    for_each_dependent(ctx, walk, obj, [ctx, &walk](uint32_t d) {
        const vel_object &o = object(ctx, d);
        if (drawable(o)) {
            paint_with_cursor(ctx, d);
            if (o.dep_objs[0] != 0) draw_dependents(ctx, walk, d);
        }
        return true;
    });
}

} // namespace

extern "C" {

uint32_t vel_draw_all_objects(vel_context *ctx, uint32_t format_first, uint32_t refresh)
{
    if (format_first == 1) format_all(ctx);
    draw_desktop(ctx);
    draw_background_windows(ctx);

    const uint32_t active = active_window(ctx);
    if (active != 0 && stacked_window(ctx, 0) != 0 && object(ctx, active).hidden == 0) {
        vel_evoke_object(ctx, active);
        vel_draw_selected_box(ctx, active);
        vel_draw_selected_lines(ctx, active);
        if (cursor_object(ctx) == active && takes_cursor(object(ctx, active)))
            vel_draw_cursor(ctx, active);
        vel_draw_dep_objs(ctx, active);
    }
    draw_frame_buttons(ctx);
    if (refresh == 1) update_screen_rect(ctx, ctx->screen_rect);
    return 1;
}

void vel_draw_dep_objs(vel_context *ctx, uint32_t obj)
{
    DependentWalk walk(ctx);
    draw_dependents(ctx, walk, obj);
}

void vel_switch_dep_object(vel_context *ctx, uint32_t master)
{
    master = object_number(ctx, master);
    const vel_object &m = object(ctx, master);
    for_each_dependent(ctx, master, [ctx, master, &m](uint32_t d) {
        vel_object &o = object(ctx, d);
        const uint32_t style = o.border_style;
        if ((style == 2 || style == 3 || style == 5) && master != 0) {
            const uint32_t inset = m.border_inset;
            o.x = m.x + m.margin_left - inset;
            o.y = m.y + m.margin_top - inset;
            o.width = m.width - m.margin_left - m.margin_right + 2 * inset;
            o.height = m.height - m.margin_top - m.margin_bottom + 2 * inset;
        }
        if (has_size(o) && o.type != VEL_TYPE_MENU) {
            uint32_t left = 0, right = 0, top = 0, bottom = 0;
            vel_get_borders_for_dep_object(ctx, d, &left, &right, &top, &bottom);
            const bool vertical =
                overlaps(static_cast<int32_t>(o.y), static_cast<int32_t>(o.y + o.height - 1),
                         static_cast<int32_t>(top), static_cast<int32_t>(bottom));
            const bool horizontal =
                overlaps(static_cast<int32_t>(o.x), static_cast<int32_t>(o.x + o.width - 1),
                         static_cast<int32_t>(left), static_cast<int32_t>(right));
            o.hidden = vertical && horizontal ? 0 : 1;
        }
        return true;
    });
}

void vel_draw_selected_window(vel_context *ctx)
{
    const uint32_t active = active_window(ctx);
    if (active != 0) {
        vel_evoke_object(ctx, active);
        if (cursor_object(ctx) == active) vel_draw_cursor(ctx, active);
        vel_draw_dep_objs(ctx, active);
    }
    draw_frame_buttons(ctx);
}

void vel_draw_and_screenup_selected_window(vel_context *ctx)
{
    vel_draw_selected_window(ctx);
    const uint32_t active = active_window(ctx);
    const vel_object &o = object(ctx, active);
    // The window's cut rectangle, kept inside the screen for SDL.
    const int64_t x = std::min<int64_t>(o.x, ctx->screen_width);
    const int64_t y = std::min<int64_t>(o.y, ctx->screen_height);
    const int64_t w =
        std::min<int64_t>(vel_p_cutted_w_independent(ctx, active), ctx->screen_width - x);
    const int64_t h =
        std::min<int64_t>(vel_p_cutted_h_independent(ctx, active), ctx->screen_height - y);
    update_screen_rect(ctx, SDL_Rect{static_cast<Sint16>(x), static_cast<Sint16>(y),
                                     static_cast<Uint16>(std::max<int64_t>(w, 0)),
                                     static_cast<Uint16>(std::max<int64_t>(h, 0))});
}

void vel_undraw_object(vel_context *ctx, uint32_t obj)
{
    vel_object &o = object(ctx, obj);
    clamp_top_level_window(ctx, o);
    // The full record size, not the cut one: SDL clips the fill to the screen.
    vel_draw_box(ctx, o.x, o.y, o.width, o.height, ctx->background_colour.r,
                 ctx->background_colour.g, ctx->background_colour.b);
}

} // extern "C"
