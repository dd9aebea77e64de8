// The designer's screen, events and commands: canvas on the left at the
// form's own coordinates, panels on the right, changes through the history.
#include "designer/designer.hpp"

#include "binary_form.hpp"
#include "commands.hpp"
#include "designer/edits.hpp"
#include "fields.hpp"
#include "panels.h"
#include "render.hpp"
#include "toml_reader.hpp"
#include "toml_writer.hpp"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstring>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace velform::designer {

namespace {

namespace fs = std::filesystem;

// The panels are laid out for a 1024 x 768 screen with their left edge
// here; wider screens move them right and give the canvas the room.
constexpr int kPanelLeft = 640;
constexpr int kLayoutWidth = 1024;
constexpr int kLayoutHeight = 768;
constexpr vel_rgb kPanelColour{0xe4, 0xe6, 0xec};
constexpr vel_rgb kSelectionColour{0, 120, 255};
constexpr vel_rgb kDragColour{255, 140, 0};
constexpr int kHandle = 5;
constexpr uint32_t kEnter = 271;

struct Named {
    std::string_view key;
    uint32_t object;
};
constexpr std::array kPalette{
    Named{"window", PANELS_PALETTE_WINDOW}, Named{"label", PANELS_PALETTE_LABEL},
    Named{"text", PANELS_PALETTE_TEXT},     Named{"entry", PANELS_PALETTE_ENTRY},
    Named{"number", PANELS_PALETTE_NUMBER}, Named{"picture", PANELS_PALETTE_PICTURE},
    Named{"menu", PANELS_PALETTE_MENU},     Named{"chain", PANELS_PALETTE_CHAIN},
};
constexpr std::array kProperties{
    Named{"name", PANELS_FIELD_NAME},
    Named{"type", PANELS_FIELD_TYPE},
    Named{"x", PANELS_FIELD_X},
    Named{"y", PANELS_FIELD_Y},
    Named{"width", PANELS_FIELD_WIDTH},
    Named{"height", PANELS_FIELD_HEIGHT},
    Named{"margin_left", PANELS_FIELD_MARGIN_LEFT},
    Named{"margin_right", PANELS_FIELD_MARGIN_RIGHT},
    Named{"margin_top", PANELS_FIELD_MARGIN_TOP},
    Named{"margin_bottom", PANELS_FIELD_MARGIN_BOTTOM},
    Named{"fill", PANELS_FIELD_FILL},
    Named{"text_colour", PANELS_FIELD_TEXT_COLOUR},
    Named{"border_colour", PANELS_FIELD_BORDER_COLOUR},
    Named{"label", PANELS_FIELD_LABEL},
    Named{"text", PANELS_FIELD_TEXT},
    Named{"border_style", PANELS_FIELD_BORDER_STYLE},
    Named{"clip_mode", PANELS_FIELD_CLIP_MODE},
    Named{"window_kind", PANELS_FIELD_WINDOW_KIND},
    Named{"font_path", PANELS_FIELD_FONT_PATH},
    Named{"image_path", PANELS_FIELD_IMAGE_PATH},
    Named{"editable", PANELS_FIELD_EDITABLE},
    Named{"max_chars", PANELS_FIELD_MAX_CHARS},
};
// The tree's rows, its dependents.
constexpr uint32_t kTreeRows = 10;

template <std::size_t N> const Named *find_object(const std::array<Named, N> &table, uint32_t n)
{
    const auto found = std::find_if(table.begin(), table.end(),
                                    [n](const Named &named) { return named.object == n; });
    return found == table.end() ? nullptr : &*found;
}

template <std::size_t N> uint32_t find_key(const std::array<Named, N> &table, std::string_view key)
{
    const auto found = std::find_if(table.begin(), table.end(),
                                    [key](const Named &named) { return named.key == key; });
    return found == table.end() ? 0 : found->object;
}

void fill(SDL_Surface *screen, SDL_Rect area, vel_rgb colour)
{
    SDL_FillRect(screen, &area, SDL_MapRGB(screen->format, colour.r, colour.g, colour.b));
}

void set_label(vel_object &o, std::string_view text)
{
    set_field_text(o.label, text);
    o.text_length = static_cast<uint32_t>(field_text(o.label).size());
}

SDL_Rect rect_of(const vel_object &o)
{
    return SDL_Rect{static_cast<Sint16>(o.x), static_cast<Sint16>(o.y),
                    static_cast<Uint16>(o.width), static_cast<Uint16>(o.height)};
}

struct Point {
    int x, y;
};

// The eight handles: corners and edge middles, clockwise from the top left,
// with the edges each one drags (left, top, right, bottom).
struct Handle {
    int fx, fy; // 0 left/top, 1 middle, 2 right/bottom
};
constexpr std::array<Handle, 8> kHandles{Handle{0, 0}, {1, 0}, {2, 0}, {2, 1},
                                         {2, 2},       {1, 2}, {0, 2}, {0, 1}};

Point handle_centre(SDL_Rect r, const Handle &h)
{
    const int xs[] = {r.x - 1, r.x + r.w / 2, r.x + r.w};
    const int ys[] = {r.y - 1, r.y + r.h / 2, r.y + r.h};
    return {xs[h.fx], ys[h.fy]};
}

int handle_at(SDL_Rect r, int x, int y)
{
    for (std::size_t k = 0; k < kHandles.size(); ++k) {
        const Point c = handle_centre(r, kHandles[k]);
        if (std::abs(c.x - x) <= kHandle / 2 + 1 && std::abs(c.y - y) <= kHandle / 2 + 1)
            return static_cast<int>(k);
    }
    return -1;
}

void outline(vel_context &ctx, SDL_Rect r, vel_rgb colour)
{
    vel_draw_rectangle(&ctx, static_cast<uint32_t>(r.x - 1), static_cast<uint32_t>(r.y - 1),
                       static_cast<uint32_t>(r.w + 2), static_cast<uint32_t>(r.h + 2), colour.r,
                       colour.g, colour.b);
}

bool same_form(const Form &a, const Form &b)
{
    const auto same = [](const auto &x, const auto &y) {
        return x.size() == y.size() &&
               (x.empty() || std::memcmp(x.data(), y.data(), x.size() * sizeof x.front()) == 0);
    };
    return a.names == b.names && a.text_names == b.text_names && same(a.objects, b.objects) &&
           same(a.texts, b.texts);
}

// The rows of the tree.
struct PanelFiles {
    fs::path form, texts;
};

// The panels as installed beside velform (PANELS_INSTALLED_DIR from its own
// directory), else where the build compiled them.
PanelFiles panel_files()
{
    std::error_code error;
    const fs::path self = fs::read_symlink("/proc/self/exe", error);
    if (!error) {
        const fs::path installed = self.parent_path() / PANELS_INSTALLED_DIR;
        if (fs::exists(installed / "panels.vfm", error))
            return {installed / "panels.vfm", installed / "panels.vtx"};
    }
    return {PANELS_FORM_FILE, PANELS_TEXT_FILE};
}

std::vector<uint32_t> tree_rows(const vel_context &panels)
{
    const uint32_t *deps = panels.objects[PANELS_TREE].dep_objs;
    return {deps, deps + kTreeRows};
}

bool is_frame_button(uint32_t n)
{
    return n >= 1 && n <= kFrameButtons;
}

} // namespace

