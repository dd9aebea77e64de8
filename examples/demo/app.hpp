// The demo application: its display, its form and the event handling that
// turns clicks, menu choices and keys into actions, one printed line each.
#pragma once

#include "velumo.h"

#include <memory>
#include <string>

namespace demo {

inline constexpr int kScreenWidth = 800;
inline constexpr int kScreenHeight = 600;

// Owns the context from SDL_Init to vel_close, so every way out of the
// constructor or the program releases the display and the form.
class Session {
public:
    Session() = default;
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;
    vel_context ctx{};
};

class App {
public:
    // Opens the display (SDL's dummy driver when headless), loads the form
    // and the story, and shows the newspaper with the notes in front.
    // Throws std::runtime_error with the reason when anything is missing.
    explicit App(bool headless);
    ~App();
    App(const App &) = delete;
    App &operator=(const App &) = delete;

    // Waits for events and handles them until the user quits.
    void run();
    // Everything the program does with one event, in a window or on tour.
    void handle(const SDL_Event &event);
    bool running() const { return running_; }
    vel_context &context() { return session_->ctx; }

private:
    void pressed(uint32_t hit);
    void released(uint32_t hit);
    void key_released();
    void open_menu(uint32_t title, uint32_t menu);
    void choose(uint32_t entry);
    void press_frame_button(uint32_t button);
    void release_frame_button(uint32_t button);
    bool act_on(uint32_t hit);
    void select(uint32_t hit);
    void open_window(uint32_t window);
    void close_window(uint32_t window);
    void ask_quit();
    void show_files();
    void choose_file(uint32_t row);
    void load_chosen_file(uint32_t target);
    void flow_story(std::string text);
    void redraw();

    std::unique_ptr<Session> session_;
    vel_context &ctx_;
    bool running_ = true;
    // The object under the last left press of this loop: a click acts only
    // when the release lands on it too (menus and moves take their own).
    uint32_t pressed_object_ = 0;
    uint32_t chosen_row_ = 0;
    std::string chosen_path_;
    // The newspaper's text: the chain head points into it.
    std::string story_;
};

} // namespace demo
