// A scripted session over the sample form for memory checkers and long runs:
// deterministic keys, clicks, window switches, frame actions, redraws and text loads.
//
//   velumo_session [--events N] [--soak N] [--seed S] [--verbose]
//
// --events N (default 10000) runs N script steps; --soak N instead types N
// keystrokes into the editors with a full redraw after each and fails when
// resident memory grew by more than 1 MiB after the first 1,000.  The
// library's standard output goes to /dev/null unless --verbose is given; the
// summary goes to standard error.
#include "sample_form.hpp"
#include "velumo.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>

namespace {

using namespace velumo::sample;

constexpr const char *kFontPath = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr int kFontSize = 13;
constexpr int kScreenWidth = 640;
constexpr int kScreenHeight = 480;
constexpr uint32_t kCloseButton = 7;
constexpr uint64_t kDefaultSeed = 0x76656c756d6f2131; // any fixed value will do

constexpr uint32_t kWindows[] = {kMainWindow, kSettingsWindow, kThirdWindow};
constexpr uint32_t kTextHolders[] = {kMainWindow, kNotesText, kSettingsWindow, kThirdWindow};
// Spare object records: a file selector list, its template row and 8 rows.
constexpr uint32_t kSpareObjects = 10;
constexpr uint32_t kSpareTexts = 10;

// ------------------------------------------------------------------ helpers

// splitmix64: the same sequence on every platform and standard library.
class Random {
public:
    explicit Random(uint64_t seed) : state_(seed) {}

    uint64_t next()
    {
        uint64_t z = (state_ += 0x9E3779B97F4A7C15u);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return z ^ (z >> 31);
    }
    uint32_t below(uint32_t n) { return static_cast<uint32_t>(next() % n); }
    bool percent(uint32_t p) { return below(100) < p; }
    template <typename T, std::size_t N> T pick(const T (&items)[N])
    {
        return items[below(static_cast<uint32_t>(N))];
    }

private:
    uint64_t state_;
};

long resident_bytes()
{
    std::ifstream statm("/proc/self/statm");
    long size = 0;
    long resident = 0;
    statm >> size >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

// FNV-1a over the screen and the text records: equal runs give equal values.
uint64_t fingerprint(const vel_context &ctx)
{
    uint64_t hash = 0xCBF29CE484222325u;
    const auto mix = [&hash](const void *data, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) {
            hash ^= static_cast<const unsigned char *>(data)[i];
            hash *= 0x100000001B3u;
        }
    };
    const SDL_Surface *screen = ctx.screen;
    mix(screen->pixels, static_cast<std::size_t>(screen->pitch) * screen->h);
    mix(ctx.text_recs, sizeof(vel_text_rec) * (ctx.text_count + 1));
    return hash;
}

long open_descriptors()
{
    long count = 0;
    for ([[maybe_unused]] const auto &entry : std::filesystem::directory_iterator("/proc/self/fd"))
        ++count;
    return count;
}

// A private directory for the form files, removed with everything in it.
class ScratchDir {
public:
    ScratchDir()
    {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "velumo_soak_XXXXXX").string();
        if (mkdtemp(pattern.data())) path_ = pattern;
    }
    ~ScratchDir()
    {
        std::error_code ignored;
        if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
    }
    ScratchDir(const ScratchDir &) = delete;
    ScratchDir &operator=(const ScratchDir &) = delete;
    const std::string &path() const { return path_; }

private:
    std::string path_;
};

// Event loops that miss their stop event wait for ever; a step that takes
// this long (valgrind included) is such a loop, and the run fails at once
// instead of at the test's time limit.
constexpr unsigned kStepSeconds = 60;

void report_hung_step(int)
{
    static constexpr char message[] = "velumo_session: a step did not finish: hung event loop\n";
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, message, sizeof message - 1);
    _exit(3);
}

struct Point {
    uint16_t x, y;
};

// The middle of an object's record, kept on the screen.
Point middle_of(const vel_object &o)
{
    const auto on_screen = [](int64_t v, int64_t extent) {
        return static_cast<uint16_t>(std::clamp<int64_t>(v, 1, extent - 2));
    };
    return {on_screen(int64_t{o.x} + o.width / 2, kScreenWidth),
            on_screen(int64_t{o.y} + o.height / 2, kScreenHeight)};
}

