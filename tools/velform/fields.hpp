// The readable format's keys for the fields of an object record: one table,
// read by the TOML reader and the writer alike, in the order the writer uses.
#pragma once

#include "velumo.h"

#include <array>
#include <span>
#include <string_view>

namespace velform {

// How a key's value is written: a number, a flag (true/false or a number),
// a word from a list or a number, a colour, or a string.
enum class FieldKind { Number, Flag, Choice, Colour, String };

using NumberField = uint32_t vel_object_file_rec::*;
using StringField = char (vel_object_file_rec::*)[sizeof(vel_object_file_rec::label)];

struct FieldSpec {
    std::string_view key;
    FieldKind kind;
    NumberField number = nullptr; // the field, or red of a colour
    NumberField green = nullptr;
    NumberField blue = nullptr;
    StringField string = nullptr;
    std::span<const std::string_view> words = {}; // word k means value k
    std::string_view what = {};                   // what the words name, for messages
};

// Words of the choice fields; values from the last word on all mean what
// the last word says, and any number is accepted.
inline constexpr std::array<std::string_view, 10> kTypeWords{
    "empty", "window", "label", "text",  "picture",
    "entry", "number", "menu",  "chain", "picture_loaded"};
inline constexpr std::array<std::string_view, 3> kFontChoiceWords{"default", "own", "none"};
inline constexpr std::array<std::string_view, 3> kWindowKindWords{"full", "reduced", "keep"};
inline constexpr std::array<std::string_view, 6> kBorderStyleWords{
    "none", "frame", "fitted", "fitted_frame", "shadow", "fitted_shadow"};
inline constexpr std::array<std::string_view, 3> kClipModeWords{"margins", "frame", "none"};

constexpr FieldSpec number(std::string_view key, NumberField field)
{
    return {key, FieldKind::Number, field};
}
constexpr FieldSpec flag(std::string_view key, NumberField field)
{
    return {key, FieldKind::Flag, field};
}
constexpr FieldSpec choice(std::string_view key, NumberField field,
                           std::span<const std::string_view> words, std::string_view what)
{
    return {key, FieldKind::Choice, field, nullptr, nullptr, nullptr, words, what};
}
constexpr FieldSpec colour(std::string_view key, NumberField r, NumberField g, NumberField b)
{
    return {key, FieldKind::Colour, r, g, b};
}
constexpr FieldSpec string(std::string_view key, StringField field)
{
    return {key, FieldKind::String, nullptr, nullptr, nullptr, field};
}

using R = vel_object_file_rec;
inline constexpr std::array kFields{
    choice("type", &R::type, kTypeWords, "type"),
    number("x", &R::x),
    number("y", &R::y),
    number("width", &R::width),
    number("height", &R::height),
    colour("fill", &R::fill_r, &R::fill_g, &R::fill_b),
    string("label", &R::label),
    choice("font_choice", &R::font_choice, kFontChoiceWords, "font choice"),
    number("font_size", &R::font_size),
    string("font_path", &R::font_path),
    colour("text_colour", &R::text_r, &R::text_g, &R::text_b),
    number("margin_left", &R::margin_left),
    number("margin_right", &R::margin_right),
    number("margin_top", &R::margin_top),
    number("margin_bottom", &R::margin_bottom),
    flag("centred", &R::centred),
    number("line_width", &R::line_width),
    number("line_spacing", &R::line_spacing),
    flag("hidden", &R::hidden),
    choice("window_kind", &R::window_kind, kWindowKindWords, "window kind"),
    flag("editable", &R::editable),
    number("text_length", &R::text_length),
    number("max_chars", &R::max_chars),
    choice("border_style", &R::border_style, kBorderStyleWords, "border style"),
    number("border_inset", &R::border_inset),
    colour("border_colour", &R::border_r, &R::border_g, &R::border_b),
    number("scroll_max_x", &R::scroll_max_x),
    number("scroll_max_y", &R::scroll_max_y),
    string("image_path", &R::image_path),
    choice("clip_mode", &R::clip_mode, kClipModeWords, "clip mode"),
};

// Keys of an object table that name other objects and texts rather than
// hold a field: the object's own name, its text, its dependents and an
// explicit master.
inline constexpr std::array<std::string_view, 4> kReferenceKeys{"name", "text", "children",
                                                                "master"};

// Keys of the form file itself.
inline constexpr std::array<std::string_view, 4> kFormKeys{"asset_dir", "frame_button", "object",
                                                           "texts"};

// Keys of a text given as a table.
inline constexpr std::array<std::string_view, 2> kTextKeys{"text", "cursor_index"};

} // namespace velform
