// The demo application: the sample form driven the way an application drives
// velumo.  Headless it runs a scripted tour; with --interactive, a real window.
#include "sample_form.hpp"
#include "velumo.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <memory>
#include <string>

namespace {

using namespace velumo::sample;

constexpr int kWidth = 640;
constexpr int kHeight = 480;
constexpr const char *kFontPath = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

bool open_display(vel_context &ctx, bool interactive)
{
    if (!interactive) setenv("SDL_VIDEODRIVER", "dummy", 1);
    if (SDL_Init(SDL_INIT_VIDEO) != 0 || TTF_Init() != 0) {
        std::fprintf(stderr, "velumo_demo: cannot start SDL: %s\n", SDL_GetError());
        return false;
    }
    SDL_WM_SetCaption("velumo demo", nullptr);
    // Headless, SDL would paint its software mouse pointer into the picture.
    if (!interactive) SDL_ShowCursor(SDL_DISABLE);
    ctx.screen = SDL_SetVideoMode(kWidth, kHeight, 32, SDL_SWSURFACE);
    ctx.font = TTF_OpenFont(kFontPath, 13);
    if (!ctx.screen || !ctx.font) {
        std::fprintf(stderr, "velumo_demo: no screen or font: %s\n", SDL_GetError());
        return false;
    }
    ctx.screen_width = kWidth;
    ctx.screen_height = kHeight;
    ctx.screen_rect = SDL_Rect{0, 0, kWidth, kHeight};
    ctx.background_colour = {250, 250, 250};
    ctx.mark_colour_a = {200, 40, 40};
    ctx.mark_colour_b = {40, 40, 200};
    ctx.scroll_step = 10;
    ctx.texts_loaded = 1;
    SDL_FillRect(ctx.screen, nullptr, SDL_MapRGB(ctx.screen->format, 250, 250, 250));
    return true;
}

void push_key(SDLKey sym, SDLMod mod = KMOD_NONE)
{
    SDL_Event event{};
    event.key.type = SDL_KEYDOWN;
    event.key.state = SDL_PRESSED;
    event.key.keysym.sym = sym;
    event.key.keysym.mod = mod;
    SDL_PushEvent(&event);
    event.key.type = SDL_KEYUP;
    event.key.state = SDL_RELEASED;
    SDL_PushEvent(&event);
}

void push_release(int x, int y)
{
    SDL_Event event{};
    event.button.type = SDL_MOUSEBUTTONUP;
    event.button.button = SDL_BUTTON_LEFT;
    event.button.state = SDL_RELEASED;
    event.button.x = static_cast<Uint16>(x);
    event.button.y = static_cast<Uint16>(y);
    SDL_PushEvent(&event);
}

// A point inside an object, away from its one-pixel frame.
void push_release_on(const vel_context &ctx, uint32_t obj)
{
    const vel_object &o = ctx.objects[obj];
    push_release(static_cast<int>(o.x + o.width / 2), static_cast<int>(o.y + o.height / 2));
}

void select(vel_context &ctx, uint32_t obj)
{
    ctx.window_to_activate = obj;
    vel_select_window(&ctx);
}

// Types `text` (lower-case letters, digits and spaces) through the key
// table, as a user would while the selection loop waits for OK.
void type_and_confirm(vel_context &ctx, const char *text)
{
    for (const char *c = text; *c; ++c) {
        const bool upper = *c >= 'A' && *c <= 'Z';
        const char key = upper ? static_cast<char>(*c - 'A' + 'a') : *c;
        push_key(static_cast<SDLKey>(key), upper ? KMOD_LSHIFT : KMOD_NONE);
    }
    push_release_on(ctx, kOkButton);
    vel_get_mouse_selection(&ctx, kOkButton, kOkButton);
}

void tour(vel_context &ctx)
{
    select(ctx, kMainWindow);
    std::printf("opened window %u; frame buttons above it, cursor in object %u\n",
                ctx.active_window, ctx.cursor_object);

    select(ctx, kNameField);
    for (int i = 0; i < 4; ++i)
        push_key(SDLK_RIGHT);
    type_and_confirm(ctx, " Ada");
    std::printf("typed into the name field: \"%s\"\n", ctx.objects[kNameField].label);

    select(ctx, kSettingsWindow);
    select(ctx, kThirdWindow);
    select(ctx, kMainWindow);
    std::printf("window stack, front first:");
    for (uint32_t i = 0; i < ctx.window_count; ++i)
        std::printf(" %u", ctx.window_stack[i]);
    std::printf("\n");

    SDL_WarpMouse(40, 10);
    SDL_WarpMouse(40, 36);
    push_release(40, 36);
    const uint32_t choice = vel_move_out_menu(&ctx, kMenu, 1);
    std::printf("menu entry chosen: %u (%s)\n", choice, ctx.objects[choice].label);

    vel_draw_all_objects(&ctx, 1, 1);
    SDL_SaveBMP(ctx.screen, "velumo_demo.bmp");
    std::printf("scene saved as velumo_demo.bmp\n");
}

// What an application's own event loop does: frame buttons get both button
// events, other objects are selected on release, keys go to the editor.
void interactive(vel_context &ctx)
{
    select(ctx, kMainWindow);
    for (bool running = true; running;) {
        SDL_Event event;
        if (SDL_WaitEvent(&event) == 0) break;
        ctx.event = event;
        const bool left = event.button.button == SDL_BUTTON_LEFT;
        switch (event.type) {
        case SDL_QUIT: running = false; break;
        case SDL_KEYDOWN: vel_getfirstkeyinformation(&ctx); break;
        case SDL_KEYUP:
            vel_getfinalkeyinformation(&ctx);
            vel_get_text(&ctx);
            break;
        case SDL_MOUSEBUTTONDOWN: {
            if (!left) break;
            const uint32_t hit = vel_test_all_objects(&ctx, event.button.x, event.button.y);
            if (hit >= 1 && hit <= 7) {
                ctx.window_to_activate = hit;
                vel_exa_left_pressed(&ctx);
            } else if (hit == kMenuTitle) {
                const uint32_t choice = vel_move_out_menu(&ctx, kMenu, 1);
                vel_draw_all_objects(&ctx, 0, 1);
                running = choice != kMenuQuit;
            }
            break;
        }
        case SDL_MOUSEBUTTONUP: {
            if (!left) break;
            const uint32_t hit = vel_test_all_objects(&ctx, event.button.x, event.button.y);
            if (hit >= 1 && hit <= 7) {
                ctx.window_to_activate = hit;
                vel_exa_left_released(&ctx);
            } else if (hit == kOkButton) {
                running = false;
            } else if (hit != 0) {
                select(ctx, hit);
            }
            break;
        }
        default: break;
        }
    }
}

} // namespace

int main(int argc, char **argv)
{
    const bool wants_window = argc > 1 && std::strcmp(argv[1], "--interactive") == 0;
    const bool interactive_mode = wants_window && std::getenv("DISPLAY") != nullptr;
    if (wants_window && !interactive_mode)
        std::printf("no display: running the scripted tour instead\n");

    const std::string form_path = write_sample_form("");
    auto ctx = std::make_unique<vel_context>();
    if (!open_display(*ctx, interactive_mode)) return 1;
    if (vel_load_form(ctx.get(), 10, 10, form_path.c_str(), kTextFile) != 1) return 1;
    std::printf("loaded %s: %u objects, %u texts\n", form_path.c_str(), ctx->object_count,
                ctx->text_count);

    std::string stream = kChainStream;
    ctx->objects[kChainHead].stream = stream.data();
    if (interactive_mode)
        interactive(*ctx);
    else
        tour(*ctx);
    ctx->objects[kChainHead].stream = nullptr;
    vel_close(ctx.get());
    return 0;
}
