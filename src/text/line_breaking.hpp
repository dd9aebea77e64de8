// Line-breaking machinery shared by the object formatter and the chained flow:
// limits, the word buffer, measuring, the space rule and the character walk.
#pragma once

#include "model/tables.hpp"

#include <cstdint>

namespace velumo::detail {

inline constexpr uint32_t max_word_chars = VEL_WORD_CHARS; // longer runs are cut into pieces
// Line slots 40..79 of buffer t are the lines of buffer t + 1.  The block of
// line buffers keeps one spare buffer behind its last one, so any slot up to
// 79 stays inside the allocation whatever t is; no walk goes further.
inline constexpr uint32_t last_reachable_line = 2 * VEL_MAX_LINES - 1;

// Line, column and word length that callers hand to the exported placement
// routines.  A routine may move on `lines_ahead` lines by itself and copies
// the word behind the column; every byte it writes must stay inside line
// slots 0..79.  Anything further is refused.
constexpr bool placement_in_range(uint32_t line, uint32_t column, uint32_t word_length,
                                  uint32_t lines_ahead)
{
    const uint64_t furthest =
        (uint64_t{line} + lines_ahead) * VEL_LINE_BYTES + column + uint64_t{word_length} + 1;
    return column <= last_column && furthest < uint64_t{last_reachable_line + 1} * VEL_LINE_BYTES;
}

// The word being collected: at most 70 characters, always NUL-terminated.
// `length` is handed by address to the placement routines.
struct WordBuffer {
    char chars[max_word_chars + 1] = {};
    uint32_t length = 0;

    bool empty() const { return length == 0; }
    bool full() const { return length == max_word_chars; }
    void clear()
    {
        length = 0;
        chars[0] = '\0';
    }
    void append(char ch)
    {
        chars[length++] = ch;
        chars[length] = '\0';
    }
};

// Where a walk writes and what it has collected.
struct WalkState {
    uint32_t text_index = 0;
    uint32_t line = 0;
    uint32_t column = 0;
    WordBuffer word;
    bool in_spaces = false;
    bool finished = false;

    char *current_line(vel_context *ctx) const { return line_at(ctx, text_index, line); }
};

// NUL, line feed and space separate words; every other byte belongs to one.
constexpr bool is_word_char(char ch)
{
    return ch != '\0' && ch != '\n' && ch != ' ';
}

// The three lower-case umlauts of the DOS code pages become their ISO 8859-1
// bytes when the context asks for it; nothing else is translated.
char translate_umlaut(const vel_context *ctx, char ch);

// A line_width of 0 stands for "not set yet".  Placing a single word sets it
// to the object's width inside its margins ...
void set_line_width_from_margins(vel_object &o);

// ... formatting a whole text or stream to the width between the limits of
// the object's text area.
void set_line_width_from_text_area(vel_context *ctx, uint32_t obj);

// Pixel width of a string in the object's font; 0 when the object has no font.
int text_width(vel_context *ctx, const vel_object &measured_by, const char *text);

// True when the string is wider than the object's line_width.
bool wider_than_line(vel_context *ctx, const vel_object &measured_by, const char *text);

// Copies `count` characters of `word` into the line from `column` on, with a
// NUL behind each; returns the column behind the last one.
uint32_t copy_word_at(char *line, uint32_t column, const char *word, uint32_t count);

// Puts one character at the column (NUL behind) and measures the whole line.
// A character that makes the line too wide is taken off again (NUL at the
// column) and false is returned; the column itself is not moved.
bool try_char(vel_context *ctx, const vel_object &measured_by, char *line, uint32_t column,
              char ch);

// Makes the current line a single space with the column behind it.
void start_line_with_space(vel_context *ctx, WalkState &s);

// Spaces are kept in the lines.  The space is appended at the column unless it
// makes the line too wide or meets the end of the line; then it starts the
// next line instead.  Returns true when that next line would be past line 39:
// the caller stops there or moves on.  Further down the space is dropped.
bool append_space(vel_context *ctx, const vel_object &measured_by, WalkState &s);

// The walk over a text, its terminating NUL included, shared by the formatter
// and the chained flow.  Spaces and word characters are handled here; the
// flow decides what the end of the text, a line feed, a word ended by a space,
// a space past the last line and a full line do, and places the words.
//
// Flow interface:
//   bool more() const;                    keep walking
//   const vel_object &measured_by() const; font and line_width for spaces
//   void end_of_text();
//   void line_feed();
//   void word_before_space();             a space ends a non-empty word
//   bool drops_space() const;             a space here is not kept at all
//   void space_past_last_line();
//   int32_t place_full_word();            70 characters held, a 71st comes
//   void line_full();                     the column reached the end of the line
// Steps run in this order for every character; one character may pass
// several (a first space ends the word and is then appended).  The flow's
// `more` is consulted only between characters.
template <class Flow>
void walk_text(vel_context *ctx, Flow &flow, WalkState &s, const char *text, uint32_t length)
{
    for (uint32_t i = 0; i <= length && flow.more(); ++i) {
        const char ch = i < length ? text[i] : '\0';
        if (ch == '\0') flow.end_of_text();
        if (ch == '\n') flow.line_feed();
        if (ch == ' ' && !s.in_spaces) {
            s.in_spaces = true;
            if (!s.word.empty()) flow.word_before_space();
        }
        if (ch == ' ' && !flow.drops_space() && append_space(ctx, flow.measured_by(), s))
            flow.space_past_last_line();
        if (is_word_char(ch)) {
            s.in_spaces = false;
            const char translated = translate_umlaut(ctx, ch);
            if (s.word.full()) {
                flow.place_full_word(); // a piece of a long run; the next piece follows anyway
                s.word.clear();
                s.word.append(translated);
                s.current_line(ctx)[s.column] = '\0';
            } else {
                s.word.append(translated);
            }
        }
        if (s.column >= last_column) flow.line_full();
    }
}

} // namespace velumo::detail
