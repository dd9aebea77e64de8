// The demo's event handling: hit testing, frame buttons, menus, dialogs,
// the file selector and the newspaper's text flow.
#include "app.hpp"

#include "demo.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string_view>

namespace demo {

namespace {

namespace fs = std::filesystem;

constexpr const char *kFontPath = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr vel_rgb kBackground{244, 244, 240};

struct Named {
    uint32_t object;
    const char *name;
};

// The names the action lines use.
constexpr Named kNames[] = {
    {DEMO_NOTES, "notes"},       {DEMO_NEWSPAPER, "newspaper"}, {DEMO_FILES, "files"},
    {DEMO_ABOUT, "about"},       {DEMO_QUIT, "quit"},           {DEMO_NOTES_TEXT, "notes text"},
    {DEMO_NAME_FIELD, "name"},   {DEMO_NUMBER_FIELD, "number"}, {DEMO_COLUMN_1, "column 1"},
    {DEMO_COLUMN_2, "column 2"}, {DEMO_COLUMN_3, "column 3"},
};

constexpr uint32_t kFileRows = DEMO_FILE_ROW_15 - DEMO_FILE_ROW + 1;
constexpr uint32_t kColumns[] = {DEMO_COLUMN_1, DEMO_COLUMN_2, DEMO_COLUMN_3};

std::string name_of(uint32_t object)
{
    for (const Named &named : kNames)
        if (named.object == object) return named.name;
    return "object " + std::to_string(object);
}

// The library keeps Latin-1; terminals expect UTF-8.
std::string utf8(std::string_view latin1)
{
    std::string out;
    for (unsigned char c : latin1) {
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else {
            out += static_cast<char>(0xC0 | c >> 6);
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

// One line per action, flushed at once for whoever reads the pipe.
template <typename... Args> void say(const char *format, Args... args)
{
    std::printf("action: ");
    std::printf(format, args...);
    std::printf("\n");
    std::fflush(stdout);
}

bool is_frame_button(uint32_t object)
{
    return object >= DEMO_FRAME_MOVE && object <= DEMO_FRAME_CLOSE;
}

// Buttons that act while held: resizing or scrolling by one step.
bool acts_on_press(uint32_t button)
{
    return button == DEMO_FRAME_SHORTER || button == DEMO_FRAME_TALLER ||
           button == DEMO_FRAME_NARROWER || button == DEMO_FRAME_WIDER;
}

const char *frame_action(uint32_t button, uint32_t frame_mode)
{
    const bool scrolling = frame_mode == 1;
    switch (button) {
    case DEMO_FRAME_SHORTER: return scrolling ? "scroll down" : "make shorter";
    case DEMO_FRAME_TALLER: return scrolling ? "scroll up" : "make taller";
    case DEMO_FRAME_NARROWER: return scrolling ? "scroll right" : "make narrower";
    default: return scrolling ? "scroll left" : "make wider";
    }
}

// Rows are white as in the form; the chosen one is marked.
constexpr vel_rgb kRowColour{255, 255, 255};
constexpr vel_rgb kChosenRow{200, 215, 245};

void paint_row(vel_context &ctx, uint32_t row, vel_rgb colour)
{
    ctx.objects[row].fill_r = colour.r;
    ctx.objects[row].fill_g = colour.g;
    ctx.objects[row].fill_b = colour.b;
}

// Line `line` of a column's line buffer.
char *column_line(vel_context &ctx, uint32_t column, uint32_t line)
{
    return ctx.text_bufs + ctx.objects[column].text_index * VEL_LINE_BUFFER_BYTES +
           line * VEL_LINE_BYTES;
}

std::string read_file(const fs::path &path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) return {};
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void open_display(vel_context &ctx, bool headless)
{
    if (headless) setenv("SDL_VIDEODRIVER", "dummy", 1);
    if (SDL_Init(SDL_INIT_VIDEO) != 0 || TTF_Init() != 0)
        throw std::runtime_error(std::string("cannot start SDL: ") + SDL_GetError());
    // SDL turns Ctrl+C into a quit event that the library's loops never
    // take; the default action ends the program at once.
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    SDL_WM_SetCaption("velumo demo", nullptr);
    // SDL would draw its own pointer into the tour's pictures.
    if (headless) SDL_ShowCursor(SDL_DISABLE);
    ctx.screen = SDL_SetVideoMode(kScreenWidth, kScreenHeight, 32, SDL_SWSURFACE);
    if (!ctx.screen) throw std::runtime_error(std::string("no video mode: ") + SDL_GetError());
    ctx.font = TTF_OpenFont(kFontPath, 12);
    if (!ctx.font) throw std::runtime_error(std::string("no font: ") + SDL_GetError());
    ctx.screen_width = kScreenWidth;
    ctx.screen_height = kScreenHeight;
    ctx.screen_rect = SDL_Rect{0, 0, kScreenWidth, kScreenHeight};
    ctx.background_colour = kBackground;
    ctx.mark_colour_a = {200, 40, 40};
    ctx.mark_colour_b = {40, 40, 200};
    ctx.scroll_step = 10;
    ctx.texts_loaded = 1;
}

} // namespace

Session::~Session()
{
    vel_close(&ctx);
}

App::App(bool headless) : session_(std::make_unique<Session>()), ctx_(session_->ctx)
{
    open_display(ctx_, headless);
    if (vel_load_form(&ctx_, 0, 0, DEMO_FORM_FILE, DEMO_TEXT_FILE) != 1)
        throw std::runtime_error("cannot load the form " DEMO_FORM_FILE);
    const std::string story = read_file(fs::path(DEMO_TEXTS_DIR) / "story.txt");
    if (story.empty()) throw std::runtime_error("cannot read the story in " DEMO_TEXTS_DIR);
    vel_prepare_fileselector(&ctx_, DEMO_FILE_LIST, kFileRows - 1);
    // Formats every text and label once; nothing is shown until the redraw.
    vel_draw_all_objects(&ctx_, 1, 0);
    flow_story(story);
    open_window(DEMO_NEWSPAPER);
    open_window(DEMO_NOTES);
    redraw();
}

App::~App()
{
    // The stream is ours: the library must not see it after we are gone.
    ctx_.objects[DEMO_STORY].stream = nullptr;
}

void App::run()
{
    std::printf("ready: %dx%d window; File and Window menus at the top left\n", kScreenWidth,
                kScreenHeight);
    std::fflush(stdout);
    SDL_Event event;
    while (running_ && SDL_WaitEvent(&event))
        handle(event);
}

void App::handle(const SDL_Event &event)
{
    ctx_.event = event;
    const bool left = event.button.button == SDL_BUTTON_LEFT;
    switch (event.type) {
    case SDL_QUIT:
        say("quit (window closed)");
        running_ = false;
        break;
    case SDL_KEYDOWN: vel_getfirstkeyinformation(&ctx_); break;
    case SDL_KEYUP: key_released(); break;
    case SDL_MOUSEBUTTONDOWN:
        if (left) pressed(vel_test_all_objects(&ctx_, event.button.x, event.button.y));
        break;
    case SDL_MOUSEBUTTONUP:
        if (left) released(vel_test_all_objects(&ctx_, event.button.x, event.button.y));
        break;
    default: break;
    }
}

void App::pressed(uint32_t hit)
{
    pressed_object_ = hit;
    if (hit == DEMO_FILE_TITLE) open_menu(hit, DEMO_FILE_MENU);
    if (hit == DEMO_WINDOW_TITLE) open_menu(hit, DEMO_WINDOW_MENU);
    if (acts_on_press(hit)) press_frame_button(hit);
}

void App::released(uint32_t hit)
{
    const bool click = hit != 0 && hit == pressed_object_;
    pressed_object_ = 0;
    if (!click || acts_on_press(hit)) return;
    if (is_frame_button(hit))
        release_frame_button(hit);
    else if (!act_on(hit))
        select(hit);
}

void App::key_released()
{
    vel_getfinalkeyinformation(&ctx_);
    const uint32_t field = ctx_.cursor_object;
    const bool typed = ctx_.final_key != 0 && field != 0 && ctx_.objects[field].editable == 1;
    vel_get_text(&ctx_);
    if (!typed) return;
    const vel_object &o = ctx_.objects[field];
    if (o.type == VEL_TYPE_ENTRY || o.type == VEL_TYPE_NUMERIC_ENTRY)
        say("type in %s: \"%s\"", name_of(field).c_str(), utf8(o.label).c_str());
    else
        say("type in %s: %u characters", name_of(field).c_str(), o.text_length);
}

// Menus open while the button is held and choose on release.  A plain
// click leaves the menu open until the next click.
void App::open_menu(uint32_t title, uint32_t menu)
{
    pressed_object_ = 0; // the menu takes the release
    uint32_t choice = vel_move_out_menu(&ctx_, menu, 1);
    int x = 0;
    int y = 0;
    const bool held = SDL_GetMouseState(&x, &y) & SDL_BUTTON(SDL_BUTTON_LEFT);
    if (choice == 0 && !held && vel_in_object(&ctx_, title, x, y))
        choice = vel_move_out_menu(&ctx_, menu, 1);
    redraw();
    if (choice != 0) choose(choice);
}

void App::choose(uint32_t entry)
{
    say("menu %s", ctx_.objects[entry].label);
    switch (entry) {
    case DEMO_MENU_OPEN:
    case DEMO_MENU_FILES: show_files(); break;
    case DEMO_MENU_ABOUT:
        vel_notice_window(&ctx_, DEMO_ABOUT, DEMO_ABOUT_OK);
        redraw();
        say("about closed");
        break;
    case DEMO_MENU_QUIT: ask_quit(); break;
    case DEMO_MENU_NOTES: open_window(DEMO_NOTES); break;
    case DEMO_MENU_NEWSPAPER: open_window(DEMO_NEWSPAPER); break;
    default: break;
    }
}

void App::press_frame_button(uint32_t button)
{
    const uint32_t window = ctx_.active_window;
    ctx_.window_to_activate = button;
    vel_exa_left_pressed(&ctx_);
    // Resizing leaves the frame buttons where they were: put them on the
    // window's new width.
    vel_set_operators(&ctx_);
    redraw();
    const vel_object &w = ctx_.objects[window];
    say("%s window %s: size %ux%u, scrolled %d,%d", frame_action(button, ctx_.frame_mode),
        name_of(window).c_str(), w.width, w.height, static_cast<int32_t>(w.scroll_x),
        static_cast<int32_t>(w.scroll_y));
}

void App::release_frame_button(uint32_t button)
{
    const uint32_t window = ctx_.active_window;
    // Moving waits for the press that places the window; its release is
    // not a click.
    pressed_object_ = 0;
    ctx_.window_to_activate = button;
    vel_exa_left_released(&ctx_);
    // Moving, resizing and closing leave shadow lines behind: paint the
    // whole scene again.
    redraw();
    const vel_object &w = ctx_.objects[window];
    if (button == DEMO_FRAME_MOVE)
        say("move window %s to %u,%u", name_of(window).c_str(), w.x, w.y);
    else if (button == DEMO_FRAME_MODE)
        say("frame buttons %s", ctx_.frame_mode == 1 ? "scroll" : "resize");
    else
        say("close window %s", name_of(window).c_str());
}

// The objects with a meaning of their own; true when hit was one.
bool App::act_on(uint32_t hit)
{
    switch (hit) {
    case DEMO_NOTES_OK:
        say("notes OK: name \"%s\", number %s", utf8(ctx_.objects[DEMO_NAME_FIELD].label).c_str(),
            ctx_.objects[DEMO_NUMBER_FIELD].label);
        close_window(DEMO_NOTES);
        return true;
    case DEMO_NOTES_CANCEL: close_window(DEMO_NOTES); return true;
    case DEMO_LOAD_NOTES:
    case DEMO_LOAD_NEWSPAPER: load_chosen_file(hit); return true;
    default: break;
    }
    if (hit >= DEMO_FILE_ROW && hit < DEMO_FILE_ROW + kFileRows) {
        choose_file(hit);
        return true;
    }
    return false;
}

void App::select(uint32_t hit)
{
    const vel_object &o = ctx_.objects[hit];
    const bool window = o.type == VEL_TYPE_WINDOW && o.master == 0;
    if (window && hit == ctx_.active_window) return;
    ctx_.window_to_activate = hit;
    vel_select_window(&ctx_);
    if (window)
        say("activate window %s", name_of(hit).c_str());
    else if (ctx_.cursor_object == hit && o.editable == 1)
        say("edit %s", name_of(hit).c_str());
}

void App::open_window(uint32_t window)
{
    const bool was_open = ctx_.objects[window].hidden == 0;
    ctx_.window_to_activate = window;
    vel_select_window(&ctx_);
    say("%s window %s", was_open ? "raise" : "open", name_of(window).c_str());
}

void App::close_window(uint32_t window)
{
    vel_close_win(&ctx_, window);
    redraw();
    say("close window %s", name_of(window).c_str());
}

void App::ask_quit()
{
    const uint32_t answer = vel_decide_window(&ctx_, DEMO_QUIT, DEMO_QUIT_YES, DEMO_QUIT_NO);
    redraw();
    say("quit? %s", answer == DEMO_QUIT_YES ? "yes" : "no");
    if (answer == DEMO_QUIT_YES) running_ = false;
}

// Lists the working directory in the file selector.
void App::show_files()
{
    vel_read_app_dir(&ctx_);
    vel_load_dir_entries(&ctx_, DEMO_FILE_LIST);
    chosen_row_ = 0;
    for (uint32_t row = DEMO_FILE_ROW; row < DEMO_FILE_ROW + kFileRows; ++row)
        paint_row(ctx_, row, kRowColour);
    open_window(DEMO_FILES);
    redraw();
    say("list %s: %u entries", utf8(fs::current_path().string()).c_str(), ctx_.dir_last + 1);
}

void App::choose_file(uint32_t row)
{
    const fs::path path = fs::current_path() / ctx_.objects[row].label;
    std::error_code error;
    if (fs::is_directory(path, error)) {
        fs::current_path(path, error);
        show_files();
        return;
    }
    if (chosen_row_ != 0) paint_row(ctx_, chosen_row_, kRowColour);
    paint_row(ctx_, row, kChosenRow);
    chosen_row_ = row;
    chosen_path_ = path.string();
    redraw();
    say("choose file %s", utf8(ctx_.objects[row].label).c_str());
}

void App::load_chosen_file(uint32_t target)
{
    const std::string text = chosen_path_.empty() ? std::string() : read_file(chosen_path_);
    if (text.empty()) {
        say("load: choose a readable, non-empty file first");
        return;
    }
    const std::string name = utf8(fs::path(chosen_path_).filename().string());
    if (target == DEMO_LOAD_NOTES) {
        // A text record holds 999 characters; the library cuts the rest.
        vel_load_window_text(&ctx_, DEMO_NOTES_TEXT, text.c_str());
        vel_reset_textobject(&ctx_, 1, DEMO_NOTES_TEXT);
        open_window(DEMO_NOTES);
        redraw();
        say("load %s into notes", name.c_str());
        return;
    }
    flow_story(text);
    open_window(DEMO_NEWSPAPER);
    redraw();
    uint32_t used = 0;
    for (uint32_t column : kColumns)
        if (column_line(ctx_, column, 0)[0] != '\0') ++used;
    say("load %s into newspaper: %u of 3 columns", name.c_str(), used);
}

// Flows the text through the newspaper's columns.
void App::flow_story(std::string text)
{
    story_ = std::move(text);
    // The flow does not clear the lines an earlier, longer text left.
    for (uint32_t column : kColumns)
        std::memset(column_line(ctx_, column, 0), 0, VEL_LINE_BUFFER_BYTES);
    ctx_.objects[DEMO_STORY].stream = story_.data();
    vel_format_stream_to_linked_objects(&ctx_, DEMO_STORY);
    // The flow stores the last line's index in the column it started in,
    // not in the one it ended in: count each column's lines here.
    for (uint32_t column : kColumns) {
        uint32_t last = 0;
        for (uint32_t line = 0; line < VEL_MAX_LINES; ++line)
            if (column_line(ctx_, column, line)[0] != '\0') last = line;
        ctx_.objects[column].number_of_lines = last;
    }
}

// The library paints objects, not the desktop under them: fill it first.
// Texts are formatted once at the start and by whatever changes them.
void App::redraw()
{
    SDL_FillRect(ctx_.screen, nullptr,
                 SDL_MapRGB(ctx_.screen->format, kBackground.r, kBackground.g, kBackground.b));
    vel_draw_all_objects(&ctx_, 0, 1);
}

} // namespace demo
