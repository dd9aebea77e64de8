// The text editor: applies one delivered key to the text of the cursor
// object, moves and scrolls its text cursor, and redraws the active window.
#include "input/text_access.hpp"
#include "layout/geometry.hpp"
#include "model/tables.hpp"
#include "render/render.hpp"
#include "text/formatting.hpp"

#include <algorithm>
#include <string>

namespace {

using velumo::detail::as_signed;
using velumo::detail::FormattedLines;
using velumo::detail::Limits;
using velumo::detail::object;
using velumo::detail::text_number;
using velumo::detail::TextField;

enum EditKey : uint32_t {
    key_backspace = SDLK_BACKSPACE,
    key_delete = SDLK_DELETE,
    key_enter = SDLK_KP_ENTER,
    key_up = SDLK_UP,
    key_down = SDLK_DOWN,
    key_right = SDLK_RIGHT,
    key_left = SDLK_LEFT,
    key_insert = SDLK_INSERT,
};

using velumo::detail::last_column;
using velumo::detail::last_line;

constexpr uint32_t one_line_limit = VEL_ENTRY_CHARS; // characters of an entry field
constexpr uint32_t text_limit = VEL_TEXT_BYTES - 1;  // characters of a multi-line text
constexpr uint32_t highest_character = 255;

class Editor {
public:
    Editor(vel_context *ctx, uint32_t obj, TextField text, bool multi_line);
    void apply(uint32_t key);

private:
    uint32_t &cursor_index() const { return velumo::detail::text_record(ctx_, o_).cursor_index; }
    bool overwriting() const { return ctx_->insert_mode != 0; }

    int32_t measure(uint32_t last_char) const;
    uint32_t x_after(uint32_t last_char) const;
    uint32_t x_before_cursor() const;
    void show_line_below(uint32_t line);
    void show_column(uint32_t x, uint32_t scroll_delta);
    void reformat() { velumo::detail::format_object_text(ctx_, obj_); }

    void enter();
    void vertical_move(bool upward);
    void right();
    void left();
    void backspace();
    void erase();
    bool has_room() const;
    void type(char ch);