void push_button(uint8_t type, Point p)
{
    SDL_Event event{};
    event.button.type = type;
    event.button.button = SDL_BUTTON_LEFT;
    event.button.state = type == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
    event.button.x = p.x;
    event.button.y = p.y;
    SDL_PushEvent(&event);
}

SDL_Event key_event(uint8_t type, SDLKey sym, SDLMod mod)
{
    SDL_Event event{};
    event.key.type = type;
    event.key.state = type == SDL_KEYDOWN ? SDL_PRESSED : SDL_RELEASED;
    event.key.keysym.sym = sym;
    event.key.keysym.mod = mod;
    return event;
}

struct Key {
    SDLKey sym;
    SDLMod mod;
};

// Mostly letters, with enough deletions and cursor moves that texts keep
// changing instead of filling up once and staying full.
Key random_key(Random &rng)
{
    static constexpr SDLKey arrows[] = {SDLK_UP, SDLK_DOWN, SDLK_LEFT, SDLK_RIGHT};
    const uint32_t roll = rng.below(100);
    SDLKey sym;
    if (roll < 44)
        sym = static_cast<SDLKey>(SDLK_a + rng.below(26));
    else if (roll < 52)
        sym = static_cast<SDLKey>(SDLK_0 + rng.below(10));
    else if (roll < 58)
        sym = SDLK_SPACE;
    else if (roll < 74)
        sym = SDLK_BACKSPACE;
    else if (roll < 82)
        sym = SDLK_DELETE;
    else if (roll < 95)
        sym = rng.pick(arrows);
    else if (roll < 99)
        sym = SDLK_RETURN;
    else
        sym = SDLK_INSERT;
    return {sym, rng.percent(10) ? KMOD_LSHIFT : KMOD_NONE};
}

// Words, line feeds, now and then a word too long for any line and the
// umlaut bytes the formatter converts.
std::string random_text(Random &rng, uint32_t length)
{
    static constexpr const char *words[] = {"form",   "window", "velumo", "text", "a",  "line",
                                            "button", "entry",  "chain",  "of",   "the"};
    std::string text;
    while (text.size() < length) {
        const uint32_t roll = rng.below(100);
        if (roll < 70)
            text += rng.pick(words);
        else if (roll < 80)
            text += std::string(1 + rng.below(90), static_cast<char>('a' + rng.below(26)));
        else if (roll < 85)
            text += static_cast<char>(rng.pick({'\x84', '\x94', '\x81'}));
        else
            text += std::to_string(rng.next() % 100000);
        text += rng.percent(8) ? '\n' : ' ';
    }
    text.resize(length);
    return text;
}

// ------------------------------------------------------------------ start-up

std::unique_ptr<vel_context> open_display()
{
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    if (SDL_Init(SDL_INIT_VIDEO) != 0 || TTF_Init() != 0) {
        std::fprintf(stderr, "velumo_session: cannot start SDL: %s\n", SDL_GetError());
        return nullptr;
    }
    auto ctx = std::make_unique<vel_context>();
    ctx->screen = SDL_SetVideoMode(kScreenWidth, kScreenHeight, 32, SDL_SWSURFACE);
    ctx->font = TTF_OpenFont(kFontPath, kFontSize);
    if (!ctx->screen || !ctx->font) {
        std::fprintf(stderr, "velumo_session: no screen or font: %s\n", SDL_GetError());
        if (ctx->font) TTF_CloseFont(ctx->font);
        TTF_Quit();
        SDL_Quit();
        return nullptr;
    }
    ctx->screen_width = kScreenWidth;
    ctx->screen_height = kScreenHeight;
    ctx->screen_rect = SDL_Rect{0, 0, kScreenWidth, kScreenHeight};
    ctx->background_colour = {250, 250, 250};
    ctx->mark_colour_a = {200, 40, 40};
    ctx->mark_colour_b = {40, 40, 200};
    ctx->scroll_step = 10;
    ctx->texts_loaded = 1;
    return ctx;
}

// ------------------------------------------------------------------ session

struct Counts {
    uint32_t keystrokes = 0;
    uint32_t clicks = 0;
    uint32_t loops = 0;
    uint32_t drained = 0;
    uint32_t unstoppable = 0;
};