Display::Display(const EditOptions &options)
{
    if (options.headless) setenv("SDL_VIDEODRIVER", "dummy", 1);
    if (SDL_Init(SDL_INIT_VIDEO) != 0 || TTF_Init() != 0)
        throw std::runtime_error(std::string("cannot start SDL: ") + SDL_GetError());
    // SDL turns Ctrl+C into a quit event, which would ask about saving;
    // the signal keeps its usual meaning.
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    screen_ = SDL_SetVideoMode(options.width, options.height, 32, SDL_SWSURFACE);
    if (!screen_) throw std::runtime_error(std::string("no video mode: ") + SDL_GetError());
    font_ = TTF_OpenFont(kDefaultFont, 13);
    if (!font_) throw std::runtime_error(std::string("cannot open the font ") + kDefaultFont);
    SDL_WM_SetCaption(("velform edit " + options.form.filename().string()).c_str(), nullptr);
    SDL_EnableUNICODE(0);
}

Display::~Display()
{
    if (font_) TTF_CloseFont(font_);
    TTF_Quit();
    SDL_Quit();
}

FormContext::FormContext(const Display &display, int width, int height)
{
    prepare_context(ctx, width, height);
    ctx.screen = display.screen();
    ctx.font = display.font();
}

FormContext::~FormContext()
{
    unload();
    if (ctx.text_surface) SDL_FreeSurface(ctx.text_surface);
}