    vel_context *ctx_;
    uint32_t obj_;
    vel_object &o_;
    TextField text_;
    bool multi_line_;
    FormattedLines lines_;
    TTF_Font *font_;
    uint32_t font_height_ = 0;
    uint32_t pitch_ = 0;
    Limits limits_;
    uint32_t origin_x_ = 0, origin_y_ = 0;
};

Editor::Editor(vel_context *ctx, uint32_t obj, TextField text, bool multi_line)
    : ctx_(ctx), obj_(obj), o_(object(ctx, obj)), text_(text), multi_line_(multi_line),
      lines_(ctx, text_number(ctx, o_.text_index)), font_(velumo::detail::object_font(ctx, o_))
{
    o_.text_length = text_.length();
    if (font_) font_height_ = static_cast<uint32_t>(TTF_FontHeight(font_));
    pitch_ = font_height_ + o_.line_spacing;
    limits_ = velumo::detail::text_limits(ctx_, obj_);
    origin_x_ = static_cast<uint32_t>(limits_.left) + o_.scroll_x + 1;
    origin_y_ = static_cast<uint32_t>(limits_.top) + o_.scroll_y + 1;
}

// Width of characters 0..last_char of the cursor's line (the label of a
// one-line field), in the object's font; 0 without a font.
int32_t Editor::measure(uint32_t last_char) const
{
    if (!font_) return 0;
    const std::string_view line = multi_line_ ? lines_.line(o_.cursor_line) : text_.text();
    const std::string prefix(line.substr(0, std::min<std::size_t>(last_char + 1ULL, line.size())));
    int width = 0, height = 0;
    TTF_SizeText(font_, prefix.c_str(), &width, &height);
    return width;
}

uint32_t Editor::x_after(uint32_t last_char) const
{
    return origin_x_ + static_cast<uint32_t>(measure(last_char));
}

// Just behind the character before the cursor, at the origin in column 0.
uint32_t Editor::x_before_cursor() const
{
    return o_.cursor_column != 0 ? x_after(o_.cursor_column - 1) : origin_x_;
}

// Shows the cursor on `line` when the line fits above the bottom of the
// text area; otherwise scrolls the text up one line and leaves the cursor
// where it was drawn.
void Editor::show_line_below(uint32_t line)
{
    const uint32_t y = origin_y_ + line * pitch_;
    if (as_signed(y + font_height_ - 1) < limits_.bottom)
        o_.cursor_y = y;
    else
        o_.scroll_y -= pitch_;
}

// Puts the cursor at x when that lies right of the text area's left limit;
// otherwise shifts the text sideways by scroll_delta instead.
void Editor::show_column(uint32_t x, uint32_t scroll_delta)
{
    if (as_signed(x) > limits_.left)
        o_.cursor_x = x;
    else
        o_.scroll_x += scroll_delta;
}

void Editor::apply(uint32_t key)
{
    switch (key) {
    case key_enter: enter(); break;
    case key_up: vertical_move(true); break;
    case key_down: vertical_move(false); break;
    case key_right: right(); break;
    case key_left: left(); break;
    case key_insert: ctx_->insert_mode = 1 - ctx_->insert_mode; break;
    case key_backspace: backspace(); break;
    case key_delete: erase(); break;
    default: break;
    }
    // Tested on its own: a key is typed whenever it is marked printable.
    if (key <= highest_character && ctx_->key_printable == 1) type(static_cast<char>(key));
}

void Editor::enter()
{
    if (!multi_line_ || o_.number_of_lines >= last_line || o_.cursor_line >= last_line ||
        o_.text_length >= text_limit)
        return;
    uint32_t &index = cursor_index();
    text_.shift_right(index, o_.text_length);
    text_.put(index, '\n');
    ++o_.text_length;
    ++index;
    if (index == o_.text_length) text_.put(index, '\0');
    reformat();
    ++o_.cursor_line;
    o_.cursor_column = 0;
    vel_get_position_in_stream(ctx_);
    const uint32_t x = origin_x_;
    show_column(x, o_.cursor_x - x);
    show_line_below(o_.cursor_line);
}

// Up and Down measure characters 0..column, one more than the column: the
// cursor is drawn one character right of it until the next Right.
void Editor::vertical_move(bool upward)
{
    if (!multi_line_) return;
    if (upward && o_.cursor_line == 0) return;
    if (!upward && (o_.cursor_line >= last_line || o_.cursor_line >= o_.number_of_lines)) return;
    o_.cursor_line = upward ? o_.cursor_line - 1 : o_.cursor_line + 1;
    const auto length = static_cast<uint32_t>(lines_.line(o_.cursor_line).size());
    const uint32_t last_char = length == 0 ? 0 : length - 1;
    o_.cursor_column = std::min(o_.cursor_column, last_char);
    vel_get_position_in_stream(ctx_);
    const uint32_t x = o_.cursor_column != 0 ? x_after(o_.cursor_column) : o_.x + o_.margin_left;
    show_column(x, x - o_.cursor_x);
    if (!upward) {
        show_line_below(o_.cursor_line);
        return;
    }
    const uint32_t y = origin_y_ + o_.cursor_line * pitch_;
    if (as_signed(y) < limits_.top)
        o_.scroll_y += pitch_;
    else
        o_.cursor_y = y;
}

void Editor::right()
{
    bool moves = false;
    if (!multi_line_) {
        moves = o_.cursor_column < o_.text_length;
    } else {
        const char here = lines_.at(o_.cursor_line, o_.cursor_column);
        const char next = lines_.at(o_.cursor_line, o_.cursor_column + 1);
        if (here != '\0' && next != '\0') {
            moves = true;
        } else if (here != '\0') {
            moves = o_.cursor_column < last_column && cursor_index() < text_limit;
        } else if (o_.cursor_column != 0 && o_.cursor_line < last_line &&
                   o_.cursor_line < o_.number_of_lines) {
            ++o_.cursor_line;
            o_.cursor_column = 0;
            const uint32_t x = o_.x + o_.margin_left;
            ++cursor_index();
            show_column(x, x - o_.cursor_x);
            show_line_below(o_.cursor_line);
        }
    }
    if (!moves) return;
    // Right never scrolls: past the right edge the cursor runs on unseen.
    const uint32_t x = x_after(o_.cursor_column);
    if (as_signed(x) < limits_.right) o_.cursor_x = x;
    ++o_.cursor_column;
    if (multi_line_) ++cursor_index();
}

// Left stays on its line: at column 0 it does nothing.
void Editor::left()
{
    if (o_.cursor_column == 0) return;
    const uint32_t x = o_.cursor_column > 1 ? x_after(o_.cursor_column - 2) : origin_x_;
    show_column(x, o_.cursor_x - x);
    --o_.cursor_column;
    if (multi_line_) --cursor_index();
}

// In a multi-line text, Backspace at column 0 joins the line to the one above.
void Editor::backspace()
{
    if (!multi_line_) {
        if (o_.cursor_column == 0 || o_.cursor_column > o_.text_length) return;
        text_.shift_left(o_.cursor_column, o_.text_length);
        --o_.cursor_column;
        --o_.text_length;
    } else {
        uint32_t &index = cursor_index();
        if (index == 0 || index > o_.text_length) return;
        text_.shift_left(index, o_.text_length);
        --index;
        --o_.text_length;
        reformat();
        vel_get_column_row(ctx_);
    }
    const uint32_t x = x_before_cursor();
    if (!multi_line_ && as_signed(o_.scroll_x) < 0) {
        // A field scrolled left comes back towards its start, never past it.
        o_.scroll_x += o_.cursor_x - x;
        if (as_signed(o_.scroll_x) > 0) o_.scroll_x = 0;
    } else if (limits_.left < as_signed(x) && as_signed(x) < limits_.right) {
        o_.cursor_x = x;
    }
    show_line_below(o_.cursor_line);
}

void Editor::erase()
{
    const uint32_t at = multi_line_ ? cursor_index() : o_.cursor_column;
    if (at > o_.text_length || text_.at(at) == '\0') return;
    text_.shift_left(at + 1, o_.text_length);
    --o_.text_length;
    if (multi_line_) {
        reformat();
        vel_get_column_row(ctx_);
    }
    const uint32_t x = x_before_cursor();
    show_column(x, o_.cursor_x - x);
    show_line_below(o_.cursor_line);
}

// The limits compare unsigned, so in overwrite mode a max_chars of 0 sets
// none.  A multi-line text also needs its cursor index below 999, which
// keeps the last byte of the text record its terminator.
bool Editor::has_room() const
{
    const uint32_t column = o_.cursor_column;
    const uint32_t column_limit = o_.max_chars - 1;
    if (multi_line_) {
        if (o_.cursor_line > last_line || cursor_index() >= text_limit) return false;
        if (overwriting()) return column <= last_column && column <= column_limit;
        return column < last_column && o_.text_length < text_limit;
    }
    if (overwriting()) return column < one_line_limit && column <= column_limit;
    return o_.max_chars != 0 && column < one_line_limit && column <= column_limit &&
           o_.text_length < one_line_limit && o_.text_length <= column_limit;
}

void Editor::type(char ch)
{
    if (!has_room()) return;
    bool line_changed = false;
    if (multi_line_) {
        uint32_t &index = cursor_index();
        if (!overwriting()) {
            text_.shift_right(index, o_.text_length);
            ++o_.text_length;
            text_.put(o_.text_length, '\0');
        }
        text_.put(index, ch);
        ++index;
        const uint32_t line_before = o_.cursor_line;
        reformat();
        vel_get_column_row(ctx_);
        line_changed = o_.cursor_line != line_before;
        // A full line that the text did not wrap yet: the cursor moves on
        // by itself, except on the last line.
        if (!line_changed && o_.cursor_column == last_column) {
            if (o_.cursor_line < last_line) {
                if (o_.cursor_line == o_.number_of_lines) {
                    lines_.clear(o_.cursor_line, last_column);
                    lines_.clear(o_.cursor_line + 1, 0);
                }
                ++o_.cursor_line;
                o_.cursor_column = 0;
                line_changed = true;
            } else if (o_.cursor_line == last_line) {
                lines_.clear(last_line, last_column);
                line_changed = true;
            }
        }
    } else {
        // Overwriting the last character also appends it once more.
        if (o_.cursor_column < o_.text_length) {
            if (!overwriting()) {
                text_.shift_right(o_.cursor_column, o_.text_length - 1);
                ++o_.text_length;
                text_.put(o_.text_length, '\0');
            }
            text_.put(o_.cursor_column, ch);
            ++o_.cursor_column;
        }
        if (o_.cursor_column == o_.text_length) {
            text_.put(o_.cursor_column, ch);
            ++o_.text_length;
            ++o_.cursor_column;
            text_.put(o_.text_length, '\0');
        }
    }
    if (line_changed) show_line_below(o_.cursor_line);

    // Typing scrolls the text sideways to keep the cursor inside the area.
    const uint32_t x = x_before_cursor();
    if (limits_.left < as_signed(x) && as_signed(x) < limits_.right)
        o_.cursor_x = x;
    else if (as_signed(x) >= limits_.right)
        o_.scroll_x -= x - o_.cursor_x;
    else
        o_.scroll_x += x - o_.cursor_x;

    // Overwriting at the end of a text: the terminator goes to the cursor's
    // column, not its index.
    if (multi_line_ && cursor_index() > o_.text_length) {
        text_.put(o_.cursor_column, '\0');
        ++o_.text_length;
    }
}

} // namespace

extern "C" {

void vel_get_text(vel_context *ctx)
{
    const uint32_t key = ctx->final_key;
    const uint32_t target = velumo::detail::cursor_object(ctx);
    if (key == 0 || target == 0) return;
    vel_object &o = object(ctx, target);
    switch (o.type) {
    case VEL_TYPE_ENTRY:
    case VEL_TYPE_NUMERIC_ENTRY:
        Editor(ctx, target, TextField(o.label, VEL_STRING_BYTES), false).apply(key);
        break;
    case VEL_TYPE_TEXT:
    case VEL_TYPE_WINDOW:
        if (!velumo::detail::has_text_tables(ctx)) return;
        Editor(ctx, target, TextField(velumo::detail::text_record(ctx, o).text, VEL_TEXT_BYTES),
               true)
            .apply(key);
        break;
    default: return;
    }
    ctx->final_key = 0;
    ctx->key_printable = 0;
    velumo::detail::draw_and_show_active_window(ctx);
}

} // extern "C"