// Drives one context through a script.  Keys and clicks are queued as SDL
// events and consumed by a selection loop that a click on frame button 7
// ends; every other step first lets the queue run dry, so the positions
// predicted for queued clicks stay true until the loop handles them.
class Session {
public:
    Session(vel_context &ctx, Random &rng, std::string dir)
        : ctx_(ctx), rng_(rng), dir_(std::move(dir))
    {
    }

    void start()
    {
        make_file_selector();
        stream_.reset(strdup(kChainStream));
        ctx_.objects[kChainHead].stream = stream_.get();
        ctx_.window_to_activate = kMainWindow;
        vel_select_window(&ctx_);
    }

    void step()
    {
        const uint32_t roll = rng_.below(100);
        if (roll < 50)
            queue_key();
        else if (roll < 60)
            queue_click();
        else if (roll < 68)
            select_click();
        else if (roll < 74)
            switch_window();
        else if (roll < 80)
            redraw();
        else if (roll < 88)
            frame_action();
        else if (roll < 93)
            load_text();
        else if (roll < 95)
            open_menu();
        else if (roll < 96)
            replace_stream();
        else if (roll < 97)
            file_selector();
        else
            dialog();
        ensure_active_window();
    }

    // Runs the queue dry and hands the chain stream back before vel_close.
    void finish()
    {
        flush();
        ctx_.objects[kChainHead].stream = nullptr;
        stream_.reset();
    }

    const Counts &counts() const { return counts_; }

private:
    // The selection loop can hold one queue's worth of events (SDL keeps 127).
    static constexpr uint32_t kQueueLimit = 100;

    struct FreeDeleter {
        void operator()(char *p) const { std::free(p); }
    };

    vel_object &object(uint32_t n) { return ctx_.objects[n]; }

    uint32_t hit(Point p) { return vel_test_all_objects(&ctx_, p.x, p.y); }

    void click(Point p)
    {
        push_button(SDL_MOUSEBUTTONDOWN, p);
        push_button(SDL_MOUSEBUTTONUP, p);
        pending_ += 2;
        ++counts_.clicks;
    }

    void queue_key()
    {
        const Key key = random_key(rng_);
        SDL_Event down = key_event(SDL_KEYDOWN, key.sym, key.mod);
        SDL_Event up = key_event(SDL_KEYUP, key.sym, key.mod);
        SDL_PushEvent(&down);
        SDL_PushEvent(&up);
        pending_ += 2;
        ++counts_.keystrokes;
        if (pending_ >= kQueueLimit) flush();
    }

    Point random_point()
    {
        return {static_cast<uint16_t>(rng_.below(kScreenWidth)),
                static_cast<uint16_t>(rng_.below(kScreenHeight))};
    }

    Point random_object_point()
    {
        if (rng_.percent(20)) return random_point();
        return middle_of(object(1 + rng_.below(ctx_.object_count)));
    }

    // A click anywhere but on the close button, which would end the loop early.
    void queue_click()
    {
        const Point p = random_object_point();
        if (hit(p) != kCloseButton) click(p);
        if (pending_ >= kQueueLimit) flush();
    }

    // Where the stop click goes; none when button 7 cannot be hit.
    std::optional<Point> close_button_point()
    {
        const vel_object &button = object(kCloseButton);
        const Point p{static_cast<uint16_t>(button.x + 8), static_cast<uint16_t>(button.y + 8)};
        if (hit(p) != kCloseButton) return std::nullopt;
        return p;
    }

    // Drops what a loop left in the queue.
    void drain()
    {
        SDL_Event event;
        while (SDL_PollEvent(&event) != 0)
            ++counts_.drained;
        pending_ = 0;
    }

    // Runs the selection loop over the queued events, ended by a click on
    // frame button 7.  With `selecting`, a click there is queued before that
    // stop; when the loop returns the object hit, the session selects it as
    // an application would.
    void flush(std::optional<Point> selecting = std::nullopt)
    {
        if (pending_ == 0 && !selecting) return;
        const std::optional<Point> stop = close_button_point();
        if (!stop) {
            ++counts_.unstoppable;
            drain();
            return;
        }
        int32_t target = -1;
        if (selecting) {
            const uint32_t object_hit = hit(*selecting);
            if (object_hit > VEL_FRAME_BUTTONS) target = static_cast<int32_t>(object_hit);
            click(*selecting);
        }
        push_button(SDL_MOUSEBUTTONUP, *stop);
        const uint32_t result = vel_get_mouse_selection(&ctx_, target, -1);
        ++counts_.loops;
        drain();
        if (target > 0 && result == static_cast<uint32_t>(target)) {
            ctx_.window_to_activate = result;
            vel_select_window(&ctx_);
        }
    }

