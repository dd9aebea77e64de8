// The library's two binary files, a form file of object records and a text
// file of text records: reading them with their checks, and writing them.
#pragma once

#include "diagnostics.hpp"
#include "form.hpp"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>

namespace velform {

// The text file that goes with a form file when none is named: the same
// path with the extension .vtx.
std::filesystem::path text_file_beside(const std::filesystem::path &form_file);

// Reads and checks a form file and its text file (beside it unless named);
// names the objects after their type and number and the texts text_1,
// text_2, ...  Returns nothing when there were errors.
std::optional<Form> read_binary_form(const std::filesystem::path &form_file,
                                     const std::optional<std::filesystem::path> &text_file,
                                     Diagnostics &diagnostics);

// The same on bytes in memory; `form_name` and `text_name` stand in the
// messages.  A null `texts` means no text file exists.
std::optional<Form> read_binary_form(std::span<const uint8_t> form_bytes,
                                     const std::optional<std::span<const uint8_t>> &text_bytes,
                                     const std::string &form_name, const std::string &text_name,
                                     Diagnostics &diagnostics);

// Writes `stem`.vfm and `stem`.vtx; false with `error` set when it cannot.
bool write_binary_form(const Form &form, const std::filesystem::path &stem, std::string &error);

// The name a generated object gets: the frame buttons' own names, else its
// type word and number ("window_8").
std::string generated_object_name(uint32_t number, uint32_t type);

} // namespace velform
