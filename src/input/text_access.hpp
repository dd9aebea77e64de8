// Bounded access to the text being edited and to its formatted lines: reads
// outside a field answer 0 and writes outside are dropped, whatever the keys.
#pragma once

#include "model/tables.hpp"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace velumo::detail {

// A NUL-terminated text in a fixed field: a label (68 bytes) or the text of
// a text record (1000 bytes).  The field's last byte is made and kept a
// terminator, so the text always ends inside its field.
class TextField {
public:
    TextField(char *data, uint32_t capacity) : data_(data), capacity_(capacity)
    {
        data_[capacity_ - 1] = '\0';
    }

    uint32_t length() const { return static_cast<uint32_t>(std::strlen(data_)); }
    char at(uint32_t i) const { return i < capacity_ ? data_[i] : '\0'; }
    void put(uint32_t i, char ch)
    {
        if (i < capacity_ - 1) data_[i] = ch;
    }
    std::string_view text() const { return data_; }

    // Moves characters first..last one place to the right (last goes to last + 1).
    void shift_right(uint32_t first, uint32_t last)
    {
        for (uint32_t i = std::min(last + 1, capacity_ - 1); i > first; --i)
            put(i, at(i - 1));
    }
    // Moves characters first..last one place to the left (first goes to first - 1).
    void shift_left(uint32_t first, uint32_t last)
    {
        for (uint32_t i = first; i <= std::min(last, capacity_ - 1); ++i)
            put(i - 1, at(i));
    }

private:
    char *data_;
    uint32_t capacity_;
};

// The formatted lines of one text buffer.  The formatter may step from line
// 39 into slot 40, which still lies inside the block of buffers; lines
// further on read as empty.
class FormattedLines {
public:
    static constexpr uint32_t last_slot = VEL_MAX_LINES;

    FormattedLines(vel_context *ctx, uint32_t text_index) : ctx_(ctx), text_index_(text_index) {}

    char at(uint32_t line, uint32_t column) const
    {
        if (line > last_slot || column >= VEL_LINE_BYTES) return '\0';
        return line_at(ctx_, text_index_, line)[column];
    }
    std::string_view line(uint32_t n) const
    {
        if (n > last_slot) return {};
        const char *start = line_at(ctx_, text_index_, n);
        return {start, ::strnlen(start, VEL_LINE_BYTES)};
    }
    void clear(uint32_t line, uint32_t column)
    {
        if (line < VEL_MAX_LINES && column < VEL_LINE_BYTES)
            line_at(ctx_, text_index_, line)[column] = '\0';
    }

private:
    vel_context *ctx_;
    uint32_t text_index_;
};

} // namespace velumo::detail
