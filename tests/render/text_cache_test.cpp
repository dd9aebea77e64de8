// The text cache: redraws from cached lines are pixel for pixel redraws that
// render every line, at 8, 16 and 32 bits, over the demo's form and random
// forms; the byte bound, text_surface and when the cache is cleared.
#include "model/text_cache.hpp"
#include "velumo_test.hpp"

#ifdef VELUMO_DEMO_FORM
#include "demo.h"
#endif

#include <cstring>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace velumo::test {
namespace {

using velumo::detail::text_cache_bytes;

constexpr vel_rgb kBackground{244, 244, 240};
constexpr int kDepths[] = {8, 16, 32};

class TextCache : public ScreenTest {
protected:
    // A display of the given depth and size in place of the fixture's.
    void use_display(int bits, int width, int height)
    {
        ctx().screen = SDL_SetVideoMode(width, height, bits, SDL_SWSURFACE);
        ASSERT_NE(ctx().screen, nullptr) << SDL_GetError();
        ctx().screen_width = static_cast<uint32_t>(width);
        ctx().screen_height = static_cast<uint32_t>(height);
        ctx().screen_rect = SDL_Rect{0, 0, static_cast<Uint16>(width), static_cast<Uint16>(height)};
        ctx().background_colour = kBackground;
    }

    std::vector<uint8_t> pixels()
    {
        SDL_Surface *s = ctx().screen;
        const std::size_t row = static_cast<std::size_t>(s->w) * s->format->BytesPerPixel;
        std::vector<uint8_t> out(row * static_cast<std::size_t>(s->h));
        for (int y = 0; y < s->h; ++y)
            std::memcpy(out.data() + row * static_cast<std::size_t>(y),
                        static_cast<const uint8_t *>(s->pixels) + y * s->pitch, row);
        return out;
    }

    std::vector<uint8_t> redraw()
    {
        fill_screen(kBackground);
        vel_draw_all_objects(&ctx(), 1, 0);
        return pixels();
    }

    // The screen as every line rendered anew shows it, then from the cache
    // as it stands (lines of an earlier state must not show), from a cold
    // and a warm cache, from a cache too small for the screen's lines, and
    // last through vel_draw_and_screenup_selected_window.
    void expect_identical_redraws(const std::string &what)
    {
        SCOPED_TRACE(what);
        ctx().text_cache_limit = VEL_TEXT_CACHE_OFF;
        redraw(); // settles the clamps, fitting and centring that drawing writes
        const std::vector<uint8_t> rendered = redraw();

        ctx().text_cache_limit = 0;
        EXPECT_TRUE(redraw() == rendered) << "cache as it stands";
        vel_clear_text_cache(&ctx());
        EXPECT_TRUE(redraw() == rendered) << "cold cache";
        const std::size_t held = text_cache_bytes(&ctx());
        EXPECT_GT(held, 0u);
        EXPECT_LE(held, std::size_t{VEL_TEXT_CACHE_DEFAULT_LIMIT});
        EXPECT_TRUE(redraw() == rendered) << "warm cache";
        EXPECT_EQ(text_cache_bytes(&ctx()), held) << "a warm redraw adds nothing";

        constexpr uint32_t small = 16 * 1024;
        ctx().text_cache_limit = small;
        EXPECT_TRUE(redraw() == rendered) << "a cache smaller than the screen's lines";
        EXPECT_TRUE(redraw() == rendered) << "the same, again";
        EXPECT_LE(text_cache_bytes(&ctx()), small);
        ctx().text_cache_limit = 0;

        vel_draw_and_screenup_selected_window(&ctx());
        const std::vector<uint8_t> window_cached = pixels();
        ctx().text_cache_limit = VEL_TEXT_CACHE_OFF;
        vel_draw_and_screenup_selected_window(&ctx());
        EXPECT_TRUE(pixels() == window_cached) << "active window";
        ctx().text_cache_limit = 0;
    }