bool FormContext::load(const fs::path &form, const fs::path &texts)
{
    unload();
    return vel_load_form(&ctx, 0, 0, form.c_str(), texts.c_str()) == 1;
}

void FormContext::unload()
{
    if (ctx.objects) vel_unload_form(&ctx);
}

Designer::Designer(const EditOptions &options)
    : file_(options.form), width_(options.width), height_(options.height),
      canvas_width_(options.width - (kLayoutWidth - kPanelLeft)), display_(options),
      canvas_(display_, options.width, options.height),
      panels_(display_, options.width, options.height), history_([&] {
          Diagnostics d;
          std::optional<Form> form = read_toml_form(options.form, std::string(), d);
          if (!form) {
              std::ostringstream messages;
              d.print(messages);
              throw std::runtime_error("cannot edit " + options.form.string() + ":\n" +
                                       messages.str());
          }
          return *form;
      }())
{
    if (scratch_.path().empty()) throw std::runtime_error("cannot make a scratch directory");
    load_panels();
    load_canvas();
    say("Editing " + file_.filename().string() + ": click an object, drag it, F5 previews");
    redraw();
}

void Designer::load_panels()
{
    const PanelFiles files = panel_files();
    if (!panels_.load(files.form.c_str(), files.texts.c_str()))
        throw std::runtime_error("cannot load the designer's panels " + files.form.string());
    vel_context &p = panels_.ctx;
    p.background_colour = kPanelColour;
    const uint32_t shift = static_cast<uint32_t>(width_ - kLayoutWidth);
    for (uint32_t n = kFirstFormObject; n <= p.object_count; ++n)
        p.objects[n].x += shift;
}

void Designer::load_canvas()
{
    canvas_.unload();
    std::string error;
    const fs::path stem = scratch_.path() / "canvas";
    if (!write_binary_form(with_resolved_paths(form(), file_), stem, error))
        throw std::runtime_error("cannot write the canvas form: " + error);
    if (!canvas_.load(fs::path(stem) += ".vfm", fs::path(stem) += ".vtx"))
        throw std::runtime_error("the library cannot load the form");
    vel_context &c = canvas_.ctx;
    vel_draw_all_objects(&c, 1, 0);
    if (selected_ > c.object_count) selected_ = 0;
    if (selected_ != 0) shown_ = top_of(selected_);
    if (shown_ > c.object_count) shown_ = 0;
    const uint32_t top = shown_;
    if (top != 0 && c.objects[top].type == VEL_TYPE_MENU) c.objects[top].hidden = 0;
    if (top != 0 && c.objects[top].type == VEL_TYPE_WINDOW) {
        c.window_to_activate = top;
        vel_select_window(&c);
    }
    refresh_panels();
}

uint32_t Designer::top_of(uint32_t object) const
{
    for (uint32_t steps = 0; object != 0 && steps < form().object_count(); ++steps) {
        const uint32_t master = form().object(object).master;
        if (master == 0) return object;
        object = master;
    }
    return object;
}

