// Shared internal helpers: record access, line-buffer addressing, fonts.
// Every subsystem reaches objects, texts and formatted lines through these.
#pragma once

#include "velumo.h"

#include <cstddef>
#include <cstdint>

namespace velumo::detail {

// The object record of number n; callers pass numbers from the table.
inline vel_object &object(vel_context *ctx, uint32_t n)
{
    return ctx->objects[n];
}

// Start of line buffer t: buffers lie back to back, 4000 bytes each.
inline char *line_buffer(vel_context *ctx, uint32_t text_index)
{
    return ctx->text_bufs + static_cast<std::size_t>(text_index) * VEL_LINE_BUFFER_BYTES;
}

// Line n of buffer t.  Line 40 of buffer t is line 0 of buffer t + 1; the
// block keeps one spare buffer behind its last one for that step.
inline char *line_at(vel_context *ctx, uint32_t text_index, uint32_t line)
{
    return line_buffer(ctx, text_index) + static_cast<std::size_t>(line) * VEL_LINE_BYTES;
}

// The text of text record t.
inline char *record_text(vel_context *ctx, uint32_t text_index)
{
    return ctx->text_recs[text_index].text;
}

// The font an object is measured and rendered with: the context font for
// font_choice 0, its own font for 1, none for anything else.
inline TTF_Font *object_font(vel_context *ctx, const vel_object &o)
{
    if (o.font_choice == 0) return ctx->font;
    if (o.font_choice == 1) return o.own_font;
    return nullptr;
}

// Calls visit(d) for each dependent d of obj in list order: at most 100
// entries, ending at the first 0.  visit returns false to stop the walk.
template <typename Visit> void for_each_dependent(vel_context *ctx, uint32_t obj, Visit visit)
{
    const uint32_t *dependents = object(ctx, obj).dep_objs;
    for (int i = 0; i < VEL_MAX_DEPENDENTS && dependents[i] != 0; ++i)
        if (!visit(dependents[i])) return;
}

// A top-level window never stands closer to the screen's top left corner
// than (11, 25): the frame buttons sit 24 pixels above it.  The record is
// changed.  Comparisons are signed, so a position "left of 0" is clamped too.
inline void clamp_top_level_window(vel_object &o)
{
    if (o.type != VEL_TYPE_WINDOW || o.master != 0) return;
    if (static_cast<int32_t>(o.x) <= 10) o.x = 11;
    if (static_cast<int32_t>(o.y) <= 24) o.y = 25;
}

} // namespace velumo::detail
