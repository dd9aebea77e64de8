// Writing a form as TOML: the decompiler's output, and the format a visual
// designer saves; reading it back gives the same records.
#pragma once

#include "form.hpp"

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

namespace velform {

// Writes `form` with its names; `origin` goes into the opening comment.
// Keys at their default are left out; relative paths get `asset_dir = ""`
// so that they stay as they are.
void write_toml_form(const Form &form, std::string_view origin, std::ostream &out);

// A TOML basic string holding the Latin-1 `text`, quoted and escaped;
// multi-line keeps line ends as they are.
std::string toml_string(std::string_view latin1, bool multi_line = false);

// A colour of components up to 255 as "#rrggbb".
std::string hex_colour(uint32_t r, uint32_t g, uint32_t b);

} // namespace velform
