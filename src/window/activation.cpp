// The window stack: activation, closing, the frame buttons of the active
// window, where the text cursor starts, and the modal dialogs built on them.
#include "input/input.hpp"
#include "layout/geometry.hpp"
#include "render/render.hpp"
#include "window/window.hpp"

#include <algorithm>
#include <optional>

namespace {

using namespace velumo::detail;

constexpr uint32_t last_stack_index = VEL_WINDOW_STACK_SIZE - 1;

// Frame buttons sit 24 pixels above the window, 16 pixels apart, the row
// ending at the window's right edge; slot 7 is the rightmost place.

uint32_t frame_button_x(const vel_object &win, uint32_t visible_width, uint32_t slot)
{
    return win.x + visible_width - VEL_FRAME_BUTTONS * VEL_FRAME_BUTTON_SIZE +
           VEL_FRAME_BUTTON_SIZE * (slot - 1);
}

// The reduced frame puts button 1 next to button 7, in slot 6.
uint32_t frame_slot(uint32_t window_kind, uint32_t button)
{
    if (window_kind == VEL_WINDOW_REDUCED_FRAME && button == VEL_BUTTON_MOVE)
        return VEL_BUTTON_CLOSE - 1;
    return button;
}

// All hundred entries are searched, not only the counted ones.
std::optional<uint32_t> stack_position(const vel_context *ctx, uint32_t win)
{
    for (uint32_t i = 0; i < VEL_WINDOW_STACK_SIZE; ++i)
        if (ctx->window_stack[i] == win) return i;
    return std::nullopt;
}

// Closes the gap at p by moving the counted entries below it up one; the
// last entry of a full stack has nothing below it and becomes empty.
void remove_from_stack(vel_context *ctx, uint32_t p)
{
    uint32_t *stack = ctx->window_stack;
    for (uint32_t i = p; i < ctx->window_count && i <= last_stack_index; ++i)
        stack[i] = i < last_stack_index ? stack[i + 1] : 0;
}

// Moves the counted entries down one to free entry 0; an entry pushed past
// the last index is lost.
void push_down_stack(vel_context *ctx)
{
    uint32_t *stack = ctx->window_stack;
    for (uint32_t i = std::min(ctx->window_count, last_stack_index); i >= 1; --i)
        stack[i] = stack[i - 1];
}

// Only a newly opened window is counted: a window that was visible from the
// start enters the stack uncounted.
void put_in_front(vel_context *ctx, uint32_t win, bool newly_opened)
{
    const std::optional<uint32_t> p = stack_position(ctx, win);
    if (p == 0u) return;
    if (p) remove_from_stack(ctx, *p);
    push_down_stack(ctx);
    ctx->window_stack[0] = win;
    if (newly_opened) ++ctx->window_count;
}

void start_cursor(vel_object &o)
{
    o.cursor_x = o.x + o.margin_left;
    o.cursor_y = o.y + o.margin_top;
    o.cursor_line = 0;
    o.cursor_column = 0;
}

void initiate_dependent_cursors(vel_context *ctx, DependentWalk &walk, uint32_t obj)
{
    for_each_dependent(ctx, walk, obj, [ctx, &walk](uint32_t d) {
        vel_object &o = object(ctx, d);
        if (!has_size(o)) return true;
        // A cursor placed once keeps its position.
        if (o.editable == 1 && o.type != VEL_TYPE_EMPTY && o.cursor_x == 0 && o.cursor_y == 0)
            start_cursor(o);
        initiate_dependent_cursors(ctx, walk, d);
        return true;
    });
}

uint32_t first_cursor_dependent(vel_context *ctx, DependentWalk &walk, uint32_t obj)
{
    uint32_t found = 0;
    for_each_dependent(ctx, walk, obj, [ctx, &walk, &found](uint32_t d) {
        const vel_object &o = object(ctx, d);
        if (!has_size(o)) return true;
        if (o.editable == 1) {
            found = d;
        } else if (o.editable == 0 && o.dep_objs[0] != 0) {
            found = first_cursor_dependent(ctx, walk, d);
        }
        return found == 0;
    });
    return found;
}

} // namespace