void Designer::redraw()
{
    SDL_Surface *screen = display_.screen();
    fill(screen, SDL_Rect{0, 0, static_cast<Uint16>(width_), static_cast<Uint16>(height_)},
         kBackground);
    vel_draw_all_objects(&canvas_.ctx, 0, 0);
    if (!previewing_) draw_selection();
    fill(screen,
         SDL_Rect{static_cast<Sint16>(canvas_width_), 0,
                  static_cast<Uint16>(width_ - canvas_width_), static_cast<Uint16>(height_)},
         kPanelColour);
    vel_draw_all_objects(&panels_.ctx, format_panels_ ? 1 : 0, 0);
    format_panels_ = false;
    SDL_UpdateRect(screen, 0, 0, 0, 0);
}

SDL_Rect Designer::drawn_rect(uint32_t object) const
{
    return rect_of(canvas_.ctx.objects[object]);
}

SDL_Rect Designer::dragged_rect(const Drag &drag) const
{
    const int dx = drag.x - drag.start_x;
    const int dy = drag.y - drag.start_y;
    SDL_Rect r = drag.from;
    if (drag.handle < 0) {
        r.x = static_cast<Sint16>(std::max(0, r.x + dx));
        r.y = static_cast<Sint16>(std::max(0, r.y + dy));
        return r;
    }
    const Handle &h = kHandles[static_cast<std::size_t>(drag.handle)];
    int left = r.x, top = r.y, right = r.x + r.w, bottom = r.y + r.h;
    if (h.fx == 0) left = std::clamp(left + dx, 0, right - 1);
    if (h.fx == 2) right = std::max(right + dx, left + 1);
    if (h.fy == 0) top = std::clamp(top + dy, 0, bottom - 1);
    if (h.fy == 2) bottom = std::max(bottom + dy, top + 1);
    return SDL_Rect{static_cast<Sint16>(left), static_cast<Sint16>(top),
                    static_cast<Uint16>(right - left), static_cast<Uint16>(bottom - top)};
}

void Designer::draw_selection()
{
    vel_context &c = canvas_.ctx;
    if (drag_) outline(c, dragged_rect(*drag_), kDragColour);
    if (selected_ == 0) return;
    const SDL_Rect r = drawn_rect(selected_);
    outline(c, r, kSelectionColour);
    for (const Handle &h : kHandles) {
        const Point centre = handle_centre(r, h);
        vel_draw_box(&c, static_cast<uint32_t>(centre.x - kHandle / 2),
                     static_cast<uint32_t>(centre.y - kHandle / 2), kHandle, kHandle,
                     kSelectionColour.r, kSelectionColour.g, kSelectionColour.b);
    }
}

void Designer::refresh_panels()
{
    vel_context &p = panels_.ctx;
    for (const Named &field : kProperties)
        set_label(p.objects[field.object],
                  selected_ == 0 ? std::string() : property(form(), selected_, field.key));
    for (const Named &button : kPalette)
        p.objects[button.object].fill_b = button.key == armed_ ? 0xa0 : 0xf2;
    refresh_tree();
    p.cursor_object = 0;
    format_panels_ = true;
}

void Designer::refresh_tree()
{
    tree_objects_.clear();
    const Form &f = form();
    std::vector<std::pair<uint32_t, int>> listing; // object and depth
    for (uint32_t n = kFirstFormObject; n <= f.object_count(); ++n) {
        if (f.object(n).master != 0) continue;
        std::vector<std::pair<uint32_t, int>> stack{{n, 0}};
        while (!stack.empty() && listing.size() <= f.object_count()) {
            const auto [object, depth] = stack.back();
            stack.pop_back();
            listing.emplace_back(object, depth);
            const std::vector<uint32_t> below = listed_dependents(f.object(object));
            for (auto d = below.rbegin(); d != below.rend(); ++d)
                if (*d >= 1 && *d <= f.object_count()) stack.emplace_back(*d, depth + 1);
        }
    }
    const auto chosen = std::find_if(listing.begin(), listing.end(),
                                     [this](const auto &row) { return row.first == selected_; });
    const std::size_t at = chosen == listing.end() ? 0 : chosen - listing.begin();
    const std::size_t first =
        listing.size() <= kTreeRows
            ? 0
            : std::min(at - std::min<std::size_t>(at, 4), listing.size() - kTreeRows);
    vel_context &p = panels_.ctx;
    const std::vector<uint32_t> rows = tree_rows(p);
    for (std::size_t k = 0; k < rows.size(); ++k) {
        vel_object &row = p.objects[rows[k]];
        const bool used = first + k < listing.size();
        const auto [object, depth] = used ? listing[first + k] : std::pair<uint32_t, int>{0, 0};
        tree_objects_.push_back(object);
        const vel_object_file_rec &o = f.object(used ? object : kFirstFormObject - 1);
        set_label(
            row, used ? std::string(2 * depth, ' ') + f.names[object - 1] + "  (" +
                            std::string(o.type < kTypeWords.size() ? kTypeWords[o.type] : "?") + ")"
                      : std::string());
        const bool chosen_row = used && object == selected_;
        row.fill_r = chosen_row ? 200 : 255;
        row.fill_g = chosen_row ? 215 : 255;
        row.fill_b = chosen_row ? 245 : 255;
    }
}

