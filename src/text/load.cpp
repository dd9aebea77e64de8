// Puts new text into objects at run time, resets their text cursor, pads
// labels with fill characters and reads external streams for text chains.
#include "model/strings.hpp"
#include "text/formatting.hpp"
#include "text/line_breaking.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

using namespace velumo::detail;

extern "C" {

uint32_t vel_load_window_text(vel_context *ctx, uint32_t obj, const char *text)
{
    const vel_object &o = object(ctx, obj);
    // Without text tables there is no record to fill, not even record 0.
    if (!has_text_tables(ctx)) return format_object_text(ctx, obj);
    const uint32_t t = text_number(ctx, o.text_index);
    // Only the lines the previous text used; the formatter clears the rest.
    const uint32_t last_used = std::min(o.number_of_lines, last_reachable_line);
    for (uint32_t n = 0; n <= last_used; ++n)
        line_at(ctx, t, n)[0] = '\0';

    char *record = record_text(ctx, t);
    if (std::strlen(text) < VEL_TEXT_BYTES) {
        copy_string(text, record);
    } else {
        std::memcpy(record, text, VEL_TEXT_BYTES - 1);
        record[VEL_TEXT_BYTES - 1] = '\0';
    }
    return format_object_text(ctx, obj);
}

uint32_t vel_load_window_text_buttons(vel_context *ctx, uint32_t obj, const char *text,
                                      uint32_t button_a, uint32_t button_b)
{
    vel_load_window_text(ctx, obj, text);
    format_caption(ctx, button_a);
    return format_caption(ctx, button_b);
}

void vel_reset_textobject(vel_context *ctx, uint32_t mode, uint32_t obj)
{
    vel_object &o = object(ctx, obj);
    if (mode == 0) {
        o.text_length = string_length(o.label);
    } else if (mode == 1 && has_text_tables(ctx)) {
        vel_text_rec &record = text_record(ctx, o);
        o.text_length = string_length(record.text);
        record.cursor_index = 0;
    } else if (mode == 1) {
        o.text_length = 0;
    }
    o.cursor_column = 0;
    o.cursor_line = 0;
    o.cursor_x = o.x + o.margin_left;
    o.cursor_y = o.y + o.margin_top;
}

uint32_t vel_fill_form_with_dummies(vel_context *ctx, const char *string, uint32_t obj,
                                    uint32_t field_length, char fill_char)
{
    const uint32_t length = string_length(string);
    if (length >= field_length) return length;
    // The label holds 67 characters; a wider field is not padded.
    if (field_length >= VEL_STRING_BYTES) return 0;

    vel_object &o = object(ctx, obj);
    const uint32_t pad = field_length - length;
    o.label[field_length] = '\0';
    // Backwards, so the overlapping move never reads a moved character.
    for (uint32_t k = length; k-- > 0;)
        o.label[pad + k] = o.label[k];
    std::fill(o.label, o.label + pad, fill_char);
    o.text_length = field_length;
    return field_length;
}

char *vel_read_external_stream(const char *path)
{
    std::FILE *file = std::fopen(path, "r+b");
    if (!file) return nullptr;
    std::fseek(file, 0, SEEK_END);
    const long size = std::ftell(file);
    std::fclose(file);
    if (size < 0) return nullptr;

    const auto bytes = static_cast<std::size_t>(size);
    // One byte more than the file, set to NUL, ends a stream without one.
    auto *buffer = static_cast<char *>(std::malloc(bytes + 1));
    if (!buffer) {
        std::fprintf(stderr, "velumo: out of memory reading %zu bytes of '%s'\n", bytes, path);
        return nullptr;
    }
    const int fd = ::open(path, O_RDONLY);
    if (fd < 0) {
        std::free(buffer);
        return nullptr;
    }
    std::size_t got = 0;
    while (got < bytes) {
        const ssize_t n = ::read(fd, buffer + got, bytes - got);
        if (n <= 0) break;
        got += static_cast<std::size_t>(n);
    }
    ::close(fd);
    // A file that shrank meanwhile ends where reading ended.
    buffer[got] = '\0';
    return buffer;
}

} // extern "C"