    void select_click() { flush(random_object_point()); }

    void switch_window()
    {
        flush();
        ctx_.window_to_activate = rng_.percent(80)
                                      ? rng_.pick(kWindows)
                                      : rng_.pick({kNotesText, kNameField, kInnerField, kAgeField});
        vel_select_window(&ctx_);
    }

    void redraw()
    {
        flush();
        if (rng_.percent(80))
            vel_draw_all_objects(&ctx_, 1, 1);
        else
            vel_draw_and_screenup_selected_window(&ctx_);
    }

    // Resize and scroll presses, mode switch, close, and a move whose target
    // press is queued first, so that it never waits.
    void frame_action()
    {
        flush();
        static constexpr uint32_t pressed[] = {2, 3, 5, 6};
        static constexpr uint32_t released[] = {1, 4, 7};
        if (rng_.percent(70)) {
            ctx_.window_to_activate = rng_.pick(pressed);
            vel_exa_left_pressed(&ctx_);
        } else {
            ctx_.window_to_activate = rng_.pick(released);
            if (ctx_.window_to_activate == 1) push_button(SDL_MOUSEBUTTONDOWN, random_point());
            vel_exa_left_released(&ctx_);
            drain();
        }
        ctx_.window_to_activate = 0;
    }

    void load_text()
    {
        flush();
        const uint32_t holder = rng_.pick(kTextHolders);
        // Now and then longer than a text record holds.
        const std::string text = random_text(rng_, 1 + rng_.below(rng_.percent(10) ? 1200 : 400));
        if (rng_.percent(20))
            vel_load_window_text_buttons(&ctx_, holder, text.c_str(), kOkButton, kMenuOpen);
        else
            vel_load_window_text(&ctx_, holder, text.c_str());
        if (rng_.percent(85)) vel_reset_textobject(&ctx_, 1, holder);
        if (rng_.percent(30)) {
            const std::string age = std::to_string(rng_.below(1000));
            vel_object &field = object(kAgeField);
            std::memset(field.label, 0, sizeof field.label);
            age.copy(field.label, sizeof field.label - 1);
            vel_fill_form_with_dummies(&ctx_, field.label, kAgeField, 3, '0');
            vel_reset_textobject(&ctx_, 0, kAgeField);
        }
        if (rng_.percent(50)) vel_draw_all_objects(&ctx_, 1, 1);
    }

    // The pointer is put on an entry and a release queued there, so the
    // menu's own loop ends at once.
    void open_menu()
    {
        flush();
        const Point p = middle_of(object(rng_.pick({kMenuOpen, kMenuQuit})));
        SDL_WarpMouse(p.x, p.y);
        push_button(SDL_MOUSEBUTTONUP, p);
        vel_move_out_menu(&ctx_, kMenu, rng_.below(2));
        drain();
        vel_draw_all_objects(&ctx_, 0, 1);
    }

    // A new external stream for the chain, read back from a file without
    // a terminating NUL; the old one is freed.
    void replace_stream()
    {
        flush();
        const std::string path = dir_ + "/stream.txt";
        {
            std::ofstream out(path, std::ios::binary);
            out << random_text(rng_, rng_.below(6000));
        }
        char *stream = vel_read_external_stream(path.c_str());
        if (!stream) return;
        ctx_.objects[kChainHead].stream = stream;
        stream_.reset(stream);
        vel_draw_all_objects(&ctx_, 1, 1);
    }

    // A list under the windows, built in the spare records at run time: the
    // list, its template row and the rows made from the template.
    void make_file_selector()
    {
        list_ = ctx_.object_count + 1;
        ctx_.object_count += kSpareObjects;
        vel_object &list = object(list_);
        list.type = VEL_TYPE_LABEL;
        list.x = 430;
        list.y = 290;
        list.width = 200;
        list.height = 180;
        list.fill_r = list.fill_g = list.fill_b = 230;
        list.border_style = 1;
        list.dep_objs[0] = list_ + 1;
        vel_object &row = object(list_ + 1);
        row.type = VEL_TYPE_LABEL;
        row.master = list_;
        row.x = 435;
        row.y = 295;
        row.width = 180;
        row.height = 18;
        row.fill_r = row.fill_g = row.fill_b = 255;
        row.margin_left = 2;
        vel_prepare_fileselector(&ctx_, list_, kSpareObjects - 2);
    }

