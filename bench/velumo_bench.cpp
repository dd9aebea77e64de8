// velumo's benchmarks: redraws against the floor (the same pixels put on the
// screen straight through SDL), formatting, editing, hit testing, start-up.
#include "floor.hpp"
#include "model/text_cache.hpp"

#include "demo.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace velumo::bench {
namespace {

namespace fs = std::filesystem;

constexpr const char *kFontPath = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr int kWidth = 800, kHeight = 600;
constexpr vel_rgb kBackground{244, 244, 240};

std::string read_file(const fs::path &path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// SDL on the dummy driver with one 800 x 600 x 32 screen for the whole run.
struct Display {
    Display()
    {
        setenv("SDL_VIDEODRIVER", "dummy", 1);
        if (SDL_Init(SDL_INIT_VIDEO) != 0 || TTF_Init() != 0) throw std::runtime_error("no SDL");
        screen = SDL_SetVideoMode(kWidth, kHeight, 32, SDL_SWSURFACE);
        font = TTF_OpenFont(kFontPath, 12);
        if (screen == nullptr || font == nullptr) throw std::runtime_error("no screen or font");
    }
    SDL_Surface *screen;
    TTF_Font *font;
};

Display &display()
{
    static Display d;
    return d;
}

// A context on the shared display; the form is released at the end, the
// display stays.
class Session {
public:
    Session() : ctx_(std::make_unique<vel_context>())
    {
        vel_context &c = *ctx_;
        c.screen = display().screen;
        c.font = display().font;
        c.screen_width = kWidth;
        c.screen_height = kHeight;
        c.screen_rect = SDL_Rect{0, 0, kWidth, kHeight};
        c.background_colour = kBackground;
        c.mark_colour_a = {200, 40, 40};
        c.mark_colour_b = {40, 40, 200};
        c.scroll_step = 10;
        c.texts_loaded = 1;
    }
    ~Session()
    {
        SDL_FreeSurface(ctx_->text_surface);
        vel_unload_form(ctx_.get());
    }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;
    vel_context &ctx() { return *ctx_; }

    void load(const std::string &form, const std::string &texts)
    {
        if (vel_load_form(ctx_.get(), 0, 0, form.c_str(), texts.c_str()) != 1)
            throw std::runtime_error("cannot load " + form);
    }
    void activate(uint32_t window)
    {
        ctx_->window_to_activate = window;
        vel_select_window(ctx_.get());
    }

private:
    std::unique_ptr<vel_context> ctx_;
};

// The demo as it starts: the story flowed, the newspaper and notes open.
class Demo : public Session {
public:
    Demo() : story_(read_file(fs::path(VELUMO_DEMO_TEXTS) / "story.txt"))
    {
        load(DEMO_FORM_FILE, DEMO_TEXT_FILE);
        ctx().objects[DEMO_STORY].stream = story_.data();
        vel_draw_all_objects(&ctx(), 1, 0);
        activate(DEMO_NEWSPAPER);
        activate(DEMO_NOTES);
    }
    ~Demo() { ctx().objects[DEMO_STORY].stream = nullptr; }

private:
    std::string story_;
};

// Form files written into a temporary directory.
class Files {
public:
    Files() : dir_(fs::temp_directory_path() / ("velumo_bench_" + std::to_string(getpid())))
    {
        fs::create_directories(dir_);
    }
    ~Files() { fs::remove_all(dir_); }
    std::string path(const std::string &name) const { return (dir_ / name).string(); }

private:
    fs::path dir_;
};

Files &files()
{
    static Files f;
    return f;
}

void write_records(const std::string &path, const void *data, std::size_t bytes)
{
    std::ofstream out(path, std::ios::binary);
    out.write(static_cast<const char *>(data), static_cast<std::streamsize>(bytes));
}

void set_label(char (&field)[VEL_STRING_BYTES], const std::string &text)
{
    std::snprintf(field, sizeof field, "%s", text.c_str());
}

// A generated form of `count` objects (a multiple of 10 after the frame
// buttons): windows holding two labels, an entry field and a text area that
// holds five more labels.  Returns the form's path; the texts are "texts".
std::string generated_form(uint32_t count)
{
    const std::string path = files().path("generated_" + std::to_string(count) + ".vfm");
    if (fs::exists(path)) return path;
    std::vector<vel_object_file_rec> records(count);
    const auto at = [&records](uint32_t n) -> vel_object_file_rec & { return records[n - 1]; };
    for (uint32_t n = 1; n <= VEL_FRAME_BUTTONS; ++n) {
        at(n).width = at(n).height = VEL_FRAME_BUTTON_SIZE;
        at(n).type = VEL_TYPE_LABEL;
        at(n).fill_r = at(n).fill_g = at(n).fill_b = 200;
        set_label(at(n).label, std::to_string(n));
    }
    for (uint32_t w = VEL_FRAME_BUTTONS + 1; w + 9 <= count; w += 10) {
        const uint32_t group = (w - VEL_FRAME_BUTTONS - 1) / 10;
        vel_object_file_rec &win = at(w);
        win.type = VEL_TYPE_WINDOW;
        win.x = 20 + group * 37 % 500, win.y = 30 + group * 23 % 300;
        win.width = 280, win.height = 240;
        win.margin_left = win.margin_right = win.margin_top = win.margin_bottom = 4;
        win.fill_r = 230, win.fill_g = 230, win.fill_b = 250;
        win.border_style = VEL_BORDER_SHADOW, win.border_inset = 2;
        const uint32_t deps[] = {w + 1, w + 2, w + 3, w + 4};
        for (uint32_t k = 0; k < 4; ++k)
            win.dep_objs[k] = deps[k];
        for (uint32_t k = 0; k < 3; ++k) {
            vel_object_file_rec &o = at(w + 1 + k);
            o.type = k == 2 ? VEL_TYPE_ENTRY : VEL_TYPE_LABEL;
            o.master = w;
            o.x = win.x + 8, o.y = win.y + 8 + 24 * k, o.width = 200, o.height = 20;
            o.fill_r = o.fill_g = o.fill_b = 255;
            o.border_style = VEL_BORDER_FRAME;
            set_label(o.label, "Object " + std::to_string(w + 1 + k));
        }
        vel_object_file_rec &area = at(w + 4);
        area.type = VEL_TYPE_TEXT, area.master = w, area.text_index = 1;
        area.x = win.x + 8, area.y = win.y + 84, area.width = 260, area.height = 140;
        area.margin_left = area.margin_right = area.margin_top = area.margin_bottom = 3;
        area.fill_r = area.fill_g = area.fill_b = 250;
        for (uint32_t k = 0; k < 5; ++k) {
            const uint32_t n = w + 5 + k;
            area.dep_objs[k] = n;
            vel_object_file_rec &o = at(n);
            o.type = VEL_TYPE_LABEL, o.master = w + 4;
            o.x = area.x + 6, o.y = area.y + 30 + 20 * k, o.width = 120, o.height = 18;
            o.fill_r = 240, o.fill_g = 240, o.fill_b = 200;
            set_label(o.label, "Inner " + std::to_string(k));
        }
    }
    write_records(path, records.data(), records.size() * sizeof(vel_object_file_rec));
    return path;
}

std::string one_text(const std::string &name, const std::string &text)
{
    const std::string path = files().path(name);
    vel_text_rec record{};
    std::snprintf(record.text, sizeof record.text, "%s", text.c_str());
    write_records(path, &record, sizeof record);
    return path;
}

// A text of `length` characters: words of four to nine letters.
std::string prose(std::size_t length)
{
    std::mt19937 random(7);
    std::string out;
    while (out.size() < length) {
        if (!out.empty()) out += random() % 12 == 0 ? '\n' : ' ';
        const std::size_t letters = 4 + random() % 6;
        for (std::size_t k = 0; k < letters; ++k)
            out += static_cast<char>('a' + random() % 26);
    }
    return out.substr(0, length);
}

// A window holding one text area of 999 characters, the cursor in it.
class LongText : public Session {
public:
    static constexpr uint32_t kWindow = 8, kArea = 9;
    LongText()
    {
        std::vector<vel_object_file_rec> records(kArea);
        vel_object_file_rec &win = records[kWindow - 1];
        win.type = VEL_TYPE_WINDOW;
        win.x = 40, win.y = 40, win.width = 720, win.height = 520;
        win.margin_left = win.margin_right = win.margin_top = win.margin_bottom = 5;
        win.fill_r = win.fill_g = win.fill_b = 255;
        win.dep_objs[0] = kArea;
        vel_object_file_rec &area = records[kArea - 1];
        area.type = VEL_TYPE_TEXT, area.master = kWindow, area.text_index = 1;
        area.editable = 1;
        area.x = 50, area.y = 50, area.width = 700, area.height = 500;
        area.margin_left = area.margin_right = area.margin_top = area.margin_bottom = 4;
        area.fill_r = area.fill_g = area.fill_b = 250;
        area.text_length = 999;
        const std::string form = files().path("long_text.vfm");
        write_records(form, records.data(), records.size() * sizeof records[0]);
        load(form, one_text("long_text.vtx", prose(999)));
        activate(kWindow);
        vel_draw_all_objects(&ctx(), 1, 0);
    }
};

// ------------------------------------------------------------ redraws

void BM_FullRedrawFormatting(benchmark::State &state)
{
    Demo demo;
    for (auto _ : state)
        vel_draw_all_objects(&demo.ctx(), 1, 0);
}
BENCHMARK(BM_FullRedrawFormatting);

void BM_FullRedraw(benchmark::State &state)
{
    Demo demo;
    for (auto _ : state)
        vel_draw_all_objects(&demo.ctx(), 0, 0);
    state.counters["cache_KiB"] = static_cast<double>(detail::text_cache_bytes(&demo.ctx())) / 1024;
}
BENCHMARK(BM_FullRedraw);

void BM_FullRedrawUncached(benchmark::State &state)
{
    Demo demo;
    demo.ctx().text_cache_limit = VEL_TEXT_CACHE_OFF;
    for (auto _ : state)
        vel_draw_all_objects(&demo.ctx(), 0, 0);
}
BENCHMARK(BM_FullRedrawUncached);

// The floor of the full redraw: its fills, blits and line pixels replayed.
void BM_FullRedrawFloor(benchmark::State &state)
{
    Demo demo;
    vel_clear_text_cache(&demo.ctx());
    const DisplayList list(demo.ctx(), kBackground,
                           [&demo] { vel_draw_all_objects(&demo.ctx(), 0, 0); });
    if (!list.matches()) state.SkipWithError("the floor's pixels differ from the library's");
    for (auto _ : state)
        list.replay(demo.ctx().screen);
    state.counters["fills"] = static_cast<double>(list.fills());
    state.counters["blits"] = static_cast<double>(list.blits());
    state.counters["pixel_stores"] = static_cast<double>(list.stores());
}
BENCHMARK(BM_FullRedrawFloor);

// The naive floor: the same, every line rendered again before its blit.
void BM_FullRedrawFloorRendering(benchmark::State &state)
{
    Demo demo;
    vel_clear_text_cache(&demo.ctx());
    const DisplayList list(demo.ctx(), kBackground,
                           [&demo] { vel_draw_all_objects(&demo.ctx(), 0, 0); });
    for (auto _ : state)
        list.replay_rendering(demo.ctx().screen);
}
BENCHMARK(BM_FullRedrawFloorRendering);

void BM_ActiveWindowRedraw(benchmark::State &state)
{
    Demo demo;
    for (auto _ : state)
        vel_draw_selected_window(&demo.ctx());
}
BENCHMARK(BM_ActiveWindowRedraw);

void BM_ActiveWindowFloor(benchmark::State &state)
{
    Demo demo;
    vel_clear_text_cache(&demo.ctx());
    const DisplayList list(demo.ctx(), kBackground,
                           [&demo] { vel_draw_selected_window(&demo.ctx()); });
    if (!list.matches()) state.SkipWithError("the floor's pixels differ from the library's");
    for (auto _ : state)
        list.replay(demo.ctx().screen);
}
BENCHMARK(BM_ActiveWindowFloor);

// The window of 999 characters in 40-odd lines: text dominates this redraw.
void BM_LongTextRedraw(benchmark::State &state)
{
    LongText text;
    text.ctx().text_cache_limit = static_cast<uint32_t>(state.range(0));
    for (auto _ : state)
        vel_draw_all_objects(&text.ctx(), 0, 0);
}
BENCHMARK(BM_LongTextRedraw)->ArgName("cache_limit")->Arg(0)->Arg(VEL_TEXT_CACHE_OFF);

void BM_LongTextFloor(benchmark::State &state)
{
    LongText text;
    vel_clear_text_cache(&text.ctx());
    const DisplayList list(text.ctx(), kBackground,
                           [&text] { vel_draw_all_objects(&text.ctx(), 0, 0); });
    if (!list.matches()) state.SkipWithError("the floor's pixels differ from the library's");
    for (auto _ : state)
        list.replay(text.ctx().screen);
}
BENCHMARK(BM_LongTextFloor);

// ------------------------------------------------------------ text

void BM_Format999Characters(benchmark::State &state)
{
    LongText text;
    for (auto _ : state)
        benchmark::DoNotOptimize(vel_format_object_text(&text.ctx(), LongText::kArea));
}
BENCHMARK(BM_Format999Characters);

void BM_ChainFlow12KB(benchmark::State &state)
{
    Demo demo;
    std::string stream = prose(12 * 1024);
    demo.ctx().objects[DEMO_STORY].stream = stream.data();
    for (auto _ : state)
        benchmark::DoNotOptimize(vel_format_stream_to_linked_objects(&demo.ctx(), DEMO_STORY));
    demo.ctx().objects[DEMO_STORY].stream = nullptr;
}
BENCHMARK(BM_ChainFlow12KB);

// One key in the middle of the 999 characters, with the redraw that
// vel_get_text makes: an 'x' typed, then taken back with Backspace.
void BM_Keystroke999Characters(benchmark::State &state)
{
    LongText text;
    vel_context &ctx = text.ctx();
    ctx.cursor_object = LongText::kArea;
    const auto key = [&ctx](uint32_t code, uint32_t printable) {
        ctx.final_key = code;
        ctx.key_printable = printable;
        vel_get_text(&ctx);
    };
    constexpr uint32_t down = 274, backspace = 8;
    for (int line = 0; line < 6; ++line)
        key(down, 0);
    bool typed = false;
    for (auto _ : state) {
        if (typed)
            key(backspace, 0);
        else
            key('x', 1);
        typed = !typed;
    }
}
BENCHMARK(BM_Keystroke999Characters)->Unit(benchmark::kMicrosecond);

// ------------------------------------------------------------ hit testing, start-up

void BM_HitTest1000Points(benchmark::State &state)
{
    Session session;
    session.load(generated_form(10000), one_text("texts.vtx", prose(400)));
    session.activate(VEL_FRAME_BUTTONS + 1);
    std::mt19937 random(3);
    std::vector<std::pair<int, int>> points(1000);
    for (auto &[x, y] : points)
        x = static_cast<int>(random() % kWidth), y = static_cast<int>(random() % kHeight);
    for (auto _ : state)
        for (const auto &[x, y] : points)
            benchmark::DoNotOptimize(vel_test_all_objects(&session.ctx(), x, y));
}
BENCHMARK(BM_HitTest1000Points)->Unit(benchmark::kMillisecond);

void BM_StartUp(benchmark::State &state)
{
    const auto count = static_cast<uint32_t>(state.range(0));
    const std::string form = generated_form(count);
    const std::string texts = one_text("texts.vtx", prose(400));
    for (auto _ : state) {
        Session session;
        session.load(form, texts);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_StartUp)
    ->Arg(1007)
    ->Arg(10007)
    ->Arg(100007)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

} // namespace
} // namespace velumo::bench

BENCHMARK_MAIN();