void Designer::say(std::string message)
{
    status_ = std::move(message);
    std::printf("status: %s\n", status_.c_str());
    std::fflush(stdout);
    vel_context &p = panels_.ctx;
    const uint32_t t = p.objects[PANELS_STATUS].text_index;
    set_field_text(p.text_recs[t].text, status_);
    p.objects[PANELS_STATUS].text_length =
        static_cast<uint32_t>(field_text(p.text_recs[t].text).size());
    format_panels_ = true;
}

template <typename Edit> void Designer::change(Edit edit, const std::string &done)
{
    Form next = form();
    std::string error = edit(next);
    if (error.empty() && same_form(next, form())) return refresh_panels();
    if (error.empty()) error = first_error(next, file_);
    if (!error.empty()) {
        say("Refused: " + error);
        refresh_panels();
        return;
    }
    history_.push(std::move(next));
    load_canvas();
    say(done);
}

void Designer::select(uint32_t object)
{
    selected_ = is_frame_button(object) ? canvas_.ctx.active_window : object;
    load_canvas();
    if (selected_ != 0)
        say("Selected " + form().names[selected_ - 1] + ": drag to move, handles resize");
}

uint32_t Designer::canvas_hit(int x, int y)
{
    const uint32_t hit =
        vel_test_all_objects(&canvas_.ctx, static_cast<uint32_t>(x), static_cast<uint32_t>(y));
    return is_frame_button(hit) ? canvas_.ctx.active_window : hit;
}

void Designer::run()
{
    std::printf("ready: %dx%d window, canvas 0..%d\n", width_, height_, canvas_width_ - 1);
    std::fflush(stdout);
    SDL_Event event;
    while (running_ && SDL_WaitEvent(&event))
        handle(event);
}

void Designer::pump()
{
    SDL_Event event;
    while (running_ && SDL_PollEvent(&event))
        handle(event);
}

void Designer::handle(const SDL_Event &event)
{
    if (event.type == SDL_QUIT) return quit();
    if (event.type == SDL_KEYDOWN && shortcut(event.key)) return redraw();
    if (previewing_) return preview_event(event);
    const bool left = event.button.button == SDL_BUTTON_LEFT;
    switch (event.type) {
    case SDL_MOUSEBUTTONDOWN:
        if (left && event.button.x < canvas_width_) edit_press(event.button.x, event.button.y);
        break;
    case SDL_MOUSEMOTION:
        if (!drag_) return;
        drag_->x = event.motion.x;
        drag_->y = event.motion.y;
        break;
    case SDL_MOUSEBUTTONUP:
        if (!left) return;
        if (drag_)
            edit_release(event.button.x, event.button.y);
        else if (event.button.x >= canvas_width_)
            panel_release(event.button.x, event.button.y);
        break;
    case SDL_KEYDOWN:
    case SDL_KEYUP:
        if (panels_.ctx.cursor_object != 0)
            field_key(event);
        else if (event.type == SDL_KEYDOWN)
            edit_key(event.key);
        break;
    default: return;
    }
    redraw();
}

