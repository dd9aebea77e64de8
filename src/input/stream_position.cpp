// The two forms of a text cursor: the character index into the text, and the
// line and column in the formatted lines, each computed from the other.
#include "input/text_access.hpp"
#include "model/tables.hpp"

#include <algorithm>
#include <optional>

namespace {

using velumo::detail::FormattedLines;
using velumo::detail::has_text_tables;
using velumo::detail::object;
using velumo::detail::text_number;

struct StreamPosition {
    uint32_t index = 0;
    uint32_t line = 0;
    uint32_t column = 0;
};

// Walks the formatted lines of the cursor object in text order, one
// character or line end a step, until `reached` accepts the position after
// a step; nothing when the last formatted line is passed first.  A line end
// takes a text position only where the text holds a paragraph break: a
// wrap made by the formatter takes none.
template <typename Reached>
std::optional<StreamPosition> walk_text(vel_context *ctx, Reached reached)
{
    const vel_object &o = object(ctx, ctx->cursor_object);
    const uint32_t t = velumo::detail::text_number(ctx, o.text_index);
    const FormattedLines lines(ctx, t);
    const char *text = velumo::detail::record_text(ctx, t);
    const uint32_t last_line = std::min(o.number_of_lines, FormattedLines::last_slot);
    StreamPosition at;
    while (at.line <= last_line) {
        if (lines.at(at.line, at.column) != '\0') {
            ++at.column;
            ++at.index;
        } else {
            ++at.line;
            at.column = 0;
            if (at.index < VEL_TEXT_BYTES && text[at.index] == '\n') ++at.index;
        }
        if (reached(at)) return at;
    }
    return std::nullopt;
}

} // namespace

extern "C" {

void vel_get_position_in_stream(vel_context *ctx)
{
    if (!has_text_tables(ctx)) return;
    const vel_object &o = object(ctx, ctx->cursor_object);
    uint32_t &cursor_index = velumo::detail::text_record(ctx, o).cursor_index;
    if (o.cursor_line == 0 && o.cursor_column == 0) {
        cursor_index = 0;
        return;
    }
    const auto is_cursor = [&](const StreamPosition &p) {
        return p.line == o.cursor_line && p.column == o.cursor_column;
    };
    if (const auto at = walk_text(ctx, is_cursor)) cursor_index = at->index;
}

void vel_get_column_row(vel_context *ctx)
{
    if (!has_text_tables(ctx)) return;
    vel_object &o = object(ctx, ctx->cursor_object);
    const uint32_t cursor_index = velumo::detail::text_record(ctx, o).cursor_index;
    if (cursor_index == 0) {
        o.cursor_line = 0;
        o.cursor_column = 0;
        return;
    }
    // The test follows each step, so an index at the end of a wrapped line
    // stays at that line's end instead of column 0 of the next.
    const auto is_index = [&](const StreamPosition &p) { return p.index == cursor_index; };
    if (const auto at = walk_text(ctx, is_index)) {
        o.cursor_line = at->line;
        o.cursor_column = at->column;
    }
}

} // extern "C"
