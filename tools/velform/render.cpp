// Rendering: the form is compiled when it is TOML, loaded by vel_load_form,
// its windows opened by vel_select_window, and the screen written as PNG.
#include "render.hpp"

#include "binary_form.hpp"
#include "commands.hpp"
#include "png_writer.hpp"
#include "scratch_dir.hpp"
#include "velumo.h"

#include <SDL_ttf.h>

#include <algorithm>
#include <cstdlib>
#include <system_error>

namespace velform {

namespace {

namespace fs = std::filesystem;

// SDL, SDL_ttf and the library's context, set up like an application's and
// closed by vel_close, which also ends SDL.
class Display {
public:
    Display(const RenderOptions &options, std::string &error)
    {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        if (SDL_Init(SDL_INIT_VIDEO) != 0 || TTF_Init() != 0) {
            error = std::string("cannot start SDL: ") + SDL_GetError();
            return;
        }
        started_ = true;
        ctx_.screen = SDL_SetVideoMode(options.width, options.height, options.depth, SDL_SWSURFACE);
        // Opened here, not by TTF_OpenFont, which takes SDL's message about
        // a missing file for a format: a '%' in the path must stay a '%'.
        if (SDL_RWops *file = SDL_RWFromFile(options.font.c_str(), "rb"))
            ctx_.font = TTF_OpenFontRW(file, 1, options.font_size);
        if (!ctx_.screen || !ctx_.font) {
            error = ctx_.screen ? "cannot open the font '" + options.font.string() + "'"
                                : std::string("cannot open the screen: ") + SDL_GetError();
            return;
        }
        prepare_context(ctx_, options.width, options.height);
        SDL_FillRect(ctx_.screen, nullptr,
                     SDL_MapRGB(ctx_.screen->format, kBackground.r, kBackground.g, kBackground.b));
    }
    ~Display()
    {
        if (loaded_) {
            vel_close(&ctx_);
            return;
        }
        if (ctx_.font) TTF_CloseFont(ctx_.font);
        if (started_) {
            TTF_Quit();
            SDL_Quit();
        }
    }
    Display(const Display &) = delete;
    Display &operator=(const Display &) = delete;

    bool load(const fs::path &form, const fs::path &texts)
    {
        loaded_ = vel_load_form(&ctx_, 0, 0, form.c_str(), texts.c_str()) == 1;
        return loaded_;
    }
    vel_context &ctx() { return ctx_; }

private:
    vel_context ctx_{};
    bool started_ = false;
    bool loaded_ = false;
};

std::optional<uint32_t> object_number(const Form &form, const std::string &name)
{
    const auto found = std::find(form.names.begin(), form.names.end(), name);
    if (found != form.names.end()) return static_cast<uint32_t>(found - form.names.begin() + 1);
    char *end = nullptr;
    const unsigned long number = std::strtoul(name.c_str(), &end, 10);
    if (!name.empty() && *end == '\0' && number >= 1 && number <= form.object_count())
        return static_cast<uint32_t>(number);
    return std::nullopt;
}

} // namespace

void prepare_context(vel_context &ctx, int width, int height)
{
    ctx.screen_width = static_cast<uint32_t>(width);
    ctx.screen_height = static_cast<uint32_t>(height);
    ctx.screen_rect = SDL_Rect{0, 0, static_cast<Uint16>(width), static_cast<Uint16>(height)};
    ctx.background_colour = kBackground;
    ctx.mark_colour_a = {200, 40, 40};
    ctx.mark_colour_b = {40, 40, 200};
    ctx.scroll_step = 10;
    ctx.texts_loaded = 1;
}

int render_command(const RenderOptions &options, std::ostream &messages)
{
    Diagnostics d;
    if (options.depth != 8 && options.depth != 16 && options.depth != 32)
        d.error("--depth", std::to_string(options.depth) + " is not a depth; valid: 8, 16 or 32");
    if (options.width <= 0 || options.height <= 0 || options.width > 8192 || options.height > 8192)
        d.error("--size", "expected WIDTHxHEIGHT, each 1..8192");
    const ScratchDir scratch;
    fs::path form_file = options.form;
    fs::path text_file = options.texts.value_or(text_file_beside(options.form));
    const std::optional<Form> form =
        d.has_errors() ? std::nullopt : read_form(options.form, options.texts, std::nullopt, d);
    if (form && is_toml_form(options.form)) {
        std::string error;
        form_file = scratch.path() / "form";
        text_file = scratch.path() / "form.vtx";
        if (scratch.path().empty() || !write_binary_form(*form, form_file, error))
            d.error(options.form.string(), "cannot write the compiled form: " + error);
        form_file += ".vfm";
    }
    std::vector<uint32_t> windows;
    for (const std::string &name : options.open) {
        const std::optional<uint32_t> number = form ? object_number(*form, name) : std::nullopt;
        if (form && !number)
            d.error("--open", "no object is named '" + name + "'" +
                                  did_you_mean(name, std::vector<std::string_view>(
                                                         form->names.begin(), form->names.end())));
        if (number) windows.push_back(*number);
    }
    if (d.has_errors()) return d.report(messages);

    std::string error;
    Display display(options, error);
    if (error.empty() && !display.load(form_file, text_file)) error = "the library cannot load it";
    if (!error.empty()) {
        d.error(options.form.string(), error);
        return d.report(messages);
    }
    vel_context &ctx = display.ctx();
    vel_draw_all_objects(&ctx, 1, 0);
    for (uint32_t window : windows) {
        ctx.window_to_activate = window;
        vel_select_window(&ctx);
    }
    if (!write_png(options.output, ctx.screen, error)) d.error(options.output.string(), error);
    return d.report(messages);
}

} // namespace velform
