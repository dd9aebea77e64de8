// Helpers shared by the window sources: which frame buttons a window kind
// shows, erasing them, and the full redraw that ends every window change.
#pragma once

#include "model/tables.hpp"
#include "render/render.hpp"

#include <cstdint>

namespace velumo::detail {

// Buttons 1..7 exist only when the form loaded that many records.
inline bool frame_button_exists(vel_context *ctx, uint32_t button)
{
    return button >= 1 && button <= VEL_FRAME_BUTTONS && button <= loaded_object_count(ctx);
}

// The full frame shows all seven buttons, the reduced frame buttons 1 and 7,
// any other kind none.
inline bool frame_shows_button(uint32_t window_kind, uint32_t button)
{
    if (window_kind == VEL_WINDOW_FULL_FRAME) return true;
    if (window_kind == VEL_WINDOW_REDUCED_FRAME)
        return button == VEL_BUTTON_MOVE || button == VEL_BUTTON_CLOSE;
    return false;
}

// Calls visit(k) for each existing button k that a window of this kind shows.
template <typename Visit> void for_each_frame_button(vel_context *ctx, uint32_t kind, Visit visit)
{
    for (uint32_t k = 1; k <= VEL_FRAME_BUTTONS; ++k)
        if (frame_button_exists(ctx, k) && frame_shows_button(kind, k)) visit(k);
}

// Erases the buttons of this kind's frame that are currently shown.
inline void erase_shown_frame_buttons(vel_context *ctx, uint32_t kind)
{
    for_each_frame_button(ctx, kind, [ctx](uint32_t k) {
        if (object(ctx, k).hidden == 0) erase_object(ctx, k);
    });
}

// Every frame action and window change that moves things ends with this:
// everything painted again, without reformatting, and shown.
inline void redraw_everything(vel_context *ctx)
{
    draw_scene(ctx, false, true);
}

} // namespace velumo::detail
