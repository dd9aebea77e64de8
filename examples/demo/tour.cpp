// The scripted tour: each step queues SDL events and lets the application
// handle them (modal loops take theirs from the same queue), then saves the
// screen as a PNG file.
#include "tour.hpp"

#include "demo.h"
#include "png_writer.hpp"

#include <cstdio>
#include <cstring>
#include <string>

namespace demo {

namespace {

class Tour {
public:
    Tour(App &app, const std::filesystem::path &directory)
        : app_(app), ctx_(app.context()), directory_(directory)
    {
    }

    // False once a picture could not be written.
    bool ok() const { return ok_; }

    void picture(const char *name)
    {
        char file[64];
        std::snprintf(file, sizeof file, "%02d-%s.png", ++step_, name);
        const std::filesystem::path path = directory_ / file;
        std::string error;
        if (!velform::write_png(path, ctx_.screen, error)) {
            std::fprintf(stderr, "velumo-demo: %s\n", error.c_str());
            ok_ = false;
            return;
        }
        std::printf("picture: %s\n", path.c_str());
        std::fflush(stdout);
    }

    // A click: press and release in the middle of an object.
    void click(uint32_t object)
    {
        const auto [x, y] = centre(object);
        push_button(SDL_MOUSEBUTTONDOWN, x, y);
        push_button(SDL_MOUSEBUTTONUP, x, y);
        handle_queue();
    }

    void click_at(int x, int y)
    {
        push_button(SDL_MOUSEBUTTONDOWN, x, y);
        push_button(SDL_MOUSEBUTTONUP, x, y);
        handle_queue();
    }

    // Clicks on frame button 1, then where the window's corner goes.
    void move_active_window(int x, int y)
    {
        const auto [bx, by] = centre(DEMO_FRAME_MOVE);
        push_button(SDL_MOUSEBUTTONDOWN, bx, by);
        push_button(SDL_MOUSEBUTTONUP, bx, by);
        click_at(x, y);
    }

    // Presses a menu title, slides to the entry and releases there.  A
    // dialog that the entry opens reads its answer, a button, from the
    // queue behind.
    void choose(uint32_t title, uint32_t entry, uint32_t answer = 0)
    {
        const auto [tx, ty] = centre(title);
        const auto [ex, ey] = centre(entry);
        push_button(SDL_MOUSEBUTTONDOWN, tx, ty);
        SDL_WarpMouse(static_cast<Uint16>(ex), static_cast<Uint16>(ey));
        push_button(SDL_MOUSEBUTTONUP, ex, ey);
        if (answer != 0) {
            const auto [ax, ay] = centre(answer);
            push_button(SDL_MOUSEBUTTONUP, ax, ay);
        }
        handle_queue();
    }

    // The menu as it looks while the button is held on its title.
    void picture_of_menu(uint32_t menu, const char *name)
    {
        ctx_.objects[menu].hidden = 0;
        vel_evoke_object(&ctx_, menu);
        vel_draw_dep_objs(&ctx_, menu);
        picture(name);
        ctx_.objects[menu].hidden = 1;
        vel_draw_all_objects(&ctx_, 0, 1);
    }

    // Types Latin-1 text; capitals are typed with Shift, as on a keyboard.
    void type(const char *latin1)
    {
        for (const unsigned char *c = reinterpret_cast<const unsigned char *>(latin1); *c; ++c) {
            const bool capital = (*c >= 'A' && *c <= 'Z') || (*c >= 0xC0 && *c <= 0xDE);
            const unsigned key = capital ? *c + 0x20u : *c;
            push_key(static_cast<SDLKey>(key), capital ? KMOD_LSHIFT : KMOD_NONE);
        }
        handle_queue();
    }

    // A file of the listing by its name.
    uint32_t row_named(const char *name) const
    {
        for (uint32_t row = DEMO_FILE_ROW; row <= DEMO_FILE_ROW_15; ++row)
            if (std::strcmp(ctx_.objects[row].label, name) == 0) return row;
        return 0;
    }

private:
    std::pair<int, int> centre(uint32_t object) const
    {
        const vel_object &o = ctx_.objects[object];
        return {static_cast<int>(o.x + o.width / 2), static_cast<int>(o.y + o.height / 2)};
    }

    static void push_button(Uint8 type, int x, int y)
    {
        SDL_Event event{};
        event.button.type = type;
        event.button.button = SDL_BUTTON_LEFT;
        event.button.state = type == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
        event.button.x = static_cast<Uint16>(x);
        event.button.y = static_cast<Uint16>(y);
        SDL_PushEvent(&event);
    }

    static void push_key(SDLKey sym, SDLMod mod)
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

    void handle_queue()
    {
        SDL_Event event;
        while (app_.running() && SDL_PollEvent(&event))
            app_.handle(event);
    }

    App &app_;
    vel_context &ctx_;
    std::filesystem::path directory_;
    int step_ = 0;
    bool ok_ = true;
};

} // namespace

bool run_tour(App &app, const std::filesystem::path &directory)
{
    Tour tour(app, directory);
    tour.picture("start");

    tour.picture_of_menu(DEMO_WINDOW_MENU, "window-menu");
    tour.choose(DEMO_WINDOW_TITLE, DEMO_MENU_NEWSPAPER);
    tour.picture("newspaper");

    tour.choose(DEMO_WINDOW_TITLE, DEMO_MENU_NOTES);
    tour.click(DEMO_NAME_FIELD);
    tour.type("B\xE4r Gr\xFC\xDF"
              "e");
    tour.click(DEMO_NUMBER_FIELD);
    tour.type("7");
    tour.click(DEMO_NOTES_TEXT);
    tour.type("Hello! ");
    tour.picture("notes-typed");

    tour.click(DEMO_FRAME_MODE);
    tour.click(DEMO_FRAME_SHORTER);
    tour.click(DEMO_FRAME_SHORTER);
    tour.click(DEMO_FRAME_NARROWER);
    tour.picture("notes-scrolled");
    tour.click(DEMO_FRAME_MODE);
    for (int i = 0; i < 12; ++i)
        tour.click(DEMO_FRAME_WIDER);
    for (int i = 0; i < 5; ++i)
        tour.click(DEMO_FRAME_TALLER);
    tour.picture("notes-resized");
    tour.move_active_window(120, 160);
    tour.picture("notes-moved");

    tour.choose(DEMO_FILE_TITLE, DEMO_MENU_OPEN);
    tour.click(tour.row_named("letter.txt"));
    tour.picture("files");
    tour.click(DEMO_LOAD_NOTES);
    tour.picture("letter-in-notes");
    tour.click(DEMO_FRAME_CLOSE);
    tour.picture("notes-closed");

    tour.choose(DEMO_FILE_TITLE, DEMO_MENU_ABOUT, DEMO_ABOUT_OK);
    tour.choose(DEMO_FILE_TITLE, DEMO_MENU_QUIT, DEMO_QUIT_NO);
    tour.picture("quit-declined");
    tour.choose(DEMO_FILE_TITLE, DEMO_MENU_QUIT, DEMO_QUIT_YES);
    return tour.ok() && !app.running();
}

} // namespace demo
