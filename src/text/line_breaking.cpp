// Measuring and line-editing steps shared by the object formatter and the
// chained flow: umlauts, widths, copying words and the space rule.
#include "text/line_breaking.hpp"

#include "layout/geometry.hpp"
#include "model/text_cache.hpp"

namespace velumo::detail {

char translate_umlaut(const vel_context *ctx, char ch)
{
    if (ctx->umlaut_conversion != 1) return ch;
    switch (static_cast<unsigned char>(ch)) {
    case 0x84: return static_cast<char>(0xE4);
    case 0x94: return static_cast<char>(0xF6);
    case 0x81: return static_cast<char>(0xFC);
    default: return ch;
    }
}

void set_line_width_from_margins(vel_object &o)
{
    if (o.line_width == 0) o.line_width = o.width - (o.margin_right + o.margin_left);
}

void set_line_width_from_text_area(vel_context *ctx, uint32_t obj)
{
    vel_object &o = object(ctx, obj);
    if (o.line_width != 0) return;
    const Limits area = text_limits(ctx, obj);
    o.line_width = static_cast<uint32_t>(area.right) - static_cast<uint32_t>(area.left) - 1;
}

int text_width(vel_context *ctx, const vel_object &measured_by, const char *text)
{
    TTF_Font *font = object_font(ctx, measured_by);
    return font ? measured_width(ctx, font, text) : 0;
}

bool wider_than_line(vel_context *ctx, const vel_object &measured_by, const char *text)
{
    return static_cast<int64_t>(text_width(ctx, measured_by, text)) >
           static_cast<int64_t>(measured_by.line_width);
}

uint32_t copy_word_at(char *line, uint32_t column, const char *word, uint32_t count)
{
    for (uint32_t k = 0; k < count; ++k) {
        line[column++] = word[k];
        line[column] = '\0';
    }
    return column;
}

bool try_char(vel_context *ctx, const vel_object &measured_by, char *line, uint32_t column, char ch)
{
    line[column] = ch;
    line[column + 1] = '\0';
    if (!wider_than_line(ctx, measured_by, line)) return true;
    line[column] = '\0';
    return false;
}

void start_line_with_space(vel_context *ctx, WalkState &s)
{
    char *line = s.current_line(ctx);
    line[0] = ' ';
    line[1] = '\0';
    s.column = 1;
}

bool append_space(vel_context *ctx, const vel_object &measured_by, WalkState &s)
{
    char *line = s.current_line(ctx);
    if (s.column < last_column) {
        if (try_char(ctx, measured_by, line, s.column, ' ')) {
            ++s.column;
            return false;
        }
    } else {
        line[last_column] = '\0';
    }
    if (s.line < last_line) {
        ++s.line;
        start_line_with_space(ctx, s);
        return false;
    }
    return s.line == last_line;
}

} // namespace velumo::detail
