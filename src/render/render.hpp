// What the render module offers the modules above it: painting objects and
// scenes, erasing them, and the selection marks of the active window.
#pragma once

#include "velumo.h"

#include <cstdint>

namespace velumo::detail {

// Body, text and border of one object; no refresh.
void paint_object(vel_context *ctx, uint32_t obj);

// obj's dependents after fitting and hiding them against their masters.
void draw_dependents(vel_context *ctx, uint32_t obj);

// The whole screen: texts formatted first when asked, desktop, background
// windows, the active window with its marks, the frame buttons; with
// `refresh` screen_rect is handed to SDL at the end.
void draw_scene(vel_context *ctx, bool format_first, bool refresh);

// The active window alone, then its cut rectangle handed to SDL.
void draw_and_show_active_window(vel_context *ctx);

// Fills the object's record rectangle with the background colour.
void erase_object(vel_context *ctx, uint32_t obj);

// Erases a window's selection square and outline.
void erase_selection_marks(vel_context *ctx, uint32_t win);

} // namespace velumo::detail