bool Designer::shortcut(const SDL_KeyboardEvent &key)
{
    const bool ctrl = (key.keysym.mod & KMOD_CTRL) != 0;
    switch (key.keysym.sym) {
    case SDLK_F5: toggle_preview(); return true;
    case SDLK_s:
        if (ctrl) save();
        return ctrl;
    case SDLK_q:
        if (ctrl) quit();
        return ctrl;
    case SDLK_z:
    case SDLK_y:
        if (!ctrl || previewing_) return false;
        if (key.keysym.sym == SDLK_z ? history_.undo() : history_.redo()) {
            load_canvas();
            say(key.keysym.sym == SDLK_z ? "Undone" : "Redone");
        } else {
            say(key.keysym.sym == SDLK_z ? "Nothing to undo" : "Nothing to redo");
        }
        return true;
    default: return false;
    }
}

void Designer::edit_press(int x, int y)
{
    panels_.ctx.cursor_object = 0;
    if (!armed_.empty()) {
        const std::string word = std::exchange(armed_, {});
        const uint32_t master = canvas_hit(x, y);
        uint32_t added = 0;
        change(
            [&](Form &f) {
                return add_object(f, word, master, static_cast<uint32_t>(x),
                                  static_cast<uint32_t>(y), added, file_);
            },
            "Added a " + word);
        if (added != 0) select(added);
        return;
    }
    const int handle = selected_ == 0 ? -1 : handle_at(drawn_rect(selected_), x, y);
    if (handle < 0) {
        const uint32_t hit = canvas_hit(x, y);
        if (hit != selected_) select(hit);
    }
    if (selected_ != 0) drag_ = Drag{selected_, handle, x, y, x, y, drawn_rect(selected_)};
}

void Designer::edit_release(int x, int y)
{
    Drag drag = *std::exchange(drag_, std::nullopt);
    drag.x = x;
    drag.y = y;
    const SDL_Rect to = dragged_rect(drag);
    const SDL_Rect &from = drag.from;
    const uint32_t n = drag.object;
    if (drag.handle >= 0) {
        if (to.x == from.x && to.y == from.y && to.w == from.w && to.h == from.h) return;
        change(
            [&](Form &f) {
                vel_object_file_rec &o = f.object(n);
                o.x = static_cast<uint32_t>(to.x);
                o.y = static_cast<uint32_t>(to.y);
                o.width = to.w;
                o.height = to.h;
                return std::string();
            },
            "Resized " + form().names[n - 1] + " to " + std::to_string(to.w) + "x" +
                std::to_string(to.h));
        return;
    }
    if (to.x == from.x && to.y == from.y) return;
    uint32_t target = canvas_hit(x, y);
    const std::vector<uint32_t> moving = subtree(form(), n);
    if (target != 0 && std::find(moving.begin(), moving.end(), target) != moving.end()) target = 0;
    const bool reparenting = target != 0 && target != form().object(n).master;
    change(
        [&](Form &f) {
            move_object(f, n, to.x - from.x, to.y - from.y);
            return reparenting ? reparent(f, n, target, file_) : std::string();
        },
        reparenting ? "Moved " + form().names[n - 1] + " into " + form().names[target - 1]
                    : "Moved " + form().names[n - 1] + " to " + std::to_string(to.x) + "," +
                          std::to_string(to.y));
}

void Designer::panel_release(int x, int y)
{
    vel_context &p = panels_.ctx;
    const uint32_t hit =
        vel_test_all_objects(&p, static_cast<uint32_t>(x), static_cast<uint32_t>(y));
    p.cursor_object = 0;
    if (const Named *button = find_object(kPalette, hit)) {
        armed_ = armed_ == button->key ? std::string() : std::string(button->key);
        refresh_panels();
        say(armed_.empty() ? "Palette cleared"
                           : "Click on the canvas to add a " + armed_ + " inside the object there");
        return;
    }
    if (find_object(kProperties, hit)) {
        if (selected_ != 0) focus_field(hit);
        return;
    }
    const std::vector<uint32_t> rows = tree_rows(p);
    const auto row = std::find(rows.begin(), rows.end(), hit);
    if (row != rows.end() && static_cast<std::size_t>(row - rows.begin()) < tree_objects_.size()) {
        const uint32_t object = tree_objects_[static_cast<std::size_t>(row - rows.begin())];
        if (object != 0) select(object);
    }
}