    // Lists the scratch directory, the current one, which grows by a few
    // files each time, past the hundred names the listing keeps.
    void file_selector()
    {
        flush();
        for (int k = 0; k < 3; ++k) {
            const std::ofstream empty_file(dir_ + "/file_" + std::to_string(files_written_++) +
                                           ".txt");
        }
        vel_read_app_dir(&ctx_);
        vel_load_dir_entries(&ctx_, list_);
        vel_draw_all_objects(&ctx_, 0, 1);
    }

    // A modal question on a window made active first, so its close button
    // is known; the dialog closes the window when the loop ends there.
    void dialog()
    {
        flush();
        ctx_.window_to_activate = rng_.pick(kWindows);
        vel_select_window(&ctx_);
        const std::optional<Point> stop = close_button_point();
        if (!stop) {
            ++counts_.unstoppable;
            return;
        }
        for (uint32_t k = rng_.below(6); k > 0; --k)
            queue_key();
        push_button(SDL_MOUSEBUTTONUP, *stop);
        if (rng_.percent(50))
            vel_decide_window(&ctx_, ctx_.active_window, kOkButton, kNameField);
        else
            vel_notice_window(&ctx_, ctx_.active_window, kOkButton);
        ++counts_.loops;
        drain();
        vel_draw_all_objects(&ctx_, 0, 1);
    }

    // The script always keeps one window open, as an application would.
    void ensure_active_window()
    {
        if (ctx_.active_window != 0) return;
        flush();
        ctx_.window_to_activate = rng_.pick(kWindows);
        vel_select_window(&ctx_);
    }

    vel_context &ctx_;
    Random &rng_;
    std::string dir_;
    std::unique_ptr<char, FreeDeleter> stream_;
    uint32_t pending_ = 0;
    uint32_t list_ = 0;
    uint32_t files_written_ = 0;
    Counts counts_;
};

// ------------------------------------------------------------------ soak

// One keystroke along the path the selection loop takes: translation at
// key-down, hand-over at key-up, then the editor.
void type(vel_context &ctx, Key key)
{
    ctx.event = key_event(SDL_KEYDOWN, key.sym, key.mod);
    vel_getfirstkeyinformation(&ctx);
    ctx.event = key_event(SDL_KEYUP, key.sym, key.mod);
    vel_getfinalkeyinformation(&ctx);
    vel_get_text(&ctx);
}

// Types into each editable object in turn, reaching it by activating its
// window and selecting it; texts are replaced now and then so that they do
// not fill up for good.
bool soak(vel_context &ctx, Random &rng, uint32_t keystrokes)
{
    struct Focus {
        uint32_t window, field;
    };
    static constexpr Focus focus_order[] = {{kMainWindow, kNotesText},
                                            {kMainWindow, kNameField},
                                            {kMainWindow, kInnerField},
                                            {kSettingsWindow, kAgeField}};
    constexpr uint32_t focus_every = 1000;
    constexpr uint32_t new_text_every = 5000;
    constexpr uint32_t sample_every = 10000;
    constexpr uint32_t warm_up = 1000;
    // The text line cache may fill up to its bound on top of the 1 MiB.
    constexpr long allowed_growth = (1L << 20) + VEL_TEXT_CACHE_DEFAULT_LIMIT;

    long after_warm_up = 0;
    std::string samples;
    for (uint32_t i = 0; i < keystrokes; ++i) {
        if (i % focus_every == 0) {
            const Focus &focus = focus_order[(i / focus_every) % std::size(focus_order)];
            ctx.window_to_activate = focus.window;
            vel_select_window(&ctx);
            ctx.window_to_activate = focus.field;
            vel_select_window(&ctx);
        }
        if (i % new_text_every == 0) {
            const std::string text = random_text(rng, 200 + rng.below(600));
            vel_load_window_text(&ctx, kNotesText, text.c_str());
            vel_reset_textobject(&ctx, 1, kNotesText);
        }
        type(ctx, random_key(rng));
        vel_draw_all_objects(&ctx, 1, 1);
        if (i + 1 == warm_up) after_warm_up = resident_bytes();
        if ((i + 1) % sample_every == 0) samples += " " + std::to_string(resident_bytes() / 1024);
    }
    const long at_end = resident_bytes();
    std::fprintf(stderr,
                 "velumo_session: resident memory %ld KiB after %u keystrokes, %ld KiB after "
                 "%u (growth %ld KiB, allowed %ld KiB)\n",
                 after_warm_up / 1024, warm_up, at_end / 1024, keystrokes,
                 (at_end - after_warm_up) / 1024, allowed_growth / 1024);
    std::fprintf(stderr, "velumo_session: resident KiB every %u keystrokes:%s\n", sample_every,
                 samples.c_str());
    return keystrokes < warm_up || at_end - after_warm_up <= allowed_growth;
}

