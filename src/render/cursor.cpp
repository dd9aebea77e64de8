// The text cursor: a one-pixel vertical line of one font height at the
// object's cursor position, in its text colour, clipped to its text area.
#include "clip.hpp"
#include "internal.hpp"

namespace {

using namespace velumo::detail;

// The cursor is as tall as the font the object's text is drawn with: its own
// font for font_choice 1, the context font otherwise (objects without a
// usable font still show where typing goes).
int32_t cursor_height(vel_context *ctx, const vel_object &o)
{
    TTF_Font *font = o.font_choice == 1 ? o.own_font : ctx->font;
    return font ? TTF_FontHeight(font) : 0;
}

} // namespace

extern "C" {

void vel_draw_cursor(vel_context *ctx, uint32_t obj)
{
    const vel_object &o = object(ctx, obj);
    const int32_t height = cursor_height(ctx, o);
    uint32_t left = 0, right = 0, top = 0, bottom = 0;
    vel_get_borders_for_text(ctx, obj, &left, &right, &top, &bottom);

    const uint32_t column = o.cursor_x;
    if (!(left < column && column < right) || height <= 0) return;
    const int32_t cursor_top = static_cast<int32_t>(o.cursor_y);
    const Clip rows = clip_run(cursor_top, cursor_top + height - 1, static_cast<uint32_t>(height),
                               static_cast<int32_t>(top), static_cast<int32_t>(bottom));
    if (!rows.matched() || rows.length == 0) return;
    // Drawn downward; a visible part of one pixel is an empty line and shows nothing.
    const uint32_t first = static_cast<uint32_t>(rows.dest);
    vel_draw_line(ctx, column, first, column, first + rows.length - 1,
                  static_cast<uint8_t>(o.text_r), static_cast<uint8_t>(o.text_g),
                  static_cast<uint8_t>(o.text_b));
}

} // extern "C"
