// Object borders: the frame around the inner area or the shadow, drawn as
// four one-pixel lines clipped to the area the object may use.
#include "layout/clip.hpp"
#include "layout/geometry.hpp"
#include "model/tables.hpp"

#include <optional>

namespace {

using velumo::detail::Limits;

// Line positions: left and right columns, top and bottom rows.
struct BorderLines {
    int32_t left, right, top, bottom;
};

// The frame styles frame the inner area bw + 1 pixels outside it; the
// shadow styles draw the outline moved right and down by bw.  The other styles
// draw no line.
std::optional<BorderLines> border_lines(const vel_object &o)
{
    const uint32_t right_edge = o.x + o.width - 1;
    const uint32_t bottom_edge = o.y + o.height - 1;
    const uint32_t bw = o.border_inset;
    switch (o.border_style) {
    case VEL_BORDER_FRAME:
    case VEL_BORDER_FITTED_FRAME:
        return BorderLines{static_cast<int32_t>(o.x + o.margin_left - bw - 1),
                           static_cast<int32_t>(right_edge - o.margin_right + bw + 1),
                           static_cast<int32_t>(o.y + o.margin_top - bw - 1),
                           static_cast<int32_t>(bottom_edge - o.margin_bottom + bw + 1)};
    case VEL_BORDER_SHADOW:
    case VEL_BORDER_FITTED_SHADOW:
        return BorderLines{static_cast<int32_t>(o.x + bw), static_cast<int32_t>(right_edge + bw),
                           static_cast<int32_t>(o.y + bw), static_cast<int32_t>(bottom_edge + bw)};
    default: return std::nullopt;
    }
}

// A top-level object's border is clipped to the refresh rectangle, a
// dependent's to the limits its masters set.
Limits border_clip(vel_context *ctx, uint32_t obj)
{
    const vel_object &o = velumo::detail::object(ctx, obj);
    if (velumo::detail::master_of(ctx, o) != 0) return velumo::detail::dependent_limits(ctx, obj);
    const SDL_Rect &r = ctx->screen_rect;
    return {r.x, r.x + r.w - 1, r.y, r.y + r.h - 1};
}

void draw_border(vel_context *ctx, const vel_object &o, const BorderLines &lines,
                 const Limits &clip)
{
    using velumo::detail::fit_run;
    const auto across = fit_run(lines.left, lines.right, clip.left, clip.right);
    const auto down = fit_run(lines.top, lines.bottom, clip.top, clip.bottom);
    const bool sides_visible = down.overlaps();
    const bool rows_visible = across.overlaps();
    const auto r = static_cast<uint8_t>(o.border_r);
    const auto g = static_cast<uint8_t>(o.border_g);
    const auto b = static_cast<uint8_t>(o.border_b);
    const auto u = [](int32_t v) { return static_cast<uint32_t>(v); };
    if (across.start_in && sides_visible)
        vel_draw_line(ctx, u(lines.left), u(down.first), u(lines.left), u(down.last), r, g, b);
    if (across.end_in && sides_visible)
        vel_draw_line(ctx, u(lines.right), u(down.first), u(lines.right), u(down.last), r, g, b);
    if (down.start_in && rows_visible)
        vel_draw_line(ctx, u(across.first), u(lines.top), u(across.last), u(lines.top), r, g, b);
    if (down.end_in && rows_visible)
        vel_draw_line(ctx, u(across.first), u(lines.bottom), u(across.last), u(lines.bottom), r, g,
                      b);
}

} // namespace

void vel_evoke_borders(vel_context *ctx, uint32_t obj)
{
    const vel_object &o = velumo::detail::object(ctx, obj);
    if (o.border_style != VEL_BORDER_NONE) {
        const Limits clip = border_clip(ctx, obj);
        vel_lock(ctx->screen);
        if (const auto lines = border_lines(o)) draw_border(ctx, o, *lines, clip);
    }
    // VEL_BORDER_NONE skips the lock but not the unlock; SDL ignores the unlock of
    // a surface that is not locked.
    vel_unlock(ctx->screen);
}
