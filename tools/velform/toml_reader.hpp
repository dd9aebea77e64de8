// Reading a form written in TOML: every object and text by name, compiled
// into the library's records, with all problems reported at their place.
#pragma once

#include "diagnostics.hpp"
#include "form.hpp"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace velform {

// Reads and checks the form in `source`, which came from `file` (paths in
// it are relative to the file's directory).  Relative picture and font
// paths are written as `asset_dir`/path: the directory given here, else
// the form's own `asset_dir` key, else the form file's absolute directory;
// an empty asset_dir keeps them relative to the working directory.
// Returns nothing when there were errors.
std::optional<Form> read_toml_form(std::string_view source, const std::filesystem::path &file,
                                   const std::optional<std::string> &asset_dir,
                                   Diagnostics &diagnostics);

// The same for a file on disk.
std::optional<Form> read_toml_form(const std::filesystem::path &file,
                                   const std::optional<std::string> &asset_dir,
                                   Diagnostics &diagnostics);

} // namespace velform
