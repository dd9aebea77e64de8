// What the frame buttons do to the active window: move, resize, scroll,
// mode switch and close, and the shifting of dependents that follows.
#include "input/idle.hpp"
#include "render/render.hpp"
#include "window/window.hpp"

#include <cstdint>

namespace {

using namespace velumo::detail;

// ------------------------------------------------------------------ resize

constexpr uint32_t resize_step = 4;
constexpr int64_t screen_reserve = 50; // a window grows to 50 pixels short of the screen
constexpr uint32_t smallest_size = 20; // and shrinks while above 20 pixels

enum class Side { width, height };

void resize_active_window(vel_context *ctx, Side side, bool grow)
{
    const uint32_t active = active_window(ctx);
    if (active == 0) return;
    erase_selection_marks(ctx, active);
    erase_object(ctx, active);

    vel_object &w = object(ctx, active);
    uint32_t &size = side == Side::width ? w.width : w.height;
    const int64_t screen = side == Side::width ? ctx->screen_width : ctx->screen_height;
    if (grow && static_cast<int64_t>(size) < screen - screen_reserve) size += resize_step;
    if (!grow && size > smallest_size) size -= resize_step;
    // Redrawn also when the limit refused the change.
    redraw_everything(ctx);
}

// ------------------------------------------------------------------ scroll

enum class Axis { x, y };

// The directions of vel_update_x_dependent_obj and _y_.
constexpr uint32_t toward_lower = 1;
constexpr uint32_t toward_higher = 2;

// The range is lopsided: from -M up to 2 M, where M is the window's scroll
// range, or five screens either way when M is 0.
bool may_scroll(const vel_context *ctx, const vel_object &w, Axis axis, bool forward)
{
    const int64_t offset = static_cast<int32_t>(axis == Axis::x ? w.scroll_x : w.scroll_y);
    const int64_t range = axis == Axis::x ? w.scroll_max_x : w.scroll_max_y;
    const int64_t screen = axis == Axis::x ? ctx->screen_width : ctx->screen_height;
    if (forward) return offset < (range == 0 ? 5 * screen : 2 * range);
    return offset > (range == 0 ? -5 * screen : -range);
}

// Forward scrolling (right, down) raises the offset and moves dependents
// towards higher coordinates.  The window's own cursor moves by
// cursor_sign steps: with the offset except when scrolling left, where it
// also moves right.
void scroll_active_window(vel_context *ctx, Axis axis, bool forward, int cursor_sign)
{
    const uint32_t active = active_window(ctx);
    if (active == 0) return;
    vel_object &w = object(ctx, active);
    if (!may_scroll(ctx, w, axis, forward)) return;

    const uint32_t step = ctx->scroll_step;
    uint32_t &offset = axis == Axis::x ? w.scroll_x : w.scroll_y;
    offset = forward ? offset + step : offset - step;
    if (w.editable == 1) {
        uint32_t &cursor = axis == Axis::x ? w.cursor_x : w.cursor_y;
        cursor = cursor_sign > 0 ? cursor + step : cursor - step;
    }
    const uint32_t direction = forward ? toward_higher : toward_lower;
    if (axis == Axis::x)
        vel_update_x_dependent_obj(ctx, active, direction, step);
    else
        vel_update_y_dependent_obj(ctx, active, direction, step);
    draw_and_show_active_window(ctx);
}

// A dependent scrolls with its master unless it is clipped to the frame of
// a top-level window (VEL_CLIP_FRAME directly on a window without master).
bool follows_scroll(vel_context *ctx, const vel_object &o)
{
    if (o.clip_mode == VEL_CLIP_MARGINS) return true;
    return o.clip_mode == VEL_CLIP_FRAME && master_of(ctx, object(ctx, master_of(ctx, o))) != 0;
}

void shift_scrolled_dependents(vel_context *ctx, DependentWalk &walk, uint32_t obj,
                               uint32_t vel_object::*position, uint32_t vel_object::*cursor,
                               uint32_t direction, uint32_t d)
{
    for_each_dependent(ctx, walk, obj, [=, &walk](uint32_t dep) {
        vel_object &o = object(ctx, dep);
        if (!follows_scroll(ctx, o)) return true;
        if (direction == toward_lower || direction == toward_higher) {
            const uint32_t shift = direction == toward_lower ? 0u - d : d;
            o.*position += shift;
            if (o.editable == 1) o.*cursor += shift;
        }
        shift_scrolled_dependents(ctx, walk, dep, position, cursor, direction, d);
        return true;
    });
}

// -------------------------------------------------------------------- move

// Waits for a fresh left-button press, dropping every other event, and
// consumes it.  The record is cleared first so that a press handled before
// the call cannot count as the click.
SDL_MouseButtonEvent wait_for_left_press(vel_context *ctx)
{
    SDL_Event &event = ctx->event;
    event.type = 0;
    IdlePause pause;
    while (event.type != SDL_MOUSEBUTTONDOWN || event.button.button != SDL_BUTTON_LEFT)
        pause.poll(event);
    const SDL_MouseButtonEvent press = event.button;
    event.type = 0;
    return press;
}

// The full frame is erased from button 1 up to the first hidden one.
void erase_frame_for_move(vel_context *ctx, uint32_t kind)
{
    if (kind != VEL_WINDOW_FULL_FRAME) {
        erase_shown_frame_buttons(ctx, kind);
        return;
    }
    for (uint32_t k = 1; frame_button_exists(ctx, k) && object(ctx, k).hidden == 0; ++k)
        erase_object(ctx, k);
}

// The window keeps clear of the top left corner so that its frame buttons
// stay on the screen.  The click is unsigned and compared so, unlike the
// signed clamp of painting: a press is never left of the screen.
constexpr uint32_t move_target(uint32_t click, uint32_t nearest)
{
    return click < nearest ? nearest : click;
}

enum class CursorShift { typed_editable, any_editable };

// Adds (dx, dy) to every dependent below obj, recursively, with wrap-around.
void shift_dependents(vel_context *ctx, DependentWalk &walk, uint32_t obj, uint32_t dx, uint32_t dy,
                      bool skip_empty, CursorShift cursor_shift)
{
    for_each_dependent(ctx, walk, obj, [=, &walk](uint32_t dep) {
        vel_object &o = object(ctx, dep);
        if (skip_empty && !has_size(o)) return true;
        o.x += dx;
        o.y += dy;
        const bool moves_cursor =
            o.editable == 1 && (cursor_shift == CursorShift::any_editable || takes_cursor(o.type));
        if (moves_cursor) {
            o.cursor_x += dx;
            o.cursor_y += dy;
        }
        shift_dependents(ctx, walk, dep, dx, dy, skip_empty, cursor_shift);
        return true;
    });
}

// ------------------------------------------------------------ the buttons

struct PressAction {
    uint32_t button;
    void (*resize)(vel_context *);
    void (*scroll)(vel_context *);
};

constexpr PressAction press_actions[] = {
    {2, vel_decrease_win_h, vel_scroll_win_down},
    {3, vel_increase_win_h, vel_scroll_win_up},
    {5, vel_decrease_win_w, vel_scroll_win_right},
    {6, vel_increase_win_w, vel_scroll_win_left},
};

// The mark colour shows the mode: set A for resizing, set B for scrolling.
void switch_frame_mode(vel_context *ctx)
{
    if (ctx->frame_mode == VEL_FRAME_MODE_SCROLL) {
        ctx->frame_mode = VEL_FRAME_MODE_RESIZE;
        ctx->mark_colour = ctx->mark_colour_a;
    } else if (ctx->frame_mode == VEL_FRAME_MODE_RESIZE) {
        ctx->frame_mode = VEL_FRAME_MODE_SCROLL;
        ctx->mark_colour = ctx->mark_colour_b;
    } else {
        return;
    }
    redraw_everything(ctx);
}

} // namespace

