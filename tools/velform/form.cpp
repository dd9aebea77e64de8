// The form model's shared rules: standard frame buttons, derived defaults,
// which fields the library reads, and the bytes of the two files.
#include "form.hpp"

#include <algorithm>
#include <cstring>

namespace velform {

namespace {

constexpr std::array<std::string_view, kFrameButtons> kFrameButtonCaptions{"+", "^", "v", "~",
                                                                           "<", ">", "x"};

template <typename Record> void append_bytes(std::vector<uint8_t> &out, const Record &record)
{
    const auto *bytes = reinterpret_cast<const uint8_t *>(&record);
    out.insert(out.end(), bytes, bytes + sizeof record);
}

template <std::size_t N> void clear_after_nul(char (&field)[N])
{
    const std::size_t length = field_text(field).size();
    std::fill(field + std::min(length + 1, N), field + N, '\0');
}

} // namespace

vel_object_file_rec standard_frame_button(std::size_t index)
{
    vel_object_file_rec button{};
    button.width = button.height = 16;
    button.type = VEL_TYPE_LABEL;
    button.hidden = 1;
    button.fill_r = 200;
    button.fill_g = 200;
    button.fill_b = 220;
    // A margin of 1 puts the frame on the outermost pixels, so erasing the
    // button erases its frame too.
    button.margin_left = button.margin_right = button.margin_top = button.margin_bottom = 1;
    button.border_style = 1;
    button.border_r = 40;
    button.border_g = 40;
    button.border_b = 60;
    set_field_text(button.label, kFrameButtonCaptions[index]);
    button.text_length = 1;
    return button;
}

std::vector<uint32_t> listed_dependents(const vel_object_file_rec &object)
{
    std::vector<uint32_t> dependents;
    for (uint32_t d : object.dep_objs) {
        if (d == 0) break;
        dependents.push_back(d);
    }
    return dependents;
}

uint32_t derived_text_length(const Form &form, const vel_object_file_rec &object)
{
    if (object.text_index != 0 && object.text_index <= form.text_count())
        return static_cast<uint32_t>(field_text(form.texts[object.text_index - 1].text).size());
    return static_cast<uint32_t>(field_text(object.label).size());
}

bool opens_image(const vel_object_file_rec &object)
{
    return object.type == VEL_TYPE_PICTURE_FILE;
}

bool opens_font(const vel_object_file_rec &object)
{
    return object.font_choice == 1;
}

vel_object_file_rec without_unread_bytes(const vel_object_file_rec &object)
{
    vel_object_file_rec clean = object;
    clean.reserved_number_of_lines = clean.reserved_220 = 0;
    clean.reserved_cursor_x = clean.reserved_cursor_y = 0;
    clean.reserved_cursor_line = clean.reserved_cursor_column = 0;
    clean.reserved_scroll_x = clean.reserved_scroll_y = 0;
    clear_after_nul(clean.label);
    clear_after_nul(clean.font_path);
    clear_after_nul(clean.image_path);
    return clean;
}

vel_text_rec without_unread_bytes(const vel_text_rec &text)
{
    vel_text_rec clean = text;
    clean.reserved = 0;
    clear_after_nul(clean.text);
    return clean;
}

std::vector<uint8_t> object_file_bytes(const Form &form)
{
    std::vector<uint8_t> bytes;
    for (const vel_object_file_rec &object : form.objects)
        append_bytes(bytes, object);
    return bytes;
}

std::vector<uint8_t> text_file_bytes(const Form &form)
{
    std::vector<uint8_t> bytes;
    for (const vel_text_rec &text : form.texts)
        append_bytes(bytes, text);
    return bytes;
}

bool is_identifier(std::string_view name)
{
    const auto word_char = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '_';
    };
    return !name.empty() && !(name[0] >= '0' && name[0] <= '9') &&
           std::all_of(name.begin(), name.end(), word_char);
}

} // namespace velform
