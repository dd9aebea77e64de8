// compile, check and decompile: reading, checking and writing forms, with
// every problem reported before the exit status says whether any was an error.
#include "commands.hpp"

#include "binary_form.hpp"
#include "header_writer.hpp"
#include "toml_reader.hpp"
#include "toml_writer.hpp"

#include <fstream>
#include <system_error>

namespace velform {

namespace fs = std::filesystem;

bool is_toml_form(const fs::path &file)
{
    return file.extension() == ".toml";
}

std::optional<Form> read_form(const fs::path &file, const std::optional<fs::path> &texts,
                              const std::optional<std::string> &asset_dir, Diagnostics &d)
{
    if (is_toml_form(file)) return read_toml_form(file, asset_dir, d);
    return read_binary_form(file, texts, d);
}

namespace {

template <typename Write> bool write_file(const fs::path &path, Write write, Diagnostics &d)
{
    std::ofstream out(path, std::ios::trunc);
    write(out);
    if (out.flush()) return true;
    d.error(path.string(), "cannot write this file");
    return false;
}

} // namespace

int compile_command(const CompileOptions &options, std::ostream &messages)
{
    Diagnostics d;
    if (!is_toml_form(options.form))
        d.error(options.form.string(), "compile reads a TOML form (FORM.toml)");
    const std::optional<Form> form =
        d.has_errors() ? std::nullopt : read_toml_form(options.form, options.asset_dir, d);
    if (!form) return d.report(messages);
    std::error_code ignored;
    if (options.output.has_parent_path())
        fs::create_directories(options.output.parent_path(), ignored);
    std::string error;
    if (!write_binary_form(*form, options.output, error)) d.error(options.output.string(), error);
    fs::path header = options.output;
    header += ".h";
    const std::string prefix = options.prefix.value_or(default_prefix(options.form));
    write_file(
        header,
        [&](std::ostream &out) {
            write_header(*form, prefix, options.form.filename().string(), out);
        },
        d);
    return d.report(messages);
}

int check_command(const std::vector<fs::path> &files, const std::optional<fs::path> &texts,
                  std::ostream &messages)
{
    Diagnostics d;
    for (const fs::path &file : files)
        read_form(file, texts, std::nullopt, d);
    return d.report(messages);
}

int decompile_command(const DecompileOptions &options, std::ostream &messages)
{
    Diagnostics d;
    const std::optional<Form> form = read_binary_form(options.form, options.texts, d);
    if (form)
        write_file(
            options.output,
            [&](std::ostream &out) {
                write_toml_form(*form, options.form.filename().string(), out);
            },
            d);
    return d.report(messages);
}

} // namespace velform
