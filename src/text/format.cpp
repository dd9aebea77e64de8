// Breaks the text of a window or text object into the 40 lines of its line
// buffer, places single words, and centres the captions of buttons.
#include "text/formatting.hpp"
#include "text/line_breaking.hpp"

#include <algorithm>
#include <cstring>

namespace {

using namespace velumo::detail;

// Places a word that is wider than a whole line character by character.
// Returns 1 when the last character was kept, -1 when the lines ran out.
int32_t split_word(vel_context *ctx, const vel_object &o, const char *word, uint32_t *line,
                   uint32_t *column, uint32_t word_length)
{
    uint32_t next = 0;
    while (next < word_length) {
        if (*line > last_line) return -1;
        char *text = line_at(ctx, text_number(ctx, o.text_index), *line);
        if (*column >= last_column) {
            // A full line goes on in the next one, even below line 39.
            text[last_column] = '\0';
            ++*line;
            *column = 0;
        } else if (try_char(ctx, o, text, *column, word[next])) {
            ++*column;
            ++next;
        } else if (*line < last_line) {
            ++*line;
            *column = 0;
        } else {
            return -1;
        }
    }
    return 1;
}

// The formatter's side of the shared walk: it stops at line 39.
class ObjectFormatter {
public:
    ObjectFormatter(vel_context *ctx, uint32_t obj, WalkState &s) : ctx_(ctx), obj_(obj), s_(s) {}

    bool more() const { return s_.line <= last_line && !s_.finished; }
    const vel_object &measured_by() const { return object(ctx_, obj_); }

    void end_of_text()
    {
        if (!s_.word.empty()) place_word();
        s_.current_line(ctx_)[s_.column] = '\0';
        s_.finished = true;
    }

    // After spaces the line feed only ends the line: a word kept from a split
    // stays in the buffer.
    void line_feed()
    {
        const bool placing = !s_.in_spaces && !s_.word.empty();
        if (placing) place_word();
        s_.current_line(ctx_)[s_.column] = '\0';
        if (s_.line < last_line) {
            if (placing) s_.word.clear();
            ++s_.line;
            s_.column = 0;
        } else {
            s_.finished = true;
        }
    }

    // A word split over lines stays in the buffer and is placed again, joined
    // to the next word.
    void word_before_space()
    {
        const int32_t result = place_word();
        if (result == -1) {
            s_.finished = true;
        } else if (result == 0) {
            s_.word.clear();
            s_.current_line(ctx_)[s_.column] = '\0';
        }
    }

    bool drops_space() const { return false; }
    void space_past_last_line() { s_.finished = true; }
    int32_t place_full_word() { return place_word(); }

    void line_full()
    {
        s_.current_line(ctx_)[last_column] = '\0';
        if (s_.line < last_line) {
            ++s_.line;
            s_.column = 0;
        } else {
            s_.finished = true;
        }
    }

private:
    int32_t place_word()
    {
        return vel_copy_word_into_line(ctx_, obj_, s_.word.chars, &s_.line, &s_.column,
                                       &s_.word.length, 0);
    }

    vel_context *ctx_;
    uint32_t obj_;
    WalkState &s_;
};

} // namespace

