// The tables of a loaded form: record access, line-buffer addressing, fonts and
// walks over dependents.  Every number read from form data or the context is checked here.
#pragma once

#include "velumo.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace velumo::detail {

// ------------------------------------------------------------- the tables
//
// The loader records the size of each table in its record 0, which no
// object or text uses: objects[0].reserved holds the number of object
// records, text_recs[0].reserved the number of text records.  A table that
// the application made itself leaves record 0 zeroed; it then holds the
// counted records and record 0: object_count + 1, text_count + 1.  A number
// outside a table means "none" (0) wherever it is read.

// The size recorded in record 0, or count + 1 when none is recorded.
constexpr uint32_t table_size(uint32_t recorded, uint32_t count)
{
    if (recorded != 0) return recorded;
    return count == UINT32_MAX ? count : count + 1;
}

inline uint32_t object_capacity(const vel_context *ctx)
{
    return ctx->objects ? table_size(ctx->objects[0].reserved, ctx->object_count) : 0;
}

// n when it names a record of the object table, else 0.
inline uint32_t object_number(const vel_context *ctx, uint32_t n)
{
    return n < object_capacity(ctx) ? n : 0;
}

// The object record of number n; a number outside the table gives record 0,
// the empty record that stands for "none".
inline vel_object &object(vel_context *ctx, uint32_t n)
{
    return ctx->objects[object_number(ctx, n)];
}

// The master of an object, 0 for top level (and for a master outside the table).
inline uint32_t master_of(const vel_context *ctx, const vel_object &o)
{
    return object_number(ctx, o.master);
}

// object_count, never beyond the records the table has.
inline uint32_t loaded_object_count(const vel_context *ctx)
{
    const uint32_t capacity = object_capacity(ctx);
    return capacity == 0 ? 0 : std::min(ctx->object_count, capacity - 1);
}

// The number of text records; 0 when the text tables were never made.
inline uint32_t text_capacity(const vel_context *ctx)
{
    return ctx->text_recs && ctx->text_bufs
               ? table_size(ctx->text_recs[0].reserved, ctx->text_count)
               : 0;
}

inline bool has_text_tables(const vel_context *ctx)
{
    return text_capacity(ctx) != 0;
}

// t when it names a text record, else 0 ("no text").  Record and buffer 0
// exist whenever the tables do, so callers may still use 0 where a text
// number of 0 is meant to reach the unused record.
inline uint32_t text_number(const vel_context *ctx, uint32_t t)
{
    return t < text_capacity(ctx) ? t : 0;
}

// ---------------------------------------------------- context numbers

inline uint32_t active_window(const vel_context *ctx)
{
    return object_number(ctx, ctx->active_window);
}

inline uint32_t cursor_object(const vel_context *ctx)
{
    return object_number(ctx, ctx->cursor_object);
}

inline uint32_t window_to_activate(const vel_context *ctx)
{
    return object_number(ctx, ctx->window_to_activate);
}

// Entry i (below 100) of the window stack.
inline uint32_t stacked_window(const vel_context *ctx, uint32_t i)
{
    return object_number(ctx, ctx->window_stack[i]);
}

// window_count, never beyond the stack's 100 entries.
inline uint32_t stack_count(const vel_context *ctx)
{
    return std::min<uint32_t>(ctx->window_count, VEL_WINDOW_STACK_SIZE);
}

// ---------------------------------------------------------- text memory

inline constexpr uint32_t last_line = VEL_MAX_LINES - 1;    // 39
inline constexpr uint32_t last_column = VEL_LINE_BYTES - 1; // 99: where a full line's NUL stands

// Start of line buffer t: buffers lie back to back, 4000 bytes each.
inline char *line_buffer(vel_context *ctx, uint32_t text_index)
{
    return ctx->text_bufs + static_cast<std::size_t>(text_index) * VEL_LINE_BUFFER_BYTES;
}

// Line n of buffer t.  Line 40 of buffer t is line 0 of buffer t + 1; the
// block keeps one spare buffer behind its last one for that step.  Callers
// pass a text number from text_number and need the text tables.
inline char *line_at(vel_context *ctx, uint32_t text_index, uint32_t line)
{
    return line_buffer(ctx, text_index) + static_cast<std::size_t>(line) * VEL_LINE_BYTES;
}

