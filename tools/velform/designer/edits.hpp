// The designer's changes to a form model: adding, removing, moving, resizing,
// re-parenting and setting fields, each judged by the toolchain's own checks.
#pragma once

#include "form.hpp"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace velform::designer {

// The first error the TOML reader and checker find in `form` as the
// designer would save it beside `file`, or "" when it would load cleanly.
std::string first_error(const Form &form, const std::filesystem::path &file);

// `form` with relative picture and font paths made absolute against the
// directory of `file`, as `velform render` and compiled forms see them.
Form with_resolved_paths(const Form &form, const std::filesystem::path &file);

// `number` and every object below it, depth first, `number` first.
std::vector<uint32_t> subtree(const Form &form, uint32_t number);

// Each of these returns "" when done, else why the change is refused.

// Appends a new object of the type `word` with its corner at (x, y) as the
// last dependent of `master` (0: top level); `added` gets its number.
std::string add_object(Form &form, std::string_view word, uint32_t master, uint32_t x, uint32_t y,
                       uint32_t &added, const std::filesystem::path &file);

// Removes `number` and its subtree, renumbering the objects behind them.
std::string remove_object(Form &form, uint32_t number, const std::filesystem::path &file);

// Moves `number` and its subtree by (dx, dy), stopping at the screen's
// top and left edges.
void move_object(Form &form, uint32_t number, int dx, int dy);

// Makes `number` the last dependent of `master` (0: top level).
std::string reparent(Form &form, uint32_t number, uint32_t master,
                     const std::filesystem::path &file);

// Sets the key of the readable format (a field, `name` or `text`) to the
// value as typed; a value the TOML reader refuses is refused with its
// message.
std::string set_property(Form &form, uint32_t number, std::string_view key, std::string_view value,
                         const std::filesystem::path &file);

// The value of a key as the property panel shows it.
std::string property(const Form &form, uint32_t number, std::string_view key);

} // namespace velform::designer