extern "C" {

void vel_activate_window(vel_context *ctx)
{
    const uint32_t win = window_to_activate(ctx);
    const uint32_t previous = active_window(ctx);
    vel_object &w = object(ctx, win);
    if (win == 0 || w.type != VEL_TYPE_WINDOW || master_of(ctx, w) != 0 || win == previous) return;

    const bool newly_opened = w.hidden == 1;
    if (newly_opened) {
        w.hidden = 0;
        // A full stack refuses the window silently; it stays marked visible.
        if (ctx->window_count > last_stack_index) return;
    }
    put_in_front(ctx, win, newly_opened);
    vel_initiate_cursor_win(ctx, win);

    if (previous != 0) {
        erase_selection_marks(ctx, previous);
        erase_shown_frame_buttons(ctx, object(ctx, previous).window_kind);
    }
    ctx->active_window = win;
    ctx->window_to_activate = 0;

    if (w.editable == 1)
        ctx->cursor_object = win;
    else if (w.editable == 0)
        ctx->cursor_object = vel_check_cursor_dep_objs(ctx, win);
    vel_set_operators(ctx);
}

void vel_close_win(vel_context *ctx, uint32_t win)
{
    // A number outside the table closes nothing, not the active window.
    win = win == 0 ? active_window(ctx) : object_number(ctx, win);
    if (win == 0) return;
    vel_object &w = object(ctx, win);
    if (w.hidden != 0) return;
    const std::optional<uint32_t> p = stack_position(ctx, win);
    if (!p) return;

    remove_from_stack(ctx, *p);
    if (ctx->window_count != 0) --ctx->window_count;
    w.hidden = 1;
    erase_object(ctx, win);
    if (win != active_window(ctx)) return;

    erase_selection_marks(ctx, win);
    for_each_frame_button(ctx, w.window_kind, [ctx](uint32_t k) {
        erase_object(ctx, k);
        object(ctx, k).hidden = 1;
    });
    if (ctx->cursor_object == win) ctx->cursor_object = 0;
    ctx->active_window = 0;

    // The window that moved into the closed one's place comes to the front.
    const uint32_t next = stacked_window(ctx, *p);
    if (next != 0) {
        ctx->window_to_activate = next;
        vel_activate_window(ctx);
    }
}

void vel_set_operators(vel_context *ctx)
{
    const uint32_t active = active_window(ctx);
    if (active == 0 || object(ctx, active).hidden != 0) {
        for (uint32_t k = 1; k <= VEL_FRAME_BUTTONS; ++k)
            if (frame_button_exists(ctx, k)) object(ctx, k).hidden = 1;
        return;
    }
    const vel_object &win = object(ctx, active);
    if (win.window_kind != VEL_WINDOW_FULL_FRAME && win.window_kind != VEL_WINDOW_REDUCED_FRAME)
        return;
    const uint32_t visible_width = cut_width(ctx, active);
    for (uint32_t k = 1; k <= VEL_FRAME_BUTTONS; ++k) {
        if (!frame_button_exists(ctx, k)) continue;
        vel_object &button = object(ctx, k);
        if (!frame_shows_button(win.window_kind, k)) {
            button.hidden = 1;
            continue;
        }
        button.hidden = 0;
        button.x = frame_button_x(win, visible_width, frame_slot(win.window_kind, k));
        button.y = win.y - VEL_FRAME_ROW_OFFSET;
    }
}

void vel_select_window(vel_context *ctx)
{
    const uint32_t target = window_to_activate(ctx);
    if (target == 0) return;
    const vel_object &o = object(ctx, target);
    if (o.type == VEL_TYPE_WINDOW && master_of(ctx, o) == 0) {
        vel_activate_window(ctx);
        redraw_everything(ctx);
    } else if (takes_cursor(o.type) && o.editable == 1) {
        ctx->cursor_object = target;
        draw_and_show_active_window(ctx);
    }
}

uint32_t vel_decide_window(vel_context *ctx, uint32_t win, uint32_t first, uint32_t last)
{
    ctx->window_to_activate = win;
    vel_activate_window(ctx);
    redraw_everything(ctx);
    const uint32_t answer =
        run_selection(ctx, static_cast<int32_t>(first), static_cast<int32_t>(last));
    vel_close_win(ctx, 0);
    return answer;
}

void vel_notice_window(vel_context *ctx, uint32_t win, uint32_t obj)
{
    ctx->window_to_activate = win;
    vel_activate_window(ctx);
    redraw_everything(ctx);
    run_selection(ctx, static_cast<int32_t>(obj), static_cast<int32_t>(obj));
    vel_close_win(ctx, 0);
}

void vel_initiate_cursor_win(vel_context *ctx, uint32_t win)
{
    vel_object &w = object(ctx, win);
    if (w.editable == 1 && w.cursor_x == 0 && w.cursor_y == 0) start_cursor(w);
    vel_initiate_cursor_dep_objs(ctx, win);
}

void vel_initiate_cursor_dep_objs(vel_context *ctx, uint32_t obj)
{
    DependentWalk walk(ctx);
    initiate_dependent_cursors(ctx, walk, obj);
}

uint32_t vel_check_cursor_dep_objs(vel_context *ctx, uint32_t obj)
{
    DependentWalk walk(ctx);
    return first_cursor_dependent(ctx, walk, obj);
}

} // extern "C"