// The text of text record t (a number from text_number; the tables exist).
inline char *record_text(vel_context *ctx, uint32_t text_index)
{
    return ctx->text_recs[text_index].text;
}

// The text record of an object, with the text and its cursor index: record
// text_index, the unused record 0 for a number outside the text records.
// Callers need the text tables.
inline vel_text_rec &text_record(vel_context *ctx, const vel_object &o)
{
    return ctx->text_recs[text_number(ctx, o.text_index)];
}

// The font an object is measured and rendered with: the context font, its
// own font, or none for a font_choice that is neither.
inline TTF_Font *object_font(vel_context *ctx, const vel_object &o)
{
    if (o.font_choice == VEL_FONT_DEFAULT) return ctx->font;
    if (o.font_choice == VEL_FONT_OWN) return o.own_font;
    return nullptr;
}

// ------------------------------------------------------------ objects

// An object of width or height 0 is not drawn, not hit and, in most walks,
// not descended into.
constexpr bool has_size(const vel_object &o)
{
    return o.width != 0 && o.height != 0;
}

// Not hidden and of some size: what the scene paints, hit testing tries and
// a menu highlights.
constexpr bool is_visible(const vel_object &o)
{
    return o.hidden == 0 && has_size(o);
}

// Windows, text areas, entry fields and chain members show editable text
// and may carry the text cursor.
constexpr bool takes_cursor(uint32_t type)
{
    switch (type) {
    case VEL_TYPE_WINDOW:
    case VEL_TYPE_TEXT:
    case VEL_TYPE_ENTRY:
    case VEL_TYPE_NUMERIC_ENTRY:
    case VEL_TYPE_CHAIN: return true;
    default: return false;
    }
}

// ------------------------------------------------------------------ walks

// One walk over dependents, shared by every level of its recursion.  It
// visits at most as many entries as the table has records, so neither a
// cycle in the dep_objs lists nor an object listed over and over (a
// diamond) makes it run long, and it skips an entry that names an object
// whose dependents it is walking already, so a cycle never deepens the
// recursion.  It goes at most VEL_MAX_NESTING levels deep, so the stack
// holds any tree; a form that is a tree of that depth is walked whole.
class DependentWalk {
public:
    explicit DependentWalk(const vel_context *ctx) : visits_left_(object_capacity(ctx)) {}
    DependentWalk(const DependentWalk &) = delete;
    DependentWalk &operator=(const DependentWalk &) = delete;

private:
    struct Level {
        uint32_t obj;
        const Level *up;
    };

    bool on_path(uint32_t n) const
    {
        for (const Level *l = path_; l; l = l->up)
            if (l->obj == n) return true;
        return false;
    }
    bool spend_visit()
    {
        if (visits_left_ == 0) return false;
        --visits_left_;
        return true;
    }

    uint32_t visits_left_;
    uint32_t depth_ = 0;
    const Level *path_ = nullptr;

    template <typename Visit>
    friend void for_each_dependent(vel_context *ctx, DependentWalk &walk, uint32_t obj,
                                   Visit visit);
};

// Calls visit(d) for each dependent d of obj in list order: at most 100
// entries, ending at the first 0 (or an entry outside the table).  visit
// returns false to stop this level; it may recurse with the same walk.
template <typename Visit>
void for_each_dependent(vel_context *ctx, DependentWalk &walk, uint32_t obj, Visit visit)
{
    if (walk.depth_ == VEL_MAX_NESTING) return;
    obj = object_number(ctx, obj);
    const DependentWalk::Level here{obj, walk.path_};
    walk.path_ = &here;
    ++walk.depth_;
    const uint32_t *dependents = object(ctx, obj).dep_objs;
    for (int i = 0; i < VEL_MAX_DEPENDENTS; ++i) {
        const uint32_t d = object_number(ctx, dependents[i]);
        if (d == 0) break;
        if (walk.on_path(d)) continue;
        if (!walk.spend_visit() || !visit(d)) break;
    }
    --walk.depth_;
    walk.path_ = here.up;
}

// One level only, with a walk of its own.
template <typename Visit> void for_each_dependent(vel_context *ctx, uint32_t obj, Visit visit)
{
    DependentWalk walk(ctx);
    for_each_dependent(ctx, walk, obj, visit);
}

} // namespace velumo::detail