namespace velumo::detail {

uint32_t format_object_text(vel_context *ctx, uint32_t obj)
{
    vel_object &o = object(ctx, obj);
    // A text_index outside the text records counts as none.
    const uint32_t t = text_number(ctx, o.text_index);
    if ((o.type != VEL_TYPE_WINDOW && o.type != VEL_TYPE_TEXT) || t == 0) return 0;

    set_line_width_from_text_area(ctx, obj);

    // A record without a NUL in its field is read as cut at 999 characters.
    const char *text = record_text(ctx, t);
    const auto length = static_cast<uint32_t>(strnlen(text, VEL_TEXT_BYTES - 1));
    for (uint32_t n = 0; n <= last_line; ++n)
        line_at(ctx, t, n)[0] = '\0';
    // An emptied text leaves number_of_lines as it was.
    if (length == 0) return 0;

    WalkState s;
    s.text_index = t;
    ObjectFormatter formatter(ctx, obj, s);
    walk_text(ctx, formatter, s, text, length);

    o.number_of_lines = s.line;
    for (uint32_t n = s.line + 1; n <= last_line; ++n)
        line_at(ctx, t, n)[0] = '\0';
    return s.line;
}

uint32_t format_caption(vel_context *ctx, uint32_t obj)
{
    vel_object &o = object(ctx, obj);
    if (o.label[0] == '\0') return 0;

    // The caption is its first line; the cut is kept in the label.
    char *end = std::find_if(o.label, o.label + VEL_STRING_BYTES - 1,
                             [](char ch) { return ch == '\0' || ch == '\n'; });
    *end = '\0';

    int width = 0;
    int height = 0;
    if (TTF_Font *font = object_font(ctx, o)) TTF_SizeText(font, o.label, &width, &height);

    if (o.type == VEL_TYPE_LABEL) {
        // Centred only with at least 3 pixels to spare in that direction.
        const auto spare_x = static_cast<int32_t>(o.width - static_cast<uint32_t>(width));
        const auto spare_y = static_cast<int32_t>(o.height - static_cast<uint32_t>(height));
        uint32_t result = 0;
        if (spare_x > 2) {
            o.margin_left = static_cast<uint32_t>(spare_x / 2);
            result = 1;
        }
        if (spare_y > 2) {
            o.margin_top = static_cast<uint32_t>(spare_y / 2);
            result = 2;
        }
        return result;
    }
    if (o.type == VEL_TYPE_ENTRY || o.type == VEL_TYPE_NUMERIC_ENTRY) return 3;
    return 0;
}

} // namespace velumo::detail

extern "C" {

uint32_t vel_check_line_volume(vel_context *ctx, uint32_t obj, const char *word, uint32_t *line,
                               uint32_t *column, uint32_t *word_length)
{
    const vel_object &o = object(ctx, obj);
    if (*line > last_reachable_line) return 3;
    // Without text tables the line is measured as empty.
    const int64_t line_pixels =
        has_text_tables(ctx)
            ? text_width(ctx, o, line_at(ctx, text_number(ctx, o.text_index), *line))
            : 0;
    const int64_t word_pixels = text_width(ctx, o, word);
    // Signed 32-bit: a line_width above 2^31 (margins wider than the object)
    // leaves no room on any line.
    const int64_t free_pixels =
        static_cast<int32_t>(o.line_width - static_cast<uint32_t>(line_pixels));
    // Unsigned on purpose: at column 99 the difference wraps and counts as room.
    const uint32_t free_chars = 98u - *column;
    if (*word_length <= free_chars && word_pixels <= free_pixels) return 1;
    if (*word_length <= 98u && word_pixels <= static_cast<int64_t>(o.line_width)) return 2;
    return 3;
}

int32_t vel_copy_word_into_line(vel_context *ctx, uint32_t obj, const char *word, uint32_t *line,
                                uint32_t *column, uint32_t *word_length, uint32_t break_after)
{
    vel_object &o = object(ctx, obj);
    set_line_width_from_margins(o);
    // Without text tables there is no line to place the word in.
    if (!has_text_tables(ctx)) return 0;
    if (!placement_in_range(*line, *column, *word_length, 2)) return -1;

    const uint32_t t = text_number(ctx, o.text_index);
    const uint32_t fit = vel_check_line_volume(ctx, obj, word, line, column, word_length);
    if (fit == 3) return split_word(ctx, o, word, line, column, *word_length);
    if (fit == 2) {
        // No test for line 39: the word then lands in line slot 40.
        line_at(ctx, t, *line)[*column] = '\0';
        ++*line;
        *column = 0;
    }
    *column = copy_word_at(line_at(ctx, t, *line), *column, word, *word_length);
    if (break_after == 1 || *column >= last_column) {
        line_at(ctx, t, *line)[*column] = '\0';
        ++*line;
        *column = 0;
        line_at(ctx, t, *line)[0] = '\0';
    }
    return 0;
}

uint32_t vel_format_object_text(vel_context *ctx, uint32_t obj)
{
    return format_object_text(ctx, obj);
}

uint32_t vel_format_small_obj(vel_context *ctx, uint32_t obj)
{
    return format_caption(ctx, obj);
}

} // extern "C"
