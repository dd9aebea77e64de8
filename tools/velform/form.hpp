// The form model shared by every velform command: object and text records as
// the library's files hold them, with the names the readable format gives them.
#pragma once

#include "velumo.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velform {

inline constexpr std::size_t kStringBytes = sizeof(vel_object_file_rec::label);
inline constexpr std::size_t kMaxStringLength = kStringBytes - 1;
inline constexpr std::size_t kTextBytes = sizeof(vel_text_rec::text);
inline constexpr std::size_t kMaxTextLength = kTextBytes - 1;
inline constexpr std::size_t kMaxDependents = VEL_MAX_DEPENDENTS;
inline constexpr std::size_t kFrameButtons = VEL_FRAME_BUTTONS;
inline constexpr uint32_t kFirstFormObject = VEL_FRAME_BUTTONS + 1;

// A form: objects[k] is object k + 1 and texts[k] text record k + 1, each
// with its name from names[k] and text_names[k].
struct Form {
    std::vector<vel_object_file_rec> objects;
    std::vector<std::string> names;
    std::vector<vel_text_rec> texts;
    std::vector<std::string> text_names;

    uint32_t object_count() const { return static_cast<uint32_t>(objects.size()); }
    uint32_t text_count() const { return static_cast<uint32_t>(texts.size()); }
    vel_object_file_rec &object(uint32_t number) { return objects[number - 1]; }
    const vel_object_file_rec &object(uint32_t number) const { return objects[number - 1]; }
};

// The seven frame buttons a form gets when it names none: 16 x 16 labels,
// framed, whose one-character captions show what they do in resize mode.
inline constexpr std::array<std::string_view, kFrameButtons> kFrameButtonNames{
    "frame_move",     "frame_shorter", "frame_taller", "frame_mode",
    "frame_narrower", "frame_wider",   "frame_close"};
vel_object_file_rec standard_frame_button(std::size_t index);

// The text of a string field, up to its NUL (or the whole field).
template <std::size_t N> std::string_view field_text(const char (&field)[N])
{
    std::size_t length = 0;
    while (length < N && field[length] != '\0')
        ++length;
    return {field, length};
}
template <std::size_t N> void set_field_text(char (&field)[N], std::string_view text)
{
    std::fill(field, field + N, '\0');
    text.copy(field, std::min(text.size(), N - 1));
}

// The dependents the library walks: dep_objs up to the first 0.
std::vector<uint32_t> listed_dependents(const vel_object_file_rec &object);

// text_length when the form does not say: the characters of the object's
// text record, or of its label.
uint32_t derived_text_length(const Form &form, const vel_object_file_rec &object);

// Which path fields the library opens for an object.
bool opens_image(const vel_object_file_rec &object);
bool opens_font(const vel_object_file_rec &object);

// The record with what the library never reads cleared: reserved words and
// the bytes after each string's NUL.  Such a record survives decompiling.
vel_object_file_rec without_unread_bytes(const vel_object_file_rec &object);
vel_text_rec without_unread_bytes(const vel_text_rec &text);

// The form file and text file bytes.
std::vector<uint8_t> object_file_bytes(const Form &form);
std::vector<uint8_t> text_file_bytes(const Form &form);

// A C identifier: what names must be, as they become header macros.
bool is_identifier(std::string_view name);

} // namespace velform
