// Painting of one object: its body (box or picture) clipped to the screen
// or its masters, its text lines or caption, then its border.
#include "layout/clip.hpp"
#include "layout/geometry.hpp"
#include "layout/screen.hpp"
#include "model/tables.hpp"
#include "model/text_cache.hpp"
#include "render/render.hpp"

#include <cstring>
#include <string_view>

namespace {

using velumo::detail::as_signed;
using velumo::detail::Clip;
using velumo::detail::clip_run;
using velumo::detail::ClipCase;
using velumo::detail::Limits;
using velumo::detail::master_of;
using velumo::detail::object;
using velumo::detail::text_number;

bool is_caption_type(uint32_t type)
{
    return type == VEL_TYPE_LABEL || type == VEL_TYPE_ENTRY || type == VEL_TYPE_NUMERIC_ENTRY;
}

bool is_picture_type(uint32_t type)
{
    return type == VEL_TYPE_PICTURE_FILE || type == VEL_TYPE_PICTURE;
}

SDL_Rect make_rect(int32_t x, int32_t y, uint32_t w, uint32_t h)
{
    SDL_Rect r;
    r.x = static_cast<Sint16>(x);
    r.y = static_cast<Sint16>(y);
    r.w = static_cast<Uint16>(w);
    r.h = static_cast<Uint16>(h);
    return r;
}

void fill_box(vel_context *ctx, const vel_object &o, uint32_t x, uint32_t y, uint32_t w, uint32_t h)
{
    vel_draw_box(ctx, x, y, w, h, static_cast<uint8_t>(o.fill_r), static_cast<uint8_t>(o.fill_g),
                 static_cast<uint8_t>(o.fill_b));
}

void blit_picture(vel_context *ctx, SDL_Surface *picture, SDL_Rect source, SDL_Rect dest)
{
    if (picture != nullptr) SDL_UpperBlit(picture, &source, ctx->screen, &dest);
}

// The body of a dependent object: the part of its rectangle inside the
// limits its masters set, a box in the fill colour or a cut of its picture.
void paint_dependent_body(vel_context *ctx, uint32_t obj)
{
    const vel_object &o = object(ctx, obj);
    if (o.type < VEL_TYPE_WINDOW || o.type > VEL_TYPE_PICTURE) return;
    const Limits limits = velumo::detail::dependent_limits(ctx, obj);
    const Clip down = clip_run(as_signed(o.y), as_signed(o.y + o.height - 1), o.height, limits.top,
                               limits.bottom);
    const Clip across =
        clip_run(as_signed(o.x), as_signed(o.x + o.width - 1), o.width, limits.left, limits.right);
    if (!down.matched() || !across.matched()) return;
    if (o.type == VEL_TYPE_PICTURE) {
        if (across.length != 0 && down.length != 0)
            blit_picture(ctx, o.image,
                         make_rect(as_signed(across.source), as_signed(down.source), across.length,
                                   down.length),
                         make_rect(across.dest, down.dest, across.length, down.length));
    } else if (o.type != VEL_TYPE_PICTURE_FILE && across.length >= 1 && down.length >= 1) {
        fill_box(ctx, o, static_cast<uint32_t>(across.dest), static_cast<uint32_t>(down.dest),
                 across.length, down.length);
    }
}

// Whether the object has text to paint: the text record (windows, text
// areas), the first formatted line (chain members) or the caption.
// A text_index outside the text records counts as no text.
bool has_text(vel_context *ctx, const vel_object &o)
{
    if (is_caption_type(o.type)) return o.label[0] != '\0';
    const uint32_t t = text_number(ctx, o.text_index);
    if (t == 0) return false;
    if (o.type == VEL_TYPE_WINDOW || o.type == VEL_TYPE_TEXT)
        return velumo::detail::record_text(ctx, t)[0] != '\0';
    if (o.type == VEL_TYPE_CHAIN) return velumo::detail::line_at(ctx, t, 0)[0] != '\0';
    return false;
}

// Line n of the object: its formatted line, or the caption at every n.
// Bounded so that an unterminated field stays inside.
std::string_view line_text(vel_context *ctx, const vel_object &o, uint32_t n)
{
    if (is_caption_type(o.type)) return {o.label, strnlen(o.label, sizeof o.label)};
    const char *line = velumo::detail::line_at(ctx, text_number(ctx, o.text_index), n);
    return {line, strnlen(line, VEL_LINE_BYTES)};
}

// The rendered line becomes text_surface and is blitted from there.
void paint_line(vel_context *ctx, velumo::detail::TextLine &line, SDL_Rect source, SDL_Rect dest)
{
    SDL_FreeSurface(ctx->text_surface);
    ctx->text_surface = line.render();
    if (ctx->text_surface != nullptr) SDL_UpperBlit(ctx->text_surface, &source, ctx->screen, &dest);
}

// The object's text lines (or its caption, once), each clipped against the
// text limits.  `right` and `bottom` are the object's outer edges.
void paint_text(vel_context *ctx, uint32_t obj, uint32_t right, uint32_t bottom)
{
    vel_object &o = object(ctx, obj);
    TTF_Font *font = velumo::detail::object_font(ctx, o);
    if (font == nullptr || !has_text(ctx, o)) return;

    const Limits limits = master_of(ctx, o) == 0 ? velumo::detail::inner_limits(o, right, bottom)
                                                 : velumo::detail::text_limits(ctx, obj);
    const bool centred =
        o.type == VEL_TYPE_WINDOW && o.window_kind == VEL_WINDOW_REDUCED_FRAME && o.centred == 1;
    const uint32_t pitch = static_cast<uint32_t>(TTF_FontHeight(font)) + o.line_spacing;
    const SDL_Color colour{static_cast<Uint8>(o.text_r), static_cast<Uint8>(o.text_g),
                           static_cast<Uint8>(o.text_b), 0};

    uint32_t top = o.y + o.margin_top + o.scroll_y;
    // The first line's bottom is top + pitch, one row more than later lines.
    uint32_t line_bottom = top + pitch;
    // A line cut on both sides keeps the source x of the line before it.
    uint32_t source_x = 0;
    for (uint32_t n = 0;
         n <= o.number_of_lines && n < VEL_MAX_LINES && as_signed(top) < limits.bottom; ++n) {
        velumo::detail::TextLine line(ctx, font, line_text(ctx, o, n), colour);
        const auto text_width = static_cast<uint32_t>(line.width());
        if (centred && velumo::detail::cut_width(ctx, obj) > text_width) {
            const uint32_t free_width = static_cast<uint32_t>(limits.right) -
                                        static_cast<uint32_t>(limits.left) - 1 - text_width;
            o.scroll_x = static_cast<uint32_t>(as_signed(free_width) / 2);
        }
        const uint32_t left = o.x + o.margin_left + o.scroll_x;

        const Clip down =
            clip_run(as_signed(top), as_signed(line_bottom), pitch, limits.top, limits.bottom);
        Clip across = clip_run(as_signed(left), as_signed(left + text_width), text_width,
                               limits.left, limits.right);
        if (across.kind == ClipCase::cut_both) {
            // One pixel narrower than the vertical rule, source x unchanged.
            const uint32_t visible =
                static_cast<uint32_t>(limits.right) - static_cast<uint32_t>(limits.left) - 2;
            across.length = as_signed(visible) < 1 ? 0 : visible;
        } else if (across.matched()) {
            source_x = across.source;
        }

        const bool height_ok = down.kind != ClipCase::cut_both || down.length != 0;
        if (down.matched() && across.matched() && across.length != 0 && height_ok) {
            paint_line(
                ctx, line,
                make_rect(as_signed(source_x), as_signed(down.source), across.length, down.length),
                make_rect(across.dest, down.dest, across.length, down.length));
            if (is_caption_type(o.type)) break;
        }
        top += pitch;
        line_bottom = top + pitch - 1;
    }
}

} // namespace

