// Pull-down menus: showing a menu, darkening the entry under the mouse, and
// its own event loop until an entry is released on or the menu is left.
#include "menu/menu.hpp"

#include "input/idle.hpp"
#include "input/input.hpp"
#include "layout/geometry.hpp"
#include "layout/screen.hpp"
#include "model/tables.hpp"
#include "render/render.hpp"

#include <algorithm>

namespace velumo::detail {

namespace {

// A coordinate of the menu's corner brought onto a screen of this extent:
// unlike the plain screen cut, one beyond the edge comes back 5 pixels.
int64_t onto_screen(int32_t coordinate, uint32_t extent)
{
    constexpr int64_t edge_margin = 5;
    if (coordinate < 0) return 0;
    if (coordinate >= static_cast<int64_t>(extent))
        return std::max<int64_t>(extent - edge_margin, 0);
    return coordinate;
}

} // namespace

SDL_Rect menu_update_rect(const vel_context *ctx, const vel_object &menu, uint32_t width,
                          uint32_t height)
{
    const int64_t x = onto_screen(static_cast<int32_t>(menu.x), ctx->screen_width);
    const int64_t y = onto_screen(static_cast<int32_t>(menu.y), ctx->screen_height);
    return cut_to_screen(x, y, width, height, ctx->screen_width, ctx->screen_height);
}

} // namespace velumo::detail

namespace {

using namespace velumo::detail;

// Highlighting lowers each colour component above 20 by 20 and remembers
// which ones it lowered, so that giving the colour back is exact.
constexpr uint32_t highlight_shade = 20;
constexpr uint32_t vel_object::*fill_components[] = {&vel_object::fill_r, &vel_object::fill_g,
                                                     &vel_object::fill_b};

struct Highlight {
    uint32_t entry = 0;
    bool lowered[3] = {false, false, false};
};

void give_colour_back(vel_context *ctx, Highlight &highlight)
{
    if (highlight.entry == 0) return;
    vel_object &o = object(ctx, highlight.entry);
    for (int c = 0; c < 3; ++c) {
        if (highlight.lowered[c]) o.*fill_components[c] += highlight_shade;
        highlight.lowered[c] = false;
    }
}

void darken(vel_context *ctx, Highlight &highlight, uint32_t entry)
{
    vel_object &o = object(ctx, entry);
    for (int c = 0; c < 3; ++c) {
        if (o.*fill_components[c] > highlight_shade) {
            o.*fill_components[c] -= highlight_shade;
            highlight.lowered[c] = true;
        }
    }
    highlight.entry = entry;
}

// The screen box of the menu, compared signed.
struct Box {
    int32_t left, right, top, bottom;
};

// The first entry, in list order, under the point; 0 for none.
uint32_t entry_at(vel_context *ctx, uint32_t menu, int32_t x, int32_t y)
{
    uint32_t found = 0;
    for_each_dependent(ctx, menu, [&](uint32_t entry) {
        if (is_visible(object(ctx, entry)) && contains_point(ctx, entry, x, y)) found = entry;
        return found == 0;
    });
    return found;
}

void paint_and_show(vel_context *ctx, uint32_t menu, uint32_t width, uint32_t height)
{
    paint_object(ctx, menu);
    draw_dependents(ctx, menu);
    update_screen_rect(ctx, menu_update_rect(ctx, object(ctx, menu), width, height));
}

bool is_left_release(const SDL_Event &event)
{
    return event.type == SDL_MOUSEBUTTONUP && event.button.button == SDL_BUTTON_LEFT &&
           event.button.state == SDL_RELEASED;
}

// With mode 1 the pointer may rest above the menu, on its title, until it
// has been over an entry; in any other mode it must stay at or below the top.
bool pointer_left(const Box &box, int32_t x, int32_t y, uint32_t mode, bool entered)
{
    if (x < box.left || x > box.right || y > box.bottom) return true;
    return y < box.top && (mode != 1 || entered);
}

} // namespace

extern "C" {

uint32_t vel_move_out_menu(vel_context *ctx, uint32_t menu, uint32_t mode)
{
    menu = object_number(ctx, menu);
    if (menu == 0) return 0;
    SDL_Event &event = ctx->event;
    event.type = 0;

    vel_object &m = object(ctx, menu);
    const uint32_t width = cut_width(ctx, menu);
    const uint32_t height = cut_height(ctx, menu);
    m.hidden = 0;
    paint_and_show(ctx, menu, width, height);
    const Box box{static_cast<int32_t>(m.x), static_cast<int32_t>(m.x + width - 1),
                  static_cast<int32_t>(m.y), static_cast<int32_t>(m.y + height - 1)};

    Highlight highlight;
    uint32_t chosen = 0;
    bool entered = false;
    bool finished = false;
    IdlePause pause;
    while (!finished) {
        pause.poll(event);
        int mouse_x = 0;
        int mouse_y = 0;
        SDL_GetMouseState(&mouse_x, &mouse_y);

        if (object_number(ctx, m.dep_objs[0]) != 0) {
            const uint32_t under = entry_at(ctx, menu, mouse_x, mouse_y);
            if (under != 0) {
                entered = true;
                if (under != highlight.entry) {
                    give_colour_back(ctx, highlight);
                    darken(ctx, highlight, under);
                    paint_and_show(ctx, menu, width, height);
                }
            }
            // The release is tested where the event says, not where the pointer is now.
            if (is_left_release(event)) {
                chosen = entry_at(ctx, menu, event.button.x, event.button.y);
                finished = true;
                event.type = 0;
            }
        }
        if (pointer_left(box, mouse_x, mouse_y, mode, entered)) {
            finished = true;
            chosen = 0;
        }
    }

    erase_object(ctx, menu);
    m.hidden = 1;
    give_colour_back(ctx, highlight);
    return chosen;
}

} // extern "C"