// ------------------------------------------------------------------ main

struct Options {
    uint32_t events = 10000;
    uint32_t soak_keystrokes = 0;
    uint64_t seed = kDefaultSeed;
    bool verbose = false;
};

std::optional<Options> parse(int argc, char **argv)
{
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        const bool has_value = i + 1 < argc;
        if (arg == "--verbose") {
            options.verbose = true;
        } else if (arg == "--events" && has_value) {
            options.events = static_cast<uint32_t>(std::strtoul(argv[++i], nullptr, 10));
        } else if (arg == "--soak" && has_value) {
            options.soak_keystrokes = static_cast<uint32_t>(std::strtoul(argv[++i], nullptr, 10));
        } else if (arg == "--seed" && has_value) {
            options.seed = std::strtoull(argv[++i], nullptr, 0);
        } else {
            std::fprintf(stderr, "usage: velumo_session [--events N] [--soak N] [--seed S] "
                                 "[--verbose]\n");
            return std::nullopt;
        }
    }
    return options;
}

} // namespace

int main(int argc, char **argv)
{
    const std::optional<Options> options = parse(argc, argv);
    if (!options) return 2;
    if (!options->verbose && !std::freopen("/dev/null", "w", stdout)) return 2;

    ScratchDir dir;
    if (dir.path().empty()) {
        std::fprintf(stderr, "velumo_session: no scratch directory\n");
        return 1;
    }
    // The file selector lists the current directory: the session's own.
    if (chdir(dir.path().c_str()) != 0) return 1;
    std::unique_ptr<vel_context> ctx = open_display();
    if (!ctx) return 1;
    const std::string form = write_sample_form(dir.path());
    const std::string texts = dir.path() + "/" + kTextFile;
    if (vel_load_form(ctx.get(), kSpareObjects, kSpareTexts, form.c_str(), texts.c_str()) != 1) {
        std::fprintf(stderr, "velumo_session: cannot load the sample form\n");
        return 1;
    }

    std::signal(SIGALRM, report_hung_step);
    Random rng(options->seed);
    const auto started = std::chrono::steady_clock::now();
    bool passed = true;
    if (options->soak_keystrokes != 0) {
        passed = soak(*ctx, rng, options->soak_keystrokes);
    } else {
        const long descriptors = open_descriptors();
        Session session(*ctx, rng, dir.path());
        session.start();
        for (uint32_t i = 0; i < options->events; ++i) {
            alarm(kStepSeconds);
            session.step();
        }
        alarm(0);
        session.finish();
        const Counts &c = session.counts();
        std::fprintf(stderr,
                     "velumo_session: %u steps: %u keystrokes, %u clicks, %u selection loops, "
                     "%u events left over, %u loops without a stop button; fingerprint %016llx\n",
                     options->events, c.keystrokes, c.clicks, c.loops, c.drained, c.unstoppable,
                     static_cast<unsigned long long>(fingerprint(*ctx)));
        const long leaked = open_descriptors() - descriptors;
        if (leaked != 0) {
            std::fprintf(stderr, "velumo_session: %ld file descriptors left open\n", leaked);
            passed = false;
        }
        if (c.unstoppable != 0) passed = false;
    }
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - started;
    std::fprintf(stderr, "velumo_session: %.2f s\n", took.count());
    vel_close(ctx.get());
    return passed ? 0 : 1;
}
