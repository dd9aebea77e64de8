// The demo application: writes the sample form, loads it, draws the whole
// scene into velumo_demo.bmp and prints what it loaded.
#include "sample_form.hpp"
#include "velumo.h"

#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <string>

namespace {

const char *type_name(uint32_t type)
{
    static constexpr const char *names[] = {"empty",        "window", "label",         "text",
                                            "picture file", "entry",  "numeric entry", "menu",
                                            "chain",        "picture"};
    return type < std::size(names) ? names[type] : "unknown";
}

void print_objects(const vel_context &ctx)
{
    std::printf("%u objects, %u texts\n", ctx.object_count, ctx.text_count);
    for (uint32_t k = 1; k <= ctx.object_count; ++k) {
        const vel_object &o = ctx.objects[k];
        std::printf("%3u %-13s at (%u, %u) %u x %u master %u", k, type_name(o.type), o.x, o.y,
                    o.width, o.height, o.master);
        if (o.label[0] != '\0') std::printf(" label \"%s\"", o.label);
        if (o.text_index != 0 && ctx.text_recs[o.text_index].text[0] != '\0')
            std::printf(" text \"%.40s\"", ctx.text_recs[o.text_index].text);
        std::printf("\n");
    }
}

} // namespace

int main()
{
    using namespace velumo::sample;
    const std::string form_path = write_sample_form("");

    // Headless unless the user has a display and asks for it.
    if (!std::getenv("SDL_VIDEODRIVER")) setenv("SDL_VIDEODRIVER", "dummy", 1);
    if (SDL_Init(SDL_INIT_VIDEO) != 0 || TTF_Init() != 0) {
        std::fprintf(stderr, "velumo_demo: cannot start SDL: %s\n", SDL_GetError());
        return 1;
    }
    auto ctx = std::make_unique<vel_context>();
    ctx->screen = SDL_SetVideoMode(640, 480, 32, SDL_SWSURFACE);
    ctx->font = TTF_OpenFont("/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", 13);
    if (!ctx->screen || !ctx->font) {
        std::fprintf(stderr, "velumo_demo: no screen or font: %s\n", SDL_GetError());
        return 1;
    }
    ctx->screen_width = 640;
    ctx->screen_height = 480;
    ctx->screen_rect = SDL_Rect{0, 0, 640, 480};
    ctx->background_colour = {250, 250, 250};
    ctx->mark_colour_a = {200, 40, 40};
    ctx->mark_colour_b = {40, 40, 200};
    ctx->scroll_step = 10;
    ctx->texts_loaded = 1;
    if (vel_load_form(ctx.get(), 10, 10, form_path.c_str(), kTextFile) != 1) return 1;

    std::string stream = kChainStream;
    ctx->objects[kChainHead].stream = stream.data();
    const uint32_t stack[] = {kMainWindow, kSettingsWindow, kThirdWindow};
    for (uint32_t i = 0; i < std::size(stack); ++i)
        ctx->window_stack[i] = stack[i];
    ctx->window_count = std::size(stack);
    ctx->active_window = kMainWindow;
    ctx->cursor_object = kNameField;

    SDL_FillRect(ctx->screen, nullptr, SDL_MapRGB(ctx->screen->format, 250, 250, 250));
    vel_draw_all_objects(ctx.get(), 1, 1);
    SDL_SaveBMP(ctx->screen, "velumo_demo.bmp");
    print_objects(*ctx);
    std::printf("scene drawn into velumo_demo.bmp\n");
    ctx->objects[kChainHead].stream = nullptr;
    vel_close(ctx.get());
    return 0;
}
