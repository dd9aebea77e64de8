// The C header that goes with a compiled form: a macro for every object and
// text number, so that application code names objects instead of numbering.
#pragma once

#include "form.hpp"

#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>

namespace velform {

// The macro prefix a form file gives: its name up to the first dot, upper
// case, other characters than letters and digits as _ ("notes.form.toml"
// gives NOTES).
std::string default_prefix(const std::filesystem::path &form_file);

// Writes PREFIX_NAME for every object, PREFIX_TEXT_NAME for every text,
// and PREFIX_OBJECT_COUNT and PREFIX_TEXT_COUNT.
void write_header(const Form &form, std::string_view prefix, std::string_view origin,
                  std::ostream &out);

} // namespace velform