void Designer::focus_field(uint32_t field)
{
    vel_context &p = panels_.ctx;
    vel_object &o = p.objects[field];
    set_label(o, "");
    o.cursor_x = o.x + o.margin_left;
    o.cursor_y = o.y + o.margin_top;
    o.cursor_line = 0;
    o.cursor_column = 0;
    p.cursor_object = field;
    format_panels_ = true;
    say("Type the new " + std::string(find_object(kProperties, field)->key) +
        ", Enter applies, Escape keeps it");
}

void Designer::field_key(const SDL_Event &event)
{
    vel_context &p = panels_.ctx;
    if (event.type == SDL_KEYDOWN && event.key.keysym.sym == SDLK_ESCAPE) {
        refresh_panels();
        say("Kept the value");
        return;
    }
    p.event = event;
    if (event.type == SDL_KEYDOWN) return vel_getfirstkeyinformation(&p);
    vel_getfinalkeyinformation(&p);
    if (p.final_key == kEnter) {
        p.final_key = 0;
        return apply_field();
    }
    vel_get_text(&p);
}

void Designer::apply_field()
{
    vel_context &p = panels_.ctx;
    const Named *field = find_object(kProperties, p.cursor_object);
    const std::string value(field_text(p.objects[p.cursor_object].label));
    const std::string key(field->key);
    change([&](Form &f) { return set_property(f, selected_, key, value, file_); },
           "Set " + key + " of " + form().names[selected_ - 1] + " to " + value);
}

void Designer::edit_key(const SDL_KeyboardEvent &key)
{
    const int step = (key.keysym.mod & KMOD_SHIFT) ? 10 : 1;
    int dx = 0, dy = 0;
    switch (key.keysym.sym) {
    case SDLK_LEFT: dx = -step; break;
    case SDLK_RIGHT: dx = step; break;
    case SDLK_UP: dy = -step; break;
    case SDLK_DOWN: dy = step; break;
    case SDLK_DELETE: return delete_selection();
    case SDLK_ESCAPE:
        armed_.clear();
        selected_ = 0;
        load_canvas();
        return;
    default: return;
    }
    if (selected_ == 0) return;
    const uint32_t n = selected_;
    change(
        [&](Form &f) {
            move_object(f, n, dx, dy);
            return std::string();
        },
        "Moved " + form().names[n - 1]);
}

void Designer::delete_selection()
{
    if (selected_ == 0) return;
    const uint32_t n = selected_;
    const std::size_t below = subtree(form(), n).size() - 1;
    const std::string name = form().names[n - 1];
    if (!ask("Delete " + name +
             (below ? " and its " + std::to_string(below) + " dependents?" : "?")))
        return;
    selected_ = 0;
    change([&](Form &f) { return remove_object(f, n, file_); }, "Deleted " + name);
}

void Designer::save()
{
    if (const std::string error = first_error(form(), file_); !error.empty())
        return say("Not saved: " + error);
    std::ofstream out(file_, std::ios::trunc);
    write_toml_form(form(), file_.filename().string(), out);
    if (!out.flush()) return say("Cannot write " + file_.string());
    history_.mark_saved();
    say("Saved " + file_.string());
}

void Designer::quit()
{
    if (!history_.modified() || ask("Quit without saving the changes?")) running_ = false;
}

bool Designer::ask(const std::string &question)
{
    vel_context &p = panels_.ctx;
    std::printf("question: %s\n", question.c_str());
    std::fflush(stdout);
    p.cursor_object = 0;
    set_label(p.objects[PANELS_QUESTION_TEXT], question);
    vel_draw_all_objects(&p, 1, 0);
    const bool yes = vel_decide_window(&p, PANELS_QUESTION, PANELS_QUESTION_YES,
                                       PANELS_QUESTION_NO) == PANELS_QUESTION_YES;
    std::printf("answer: %s\n", yes ? "yes" : "no");
    std::fflush(stdout);
    format_panels_ = true;
    redraw();
    return yes;
}