    void activate(uint32_t window)
    {
        ctx().window_to_activate = window;
        vel_select_window(&ctx());
    }
};

#ifdef VELUMO_DEMO_FORM
std::string read_file(const std::string &path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TEST_F(TextCache, DemoFormIsIdenticalWithAndWithoutTheCache)
{
    const std::string story = read_file(VELUMO_DEMO_TEXTS "/story.txt");
    ASSERT_FALSE(story.empty());
    for (int bits : kDepths) {
        use_display(bits, 800, 600);
        ctx().texts_loaded = 1;
        ASSERT_EQ(vel_load_form(&ctx(), 0, 0, DEMO_FORM_FILE, DEMO_TEXT_FILE), 1);
        ctx().objects[DEMO_STORY].stream = const_cast<char *>(story.c_str());
        for (uint32_t window : {DEMO_NEWSPAPER, DEMO_FILES, DEMO_ABOUT, DEMO_NOTES}) {
            activate(window);
            expect_identical_redraws(std::to_string(bits) + " bits, window " +
                                     std::to_string(window));
        }
        ctx().objects[DEMO_STORY].stream = nullptr;
        vel_unload_form(&ctx());
        EXPECT_EQ(ctx().text_cache, nullptr) << "unloading clears the cache";
    }
}
#endif

// Random forms: windows at random places (some reaching past the screen),
// with nested dependents of every text-bearing type, both fonts, random
// margins, borders, clip modes, centring, colours and texts.
class RandomForm {
public:
    explicit RandomForm(uint32_t seed) : random_(seed) {}

    void build(FormBuilder &form, TextBuilder &texts)
    {
        // All records made first: the references below must stay valid.
        constexpr uint32_t most_objects = VEL_FRAME_BUTTONS + 4 * 11;
        form.object(most_objects);
        for (uint32_t n = 1; n <= VEL_FRAME_BUTTONS; ++n) {
            vel_object_file_rec &b = form.object(n);
            b.width = b.height = VEL_FRAME_BUTTON_SIZE;
            b.type = VEL_TYPE_LABEL;
            set_string(b.label, "x"); // one text in many colours
            colours(b);
        }
        uint32_t next = VEL_FRAME_BUTTONS + 1;
        const uint32_t windows = pick(2, 4);
        for (uint32_t w = 0; w < windows; ++w) {
            const uint32_t window = next++;
            windows_.push_back(window);
            vel_object_file_rec &o = form.object(window);
            o.type = VEL_TYPE_WINDOW;
            o.x = pick(0, 500), o.y = pick(0, 380);
            o.width = pick(120, 400), o.height = pick(80, 300);
            o.window_kind = pick(0, 1);
            o.centred = pick(0, 1);
            common(o, texts);
            uint32_t slot = 0;
            const uint32_t dependents = pick(1, 5);
            for (uint32_t d = 0; d < dependents; ++d) {
                const uint32_t dep = next++;
                o.dep_objs[slot++] = dep;
                vel_object_file_rec &c = form.object(dep);
                dependent(c, form.object(window), window, texts);
                if (c.type == VEL_TYPE_TEXT && pick(0, 1) == 1) {
                    const uint32_t inner = next++;
                    c.dep_objs[0] = inner;
                    dependent(form.object(inner), form.object(dep), dep, texts);
                }
            }
        }
    }

    const std::vector<uint32_t> &windows() const { return windows_; }
    uint32_t pick(uint32_t low, uint32_t high)
    {
        return std::uniform_int_distribution<uint32_t>(low, high)(random_);
    }

private:
    void colours(vel_object_file_rec &o)
    {
        o.fill_r = pick(0, 255), o.fill_g = pick(0, 255), o.fill_b = pick(0, 255);
        o.text_r = pick(0, 255), o.text_g = pick(0, 255), o.text_b = pick(0, 255);
        o.border_r = pick(0, 255), o.border_g = pick(0, 255), o.border_b = pick(0, 255);
    }

    void common(vel_object_file_rec &o, TextBuilder &texts)
    {
        colours(o);
        o.margin_left = pick(0, 12), o.margin_right = pick(0, 12);
        o.margin_top = pick(0, 12), o.margin_bottom = pick(0, 12);
        o.border_style = pick(0, 5);
        o.border_inset = pick(0, 3);
        o.line_spacing = pick(0, 4);
        if (pick(0, 2) == 0) {
            o.font_choice = VEL_FONT_OWN;
            o.font_size = pick(8, 28);
            set_string(o.font_path, kFontPath);
        }
        if (o.type == VEL_TYPE_WINDOW || o.type == VEL_TYPE_TEXT) {
            o.text_index = ++text_count_;
            texts.set(o.text_index, text());
        } else {
            set_string(o.label, words(pick(1, 4)));
        }
    }

    void dependent(vel_object_file_rec &o, const vel_object_file_rec &master, uint32_t number,
                   TextBuilder &texts)
    {
        constexpr uint32_t types[] = {VEL_TYPE_LABEL, VEL_TYPE_TEXT, VEL_TYPE_ENTRY,
                                      VEL_TYPE_NUMERIC_ENTRY, VEL_TYPE_TEXT};
        o.type = types[pick(0, 4)];
        o.master = number;
        o.x = master.x + pick(0, master.width);
        o.y = master.y + pick(0, master.height);
        o.width = pick(30, 300), o.height = pick(16, 200);
        o.clip_mode = pick(0, 2);
        o.editable = pick(0, 1);
        common(o, texts);
    }

    std::string words(uint32_t count)
    {
        static constexpr const char *vocabulary[] = {"velumo",
                                                     "form",
                                                     "Fenster",
                                                     "\xe4rger",
                                                     "\xfc"
                                                     "ber",
                                                     "text",
                                                     "a",
                                                     "line",
                                                     "cache",
                                                     "pixel",
                                                     "W",
                                                     "mmmmmm",
                                                     "iiiiiiii",
                                                     "Zug",
                                                     "42",
                                                     "\xdf",
                                                     "quick",
                                                     "brown",
                                                     "fox",
                                                     "jumps",
                                                     "M\xf6we"};
        std::string out;
        for (uint32_t k = 0; k < count; ++k) {
            if (k != 0) out += ' ';
            out += vocabulary[pick(0, std::size(vocabulary) - 1)];
        }
        return out;
    }

    std::string text()
    {
        std::string out;
        const uint32_t paragraphs = pick(1, 4);
        for (uint32_t p = 0; p < paragraphs; ++p) {
            if (p != 0) out += '\n';
            out += words(pick(1, 40));
        }
        return out.substr(0, VEL_TEXT_BYTES - 1);
    }

    std::mt19937 random_;
    std::vector<uint32_t> windows_;
    uint32_t text_count_ = 0;
};

TEST_F(TextCache, RandomFormsAreIdenticalWithAndWithoutTheCache)
{
    for (uint32_t seed = 1; seed <= 12; ++seed) {
        const int bits = kDepths[seed % std::size(kDepths)];
        use_display(bits, kScreenWidth, kScreenHeight);
        RandomForm random(seed);
        FormBuilder form;
        TextBuilder texts;
        random.build(form, texts);
        ctx().texts_loaded = 1;
        load(form, &texts);
        for (uint32_t window : random.windows()) {
            activate(window);
            ctx().objects[window].scroll_y = random.pick(0, 30);
        }
        expect_identical_redraws("seed " + std::to_string(seed) + ", " + std::to_string(bits) +
                                 " bits");
        vel_unload_form(&ctx());
    }
}

// A one-window form with a text area of `text`, the window active.
class OneTextArea : public TextCache {
protected:
    void SetUp() override
    {
        TextCache::SetUp();
        FormBuilder form;
        vel_object_file_rec &window = form.object(8);
        window.type = VEL_TYPE_WINDOW;
        window.x = 20, window.y = 30, window.width = 600, window.height = 400;
        window.margin_left = window.margin_right = window.margin_top = window.margin_bottom = 4;
        window.fill_r = window.fill_g = window.fill_b = 255;
        window.dep_objs[0] = 9;
        vel_object_file_rec &area = form.object(9);
        area.type = VEL_TYPE_TEXT;
        area.master = 8;
        area.x = 30, area.y = 40, area.width = 560, area.height = 360;
        area.fill_r = area.fill_g = area.fill_b = 255;
        area.text_index = 1;
        area.font_choice = VEL_FONT_OWN;
        area.font_size = 16;
        set_string(area.font_path, kFontPath);
        TextBuilder texts;
        texts.set(1, "The first line\nThe second line\nThe last line");
        ctx().texts_loaded = 1;
        load(form, &texts);
        activate(8);
    }
};

TEST_F(OneTextArea, TextSurfaceIsTheLastLineAndOutlivesTheCache)
{
    vel_draw_all_objects(&ctx(), 1, 0);
    SDL_Surface *last = ctx().text_surface;
    ASSERT_NE(last, nullptr);
    int width = 0;
    TTF_SizeText(ctx().objects[9].own_font, "The last line", &width, nullptr);
    EXPECT_EQ(last->w, width);
    EXPECT_EQ(last->refcount, 2) << "one reference for the context, one for the cache";
    vel_clear_text_cache(&ctx());
    EXPECT_EQ(last->refcount, 1);
    EXPECT_EQ(ctx().text_surface->w, width) << "still readable after the cache is gone";
}

TEST_F(OneTextArea, AnotherColourIsANewLine)
{
    vel_draw_all_objects(&ctx(), 1, 0);
    ctx().objects[9].text_r = 200;
    expect_identical_redraws("red");
}

TEST_F(OneTextArea, ReopeningTheFontsClearsTheCache)
{
    vel_draw_all_objects(&ctx(), 1, 0);
    ASSERT_NE(ctx().text_cache, nullptr);
    vel_load_object_fonts(&ctx(), 0);
    EXPECT_EQ(ctx().text_cache, nullptr);
    expect_identical_redraws("after reopening");
}

TEST_F(OneTextArea, AStyleChangeIsANewLine)
{
    vel_draw_all_objects(&ctx(), 1, 0);
    TTF_SetFontStyle(ctx().objects[9].own_font, TTF_STYLE_BOLD);
    expect_identical_redraws("bold");
    TTF_SetFontStyle(ctx().objects[9].own_font, TTF_STYLE_NORMAL);
}

TEST_F(OneTextArea, TheLimitBoundsTheBytesHeld)
{
    for (uint32_t limit : {1u << 10, 8u << 10, 64u << 10}) {
        ctx().text_cache_limit = limit;
        for (int k = 0; k < 50; ++k) {
            std::snprintf(ctx().text_recs[1].text, VEL_TEXT_BYTES, "line %d\nand %d more", k, k);
            vel_draw_all_objects(&ctx(), 1, 0);
            ASSERT_LE(text_cache_bytes(&ctx()), limit);
        }
    }
}

} // namespace
} // namespace velumo::test