namespace velumo::detail {

void paint_object(vel_context *ctx, uint32_t obj)
{
    obj = object_number(ctx, obj);
    vel_object &o = object(ctx, obj);
    uint32_t w = 0;
    uint32_t h = 0;
    if (obj >= 1 && obj <= VEL_FRAME_BUTTONS) {
        w = h = VEL_FRAME_BUTTON_SIZE;
    } else if (master_of(ctx, o) == 0) {
        w = cut_width(ctx, obj);
        h = cut_height(ctx, obj);
    }
    clamp_top_level_window(ctx, o);

    uint32_t right = 0;
    uint32_t bottom = 0;
    if (master_of(ctx, o) == 0) {
        if (o.type == VEL_TYPE_PICTURE && o.image != nullptr) {
            blit_picture(ctx, o.image, make_rect(0, 0, o.image->w, o.image->h),
                         make_rect(as_signed(o.x), as_signed(o.y), o.image->w, o.image->h));
        } else if (!is_picture_type(o.type)) {
            fill_box(ctx, o, o.x, o.y, w, h);
        }
        right = o.x + w - 1;
        bottom = o.y + h - 1;
    } else {
        right = o.x + o.width - 1;
        bottom = o.y + o.height - 1;
        paint_dependent_body(ctx, obj);
    }
    if (!is_picture_type(o.type)) paint_text(ctx, obj, right, bottom);
    vel_evoke_borders(ctx, obj);
}

} // namespace velumo::detail

void vel_evoke_object(vel_context *ctx, uint32_t obj)
{
    velumo::detail::paint_object(ctx, obj);
}