void Designer::toggle_preview()
{
    previewing_ = !previewing_;
    drag_.reset();
    armed_.clear();
    load_canvas();
    say(previewing_ ? "Preview: the form runs as in an application; F5 returns" : "Editing again");
}

void Designer::preview_event(const SDL_Event &event)
{
    vel_context &c = canvas_.ctx;
    c.event = event;
    const bool left = event.button.button == SDL_BUTTON_LEFT;
    switch (event.type) {
    case SDL_KEYDOWN: vel_getfirstkeyinformation(&c); break;
    case SDL_KEYUP:
        vel_getfinalkeyinformation(&c);
        vel_get_text(&c);
        break;
    case SDL_MOUSEBUTTONDOWN: {
        if (!left || event.button.x >= canvas_width_) return;
        const uint32_t hit = vel_test_all_objects(&c, event.button.x, event.button.y);
        if (hit == 2 || hit == 3 || hit == 5 || hit == 6) {
            c.window_to_activate = hit;
            vel_exa_left_pressed(&c);
            vel_set_operators(&c);
            break;
        }
        // A hidden menu hanging below the pressed object is its pull-down.
        for (uint32_t m = kFirstFormObject; hit >= kFirstFormObject && m <= c.object_count; ++m) {
            const vel_object &menu = c.objects[m];
            const vel_object &title = c.objects[hit];
            if (menu.type == VEL_TYPE_MENU && menu.hidden != 0 &&
                menu.y >= title.y + title.height - 2 && menu.y <= title.y + title.height + 2 &&
                menu.x < title.x + title.width && title.x < menu.x + menu.width) {
                const uint32_t entry = vel_move_out_menu(&c, m, 1);
                if (entry != 0) say("Preview: menu entry " + form().names[entry - 1] + " chosen");
                break;
            }
        }
        break;
    }
    case SDL_MOUSEBUTTONUP: {
        if (!left || event.button.x >= canvas_width_) return;
        const uint32_t hit = vel_test_all_objects(&c, event.button.x, event.button.y);
        c.window_to_activate = hit;
        if (hit == 1 || hit == 4 || hit == 7)
            vel_exa_left_released(&c);
        else if (hit != 0)
            vel_select_window(&c);
        break;
    }
    default: return;
    }
    redraw();
}

SDL_Rect Designer::palette_button(std::string_view word) const
{
    return rect_of(panels_.ctx.objects[find_key(kPalette, word)]);
}

SDL_Rect Designer::property_field(std::string_view key) const
{
    return rect_of(panels_.ctx.objects[find_key(kProperties, key)]);
}

SDL_Rect Designer::tree_row(uint32_t object) const
{
    const vel_context &p = panels_.ctx;
    const auto at = std::find(tree_objects_.begin(), tree_objects_.end(), object);
    if (object == 0 || at == tree_objects_.end()) return {};
    return rect_of(p.objects[p.objects[PANELS_TREE].dep_objs[at - tree_objects_.begin()]]);
}

int edit_command(const EditOptions &options, std::ostream &messages)
{
    if (options.width < kLayoutWidth || options.height < kLayoutHeight || options.width > 8192 ||
        options.height > 8192) {
        messages << "--size: the designer needs at least " << kLayoutWidth << "x" << kLayoutHeight
                 << "\n";
        return 1;
    }
    if (!is_toml_form(options.form)) {
        messages << options.form.string() << ": the designer edits TOML forms (FORM.toml)\n";
        return 1;
    }
    try {
        // Relative picture and font paths are kept as written, and they are
        // relative to the form's directory, as the compiler reads them.
        EditOptions absolute = options;
        absolute.form = fs::absolute(options.form);
        fs::current_path(absolute.form.parent_path());
        Designer designer(absolute);
        designer.run();
        return 0;
    } catch (const std::exception &e) {
        messages << "velform edit: " << e.what() << "\n";
        return 1;
    }
}

} // namespace velform::designer
