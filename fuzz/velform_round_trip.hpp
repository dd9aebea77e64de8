// The check both velform fuzz targets end with: a form written as TOML and
// read back must give the same records, or the harness aborts.
#pragma once

#include "toml_reader.hpp"
#include "toml_writer.hpp"

#include <cstdlib>
#include <optional>
#include <sstream>

namespace velform::fuzz {

// Where fuzz inputs pretend to lie: relative paths are looked for below it.
inline constexpr const char *kFormFile = "/tmp/velform-fuzz/form.toml";

inline void require_round_trip(const Form &form, const char *written_from)
{
    std::ostringstream written;
    write_toml_form(form, written_from, written);
    Diagnostics again;
    const std::optional<Form> back = read_toml_form(written.str(), kFormFile, std::nullopt, again);
    if (!back || object_file_bytes(*back) != object_file_bytes(form) ||
        text_file_bytes(*back) != text_file_bytes(form))
        std::abort();
}

} // namespace velform::fuzz
