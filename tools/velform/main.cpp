// velform: the command line of the form toolchain.  Parses the arguments
// and hands each subcommand to its function in velform_core or the renderer.
#include "commands.hpp"
#include "designer/designer.hpp"
#include "render.hpp"

#include <CLI/CLI.hpp>

#include <cstdlib>
#include <iostream>
#include <string>

namespace {

// "640x480" into width and height; CLI11 reports anything else.
template <typename Options> std::string parse_size(const std::string &text, Options &options)
{
    const auto x = text.find('x');
    try {
        if (x == std::string::npos) throw std::invalid_argument(text);
        options.width = std::stoi(text.substr(0, x));
        options.height = std::stoi(text.substr(x + 1));
    } catch (const std::exception &) {
        return "expected WIDTHxHEIGHT, for example 640x480";
    }
    return {};
}

} // namespace

int main(int argc, char **argv)
{
    CLI::App app{"velform: compile, check, decompile and render velumo forms.\n"
                 "A form is a TOML file (FORM.toml) or the library's binary pair FORM.vfm "
                 "(objects) and FORM.vtx (texts)."};
    app.require_subcommand(1);
    int status = 0;

    velform::CompileOptions compile;
    CLI::App *compile_app = app.add_subcommand(
        "compile", "Compile FORM.toml into OUT.vfm, OUT.vtx and the header OUT.h of object and "
                   "text numbers");
    compile_app->add_option("form", compile.form, "The TOML form")->required();
    compile_app->add_option("-o,--output", compile.output, "Output path without extension")
        ->required();
    compile_app->add_option("--prefix", compile.prefix,
                            "Macro prefix of the header (default: the form file's name up to its "
                            "first dot, in upper case)");
    compile_app->add_option("--asset-dir", compile.asset_dir,
                            "Directory written before relative font and picture paths, where "
                            "the application finds them at run time (default: the form's "
                            "asset_dir, else the form file's absolute directory; \"\" keeps them "
                            "relative to the working directory)");
    compile_app->callback([&] { status = velform::compile_command(compile, std::cerr); });

    std::vector<std::filesystem::path> check_files;
    std::optional<std::filesystem::path> check_texts;
    CLI::App *check_app = app.add_subcommand(
        "check", "Check TOML and binary forms and print every problem; exit status 1 on errors");
    check_app
        ->add_option("files", check_files,
                     "Forms: FORM.toml, or FORM.vfm with FORM.vtx "
                     "beside it")
        ->required();
    check_app->add_option("--texts", check_texts, "Text file of the binary forms");
    check_app->callback(
        [&] { status = velform::check_command(check_files, check_texts, std::cerr); });

    velform::DecompileOptions decompile;
    CLI::App *decompile_app = app.add_subcommand(
        "decompile", "Write a binary form as TOML with generated names; compiling it gives the "
                     "same binary files");
    decompile_app->add_option("form", decompile.form, "The form file FORM.vfm")->required();
    decompile_app->add_option("texts", decompile.texts,
                              "Its text file (default: FORM.vtx beside it)");
    decompile_app->add_option("-o,--output", decompile.output, "The TOML file to write")
        ->required();
    decompile_app->callback([&] { status = velform::decompile_command(decompile, std::cerr); });

    velform::RenderOptions render;
    std::string size = "640x480";
    CLI::App *render_app = app.add_subcommand(
        "render", "Load a form through the library without a display, open windows and save "
                  "the screen as PNG");
    render_app->add_option("form", render.form, "FORM.toml (compiled first) or FORM.vfm")
        ->required();
    render_app->add_option("--texts", render.texts, "Text file of a binary form");
    render_app->add_option("--open", render.open,
                           "Windows to open, in order, by name or object number");
    render_app->add_option("-o,--output", render.output, "The PNG file to write")->required();
    render_app->add_option("--size", size, "Screen size WIDTHxHEIGHT")->capture_default_str();
    render_app->add_option("--depth", render.depth, "Bits per pixel: 8, 16 or 32")
        ->capture_default_str();
    render_app->add_option("--font", render.font, "TrueType font of the objects with font_choice 0")
        ->capture_default_str();
    render_app->add_option("--font-size", render.font_size, "Its point size")
        ->capture_default_str();
    render_app->callback([&] {
        if (const std::string error = parse_size(size, render); !error.empty())
            throw CLI::ValidationError("--size", error);
        status = velform::render_command(render, std::cerr);
    });

    velform::designer::EditOptions edit;
    std::string edit_size = "1024x768";
    CLI::App *edit_app = app.add_subcommand(
        "edit", "Edit a TOML form in the visual designer (SDL's dummy driver without DISPLAY)");
    edit_app->add_option("form", edit.form, "The TOML form to edit and save")->required();
    edit_app->add_option("--size", edit_size, "Window size WIDTHxHEIGHT, at least 1024x768")
        ->capture_default_str();
    edit_app->footer("Mouse: click selects, drag moves, the eight handles resize, dropping an\n"
                     "object onto another makes it that one's dependent; a palette button and a\n"
                     "click on the canvas adds an object.  Keys: arrows move by 1 (Shift: 10),\n"
                     "Delete removes, Ctrl+Z undoes, Ctrl+Y redoes, Ctrl+S saves, F5 previews,\n"
                     "Ctrl+Q quits.  In a property field Enter applies, Escape keeps the value.");
    edit_app->callback([&] {
        if (const std::string error = parse_size(edit_size, edit); !error.empty())
            throw CLI::ValidationError("--size", error);
        const char *display = std::getenv("DISPLAY");
        edit.headless = !display || !*display;
        status = velform::designer::edit_command(edit, std::cerr);
    });

    CLI11_PARSE(app, argc, argv);
    return status;
}
