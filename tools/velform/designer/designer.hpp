// velform edit: the visual designer.  The user's form is drawn by the library
// on the canvas, the designer's own panels are a second velumo form beside it.
#pragma once

#include "designer/history.hpp"
#include "form.hpp"
#include "scratch_dir.hpp"
#include "velumo.h"

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

namespace velform::designer {

struct EditOptions {
    std::filesystem::path form;
    int width = 1024;
    int height = 768;
    bool headless = false; // SDL's dummy driver instead of a window
};

// Owns SDL, the screen and the font that both contexts draw with.
class Display {
public:
    explicit Display(const EditOptions &options);
    ~Display();
    Display(const Display &) = delete;
    Display &operator=(const Display &) = delete;
    SDL_Surface *screen() const { return screen_; }
    TTF_Font *font() const { return font_; }

private:
    SDL_Surface *screen_ = nullptr;
    TTF_Font *font_ = nullptr;
};

// A context drawing on the shared display; it owns only its loaded form.
class FormContext {
public:
    FormContext(const Display &display, int width, int height);
    ~FormContext();
    FormContext(const FormContext &) = delete;
    FormContext &operator=(const FormContext &) = delete;
    bool load(const std::filesystem::path &form, const std::filesystem::path &texts);
    void unload();
    vel_context ctx{};
};

class Designer {
public:
    // Opens the display and the form; throws std::runtime_error with the
    // reason when either is impossible.
    explicit Designer(const EditOptions &options);

    void run();  // until the user quits
    void pump(); // every event already queued
    void handle(const SDL_Event &event);

    bool running() const { return running_; }
    bool previewing() const { return previewing_; }
    bool modified() const { return history_.modified(); }
    const Form &form() const { return history_.current(); }
    uint32_t selected() const { return selected_; }
    const std::string &status() const { return status_; }
    SDL_Surface *screen() const { return display_.screen(); }
    int canvas_width() const { return canvas_width_; }
    // Where the panels show things, for scripted sessions.
    SDL_Rect palette_button(std::string_view word) const;
    SDL_Rect property_field(std::string_view key) const;
    SDL_Rect tree_row(uint32_t object) const; // empty when not listed

private:
    struct Drag {
        uint32_t object;
        int handle; // -1: the body moves
        int start_x, start_y;
        int x, y;
        SDL_Rect from;
    };

    void load_canvas();
    void load_panels();
    void redraw();
    void draw_selection();
    void refresh_panels();
    void refresh_tree();
    void say(std::string message);

    void edit_press(int x, int y);
    void edit_release(int x, int y);
    void panel_release(int x, int y);
    void edit_key(const SDL_KeyboardEvent &key);
    void field_key(const SDL_Event &event);
    void preview_event(const SDL_Event &event);
    bool shortcut(const SDL_KeyboardEvent &key);

    template <typename Edit> void change(Edit edit, const std::string &done);
    void select(uint32_t object);
    void focus_field(uint32_t field);
    void apply_field();
    void delete_selection();
    void save();
    void quit();
    bool ask(const std::string &question);
    void toggle_preview();

    uint32_t canvas_hit(int x, int y);
    SDL_Rect drawn_rect(uint32_t object) const;
    SDL_Rect dragged_rect(const Drag &drag) const;
    uint32_t top_of(uint32_t object) const;

    std::filesystem::path file_;
    int width_, height_, canvas_width_;
    Display display_;
    FormContext canvas_;
    FormContext panels_;
    ScratchDir scratch_;
    History history_;
    uint32_t selected_ = 0;
    uint32_t shown_ = 0; // the window or menu opened on the canvas
    std::string armed_;  // the palette's type word waiting for a click
    std::optional<Drag> drag_;
    std::vector<uint32_t> tree_objects_; // the object in each tree row
    bool previewing_ = false;
    bool running_ = true;
    bool format_panels_ = true;
    std::string status_;
};

// velform edit FORM.toml: runs the designer; the exit status.
int edit_command(const EditOptions &options, std::ostream &messages);

} // namespace velform::designer