extern "C" {

void vel_exa_left_pressed(vel_context *ctx)
{
    const uint32_t active = active_window(ctx);
    if (active == 0 || object(ctx, active).window_kind != VEL_WINDOW_FULL_FRAME) return;
    if (ctx->frame_mode != VEL_FRAME_MODE_RESIZE && ctx->frame_mode != VEL_FRAME_MODE_SCROLL)
        return;
    for (const PressAction &action : press_actions) {
        if (action.button != ctx->window_to_activate) continue;
        (ctx->frame_mode == VEL_FRAME_MODE_RESIZE ? action.resize : action.scroll)(ctx);
        return;
    }
}

void vel_exa_left_released(vel_context *ctx)
{
    switch (ctx->window_to_activate) {
    case VEL_BUTTON_MOVE: vel_move_window(ctx); break;
    case VEL_BUTTON_MODE: switch_frame_mode(ctx); break;
    case VEL_BUTTON_CLOSE:
        vel_close_win(ctx, 0);
        redraw_everything(ctx);
        break;
    default: break;
    }
}

void vel_move_window(vel_context *ctx)
{
    const uint32_t active = active_window(ctx);
    if (active == 0) return;
    const SDL_MouseButtonEvent press = wait_for_left_press(ctx);

    vel_object &w = object(ctx, active);
    erase_object(ctx, active);
    erase_selection_marks(ctx, active);
    erase_frame_for_move(ctx, w.window_kind);

    const uint32_t x = move_target(press.x, VEL_WINDOW_MIN_X);
    const uint32_t y = move_target(press.y, VEL_WINDOW_MIN_Y);
    const uint32_t dx = x - w.x;
    const uint32_t dy = y - w.y;
    w.x = x;
    w.y = y;
    if (w.editable == 1) {
        w.cursor_x += dx;
        w.cursor_y += dy;
    }
    vel_update_dep_objs_after_move(ctx, active, dx, dy);
    vel_set_operators(ctx);
    redraw_everything(ctx);
}

void vel_increase_win_w(vel_context *ctx)
{
    resize_active_window(ctx, Side::width, true);
}

void vel_increase_win_h(vel_context *ctx)
{
    resize_active_window(ctx, Side::height, true);
}

void vel_decrease_win_w(vel_context *ctx)
{
    resize_active_window(ctx, Side::width, false);
}

void vel_decrease_win_h(vel_context *ctx)
{
    resize_active_window(ctx, Side::height, false);
}

void vel_scroll_win_up(vel_context *ctx)
{
    scroll_active_window(ctx, Axis::y, false, -1);
}

void vel_scroll_win_down(vel_context *ctx)
{
    scroll_active_window(ctx, Axis::y, true, +1);
}

void vel_scroll_win_left(vel_context *ctx)
{
    scroll_active_window(ctx, Axis::x, false, +1);
}

void vel_scroll_win_right(vel_context *ctx)
{
    scroll_active_window(ctx, Axis::x, true, +1);
}

void vel_update_x_dependent_obj(vel_context *ctx, uint32_t obj, uint32_t direction, uint32_t d)
{
    DependentWalk walk(ctx);
    shift_scrolled_dependents(ctx, walk, obj, &vel_object::x, &vel_object::cursor_x, direction, d);
}

void vel_update_y_dependent_obj(vel_context *ctx, uint32_t obj, uint32_t direction, uint32_t d)
{
    DependentWalk walk(ctx);
    shift_scrolled_dependents(ctx, walk, obj, &vel_object::y, &vel_object::cursor_y, direction, d);
}

void vel_update_dep_objs_after_move(vel_context *ctx, uint32_t obj, uint32_t dx, uint32_t dy)
{
    DependentWalk walk(ctx);
    shift_dependents(ctx, walk, obj, dx, dy, false, CursorShift::typed_editable);
}

void vel_add_difference_toxy_dep_objs(vel_context *ctx, uint32_t obj, uint32_t dx, uint32_t dy)
{
    DependentWalk walk(ctx);
    shift_dependents(ctx, walk, obj, dx, dy, true, CursorShift::any_editable);
}

} // extern "C"
