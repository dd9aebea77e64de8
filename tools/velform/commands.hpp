// The velform commands that need no display: compile, check and decompile,
// each printing its diagnostics and returning the process exit status.
#pragma once

#include "diagnostics.hpp"
#include "form.hpp"

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace velform {

// A form file is TOML when its name ends in .toml, else a binary form file.
bool is_toml_form(const std::filesystem::path &file);

// Reads either kind of form; `texts` names the text file of a binary form
// (default: beside it), `asset_dir` rewrites a TOML form's paths.
std::optional<Form> read_form(const std::filesystem::path &file,
                              const std::optional<std::filesystem::path> &texts,
                              const std::optional<std::string> &asset_dir,
                              Diagnostics &diagnostics);

struct CompileOptions {
    std::filesystem::path form;
    std::filesystem::path output; // OUT: writes OUT.vfm, OUT.vtx and OUT.h
    std::optional<std::string> prefix;
    std::optional<std::string> asset_dir;
};
int compile_command(const CompileOptions &options, std::ostream &messages);

int check_command(const std::vector<std::filesystem::path> &files,
                  const std::optional<std::filesystem::path> &texts, std::ostream &messages);

struct DecompileOptions {
    std::filesystem::path form;
    std::optional<std::filesystem::path> texts;
    std::filesystem::path output;
};
int decompile_command(const DecompileOptions &options, std::ostream &messages);

} // namespace velform
