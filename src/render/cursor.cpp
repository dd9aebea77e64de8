// The text cursor: a one-pixel vertical line of one font height at the
// object's cursor position, in its text colour, clipped to its text area.
#include "layout/geometry.hpp"
#include "model/tables.hpp"

namespace {

using namespace velumo::detail;

// The cursor is as tall as the font the object's text is drawn with: its own
// font for VEL_FONT_OWN, the context font otherwise, unlike object_font
// (objects without a usable font still show where typing goes).
int32_t cursor_height(vel_context *ctx, const vel_object &o)
{
    TTF_Font *font = o.font_choice == VEL_FONT_OWN ? o.own_font : ctx->font;
    return font ? TTF_FontHeight(font) : 0;
}

} // namespace

extern "C" {

// The cursor's own clip, not the painting one (clip_run): it reads the text
// limits unsigned for its column and its top and signed for its bottom, so a
// top limit of -1 counts every cursor as cut at the top.  A cursor cut on
// both sides always runs from T + 1 to B - 1, downward or, when the limits
// cross, upward.
void vel_draw_cursor(vel_context *ctx, uint32_t obj)
{
    const vel_object &o = object(ctx, obj);
    const int32_t height = cursor_height(ctx, o);
    const Limits limits = text_limits(ctx, obj);
    const auto left = static_cast<uint32_t>(limits.left);
    const auto right = static_cast<uint32_t>(limits.right);
    const auto top_limit = static_cast<uint32_t>(limits.top);
    const auto bottom_limit = static_cast<uint32_t>(limits.bottom);

    const uint32_t column = o.cursor_x;
    if (!(left < column && column < right) || height <= 0) return;
    const uint32_t top = o.cursor_y;
    const int32_t bottom = static_cast<int32_t>(top) + height - 1;
    const bool top_inside = top > top_limit;
    const bool bottom_inside = bottom < static_cast<int32_t>(bottom_limit);

    uint32_t first = top;
    uint32_t last = static_cast<uint32_t>(bottom);
    if (!top_inside) {
        if (bottom_inside && bottom <= static_cast<int32_t>(top_limit)) return;
        first = top_limit + 1;
    }
    if (!bottom_inside) {
        if (top_inside && top >= bottom_limit) return;
        last = bottom_limit - 1;
    }
    vel_draw_line(ctx, column, first, column, last, static_cast<uint8_t>(o.text_r),
                  static_cast<uint8_t>(o.text_g), static_cast<uint8_t>(o.text_b));
}

} // extern "C"
