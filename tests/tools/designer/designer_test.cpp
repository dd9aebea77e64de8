// The designer driven as a person would, on the dummy driver: clicks, drags
// and keys pushed into SDL's queue, the saved form compiled and rendered.
#include "designer/designer.hpp"
#include "designer/edits.hpp"
#include "render.hpp"
#include "toml_reader.hpp"
#include "../velform/velform_test.hpp"

#include <gtest/gtest.h>
#include <png.h>

#include <cstring>
#include <sstream>

namespace velform::designer {
namespace {

using velform::test::write_text_file;

constexpr const char *kStart = R"(
[[object]]
name = "title"
type = "label"
label = "Title"
x = 20
y = 500
width = 120
height = 22
fill = "#d7dbe6"
)";

void push(SDL_Event event)
{
    ASSERT_EQ(SDL_PushEvent(&event), 0);
}

void button(Uint8 type, int x, int y)
{
    SDL_Event e{};
    e.type = type;
    e.button.type = type;
    e.button.button = SDL_BUTTON_LEFT;
    e.button.x = static_cast<Uint16>(x);
    e.button.y = static_cast<Uint16>(y);
    push(e);
}

void motion(int x, int y)
{
    SDL_Event e{};
    e.type = SDL_MOUSEMOTION;
    e.motion.x = static_cast<Uint16>(x);
    e.motion.y = static_cast<Uint16>(y);
    push(e);
}

void click(int x, int y)
{
    button(SDL_MOUSEBUTTONDOWN, x, y);
    button(SDL_MOUSEBUTTONUP, x, y);
}

void drag(int x0, int y0, int x1, int y1)
{
    button(SDL_MOUSEBUTTONDOWN, x0, y0);
    motion((x0 + x1) / 2, (y0 + y1) / 2);
    motion(x1, y1);
    button(SDL_MOUSEBUTTONUP, x1, y1);
}

void key(SDLKey sym, SDLMod mod = KMOD_NONE)
{
    for (Uint8 type : {SDL_KEYDOWN, SDL_KEYUP}) {
        SDL_Event e{};
        e.type = type;
        e.key.type = type;
        e.key.keysym.sym = sym;
        e.key.keysym.mod = mod;
        push(e);
    }
}

void type_text(const std::string &text)
{
    for (char c : text)
        key(static_cast<SDLKey>(c));
    key(SDLK_RETURN);
}

int centre_x(SDL_Rect r)
{
    return r.x + r.w / 2;
}
int centre_y(SDL_Rect r)
{
    return r.y + r.h / 2;
}

uint32_t number_of(const Form &form, const std::string &name)
{
    const auto found = std::find(form.names.begin(), form.names.end(), name);
    return found == form.names.end() ? 0 : static_cast<uint32_t>(found - form.names.begin() + 1);
}

class DesignerTest : public ::testing::Test {
protected:
    DesignerTest()
    {
        write_text_file(dir.path("form.toml"), kStart);
        options.form = dir.path("form.toml");
        options.headless = true;
        designer.emplace(options);
    }
    Designer &d() { return *designer; }
    void click_on(SDL_Rect r) { click(centre_x(r), centre_y(r)); }
    // Palette button, then the canvas point: the new object's number.
    uint32_t add(const std::string &word, int x, int y)
    {
        click_on(d().palette_button(word));
        click(x, y);
        d().pump();
        return d().selected();
    }
    void set(const std::string &key, const std::string &value)
    {
        click_on(d().property_field(key));
        type_text(value);
        d().pump();
    }
    const vel_object_file_rec &object(uint32_t n) { return d().form().object(n); }

    velumo::test::TempDir dir;
    EditOptions options;
    std::optional<Designer> designer;
};

TEST_F(DesignerTest, ScriptedSessionSavesWhatRenderDrawsAlike)
{
    const uint32_t title = number_of(d().form(), "title");
    const uint32_t window = add("window", 40, 60);
    ASSERT_EQ(d().form().names[window - 1], "window_9");
    EXPECT_EQ(object(window).master, 0u);
    const uint32_t label = add("label", 60, 80);
    const uint32_t entry = add("entry", 60, 120);
    const uint32_t text = add("text", 60, 160);
    for (uint32_t n : {label, entry, text})
        EXPECT_EQ(object(n).master, window) << d().form().names[n - 1];

    drag(70, 90, 100, 100); // the label's body
    d().pump();
    EXPECT_EQ(object(label).x, 90u);
    EXPECT_EQ(object(label).y, 90u);

    // The entry's bottom right handle, once it is selected.
    const vel_object_file_rec &e = object(entry);
    click(static_cast<int>(e.x + 5), static_cast<int>(e.y + 5));
    drag(static_cast<int>(e.x + e.width), static_cast<int>(e.y + e.height),
         static_cast<int>(e.x + e.width + 20), static_cast<int>(e.y + e.height + 5));
    d().pump();
    EXPECT_EQ(object(entry).width, 160u);
    EXPECT_EQ(object(entry).height, 26u);

    click(95, 95);
    set("label", "Hello");
    EXPECT_EQ(field_text(object(label).label), "Hello");
    set("fill", "#102030");
    EXPECT_EQ(object(label).fill_b, 0x30u);

    // The title, dropped onto the window, becomes its dependent.
    drag(30, 505, 200, 200);
    d().pump();
    EXPECT_EQ(object(title).master, window);
    key(SDLK_z, KMOD_LCTRL);
    d().pump();
    EXPECT_EQ(object(title).master, 0u);
    EXPECT_EQ(object(title).y, 500u);
    key(SDLK_y, KMOD_LCTRL);
    d().pump();
    EXPECT_EQ(object(title).master, window);

    key(SDLK_s, KMOD_LCTRL);
    d().pump();
    EXPECT_FALSE(d().modified());
    Diagnostics diagnostics;
    const std::optional<Form> saved = read_toml_form(options.form, std::string(), diagnostics);
    ASSERT_TRUE(saved) << d().status();
    EXPECT_EQ(saved->names, d().form().names);
    ASSERT_EQ(saved->object_count(), d().form().object_count());
    for (uint32_t n = 1; n <= saved->object_count(); ++n)
        EXPECT_EQ(
            std::memcmp(&saved->object(n), &d().form().object(n), sizeof(vel_object_file_rec)), 0)
            << saved->names[n - 1];

    // Without the selection's outline the canvas is what render draws.
    key(SDLK_ESCAPE);
    d().pump();
    SDL_Surface *screen = d().screen();
    std::vector<Uint32> canvas;
    for (int y = 0; y < screen->h; ++y)
        for (int x = 0; x < d().canvas_width(); ++x) {
            Uint8 r, g, b;
            SDL_GetRGB(static_cast<Uint32 *>(screen->pixels)[y * screen->pitch / 4 + x],
                       screen->format, &r, &g, &b);
            canvas.push_back(static_cast<Uint32>(r << 16 | g << 8 | b));
        }
    designer.reset();

    RenderOptions render;
    render.form = options.form;
    render.open = {"window_9"};
    render.output = dir.path("shot.png");
    render.width = 1024;
    render.height = 768;
    std::ostringstream messages;
    ASSERT_EQ(render_command(render, messages), 0) << messages.str();
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_file(&image, render.output.c_str()));
    image.format = PNG_FORMAT_RGB;
    std::vector<png_byte> rgb(PNG_IMAGE_SIZE(image));
    ASSERT_TRUE(png_image_finish_read(&image, nullptr, rgb.data(), 0, nullptr));
    int differing = 0;
    for (int y = 0; y < 768; ++y)
        for (int x = 0; x < 640; ++x) {
            const png_byte *p = &rgb[(static_cast<std::size_t>(y) * 1024 + x) * 3];
            differing += canvas[static_cast<std::size_t>(y) * 640 + x] !=
                         static_cast<Uint32>(p[0] << 16 | p[1] << 8 | p[2]);
        }
    EXPECT_EQ(differing, 0);
}

struct Refusal {
    const char *key;
    const char *value;
    const char *message;
};

TEST_F(DesignerTest, RefusesValuesTheReaderRefusesWithItsMessage)
{
    const Refusal refusals[] = {
        {"x", "abc", "x"},
        {"fill", "#12345", "colour"},
        {"border_style", "wavy", "border style"},
        {"type", "button", "type"},
        {"name", "two words", "name"},
    };
    click(30, 505);
    d().pump();
    ASSERT_EQ(d().selected(), number_of(d().form(), "title"));
    for (const Refusal &r : refusals) {
        const Form before = d().form();
        set(r.key, r.value);
        EXPECT_EQ(d().status().rfind("Refused: ", 0), 0u) << r.key << ": " << d().status();
        EXPECT_NE(d().status().find(r.message), std::string::npos) << d().status();
        EXPECT_EQ(d().form().names, before.names);
        EXPECT_EQ(
            std::memcmp(&d().form().object(8), &before.object(8), sizeof(vel_object_file_rec)), 0)
            << r.key;
    }
}

TEST_F(DesignerTest, ArrowsMoveAndAHundredStepsUndo)
{
    click(30, 505);
    key(SDLK_RIGHT, KMOD_LSHIFT);
    key(SDLK_DOWN);
    d().pump();
    EXPECT_EQ(object(8).x, 30u);
    EXPECT_EQ(object(8).y, 501u);
    // SDL's queue holds 128 events: a key is two.
    const auto press = [this](int times, SDLKey sym, SDLMod mod) {
        for (int k = 0; k < times; ++k) {
            key(sym, mod);
            if (k % 50 == 49) d().pump();
        }
        d().pump();
    };
    press(110, SDLK_RIGHT, KMOD_NONE);
    EXPECT_EQ(object(8).x, 140u);
    press(100, SDLK_z, KMOD_LCTRL);
    EXPECT_EQ(object(8).x, 40u);
    press(5, SDLK_LEFT, KMOD_LSHIFT);
    EXPECT_EQ(object(8).x, 0u); // stops at the edge
    press(101, SDLK_y, KMOD_LCTRL);
    EXPECT_EQ(object(8).x, 0u); // the new moves dropped the undone steps
    press(1, SDLK_z, KMOD_LCTRL);
    EXPECT_EQ(object(8).x, 10u);
}

TEST_F(DesignerTest, DeleteAndQuitAskFirst)
{
    const uint32_t window = add("window", 40, 60);
    add("label", 60, 80);
    click(45, 65);
    d().pump();
    ASSERT_EQ(d().selected(), window);
    const SDL_Rect yes{420, 360, 80, 24}, no{524, 360, 80, 24};
    key(SDLK_DELETE);
    button(SDL_MOUSEBUTTONUP, centre_x(no), centre_y(no));
    d().pump();
    EXPECT_EQ(d().form().object_count(), 10u);
    key(SDLK_DELETE);
    button(SDL_MOUSEBUTTONUP, centre_x(yes), centre_y(yes));
    d().pump();
    EXPECT_EQ(d().form().object_count(), 8u);

    SDL_Event quit{};
    quit.type = SDL_QUIT;
    push(quit);
    button(SDL_MOUSEBUTTONUP, centre_x(no), centre_y(no));
    d().pump();
    EXPECT_TRUE(d().running());
    key(SDLK_s, KMOD_LCTRL);
    push(quit);
    d().pump();
    EXPECT_FALSE(d().running());
}

TEST_F(DesignerTest, TreeSelectsAndPreviewTakesTyping)
{
    add("window", 40, 60);
    const uint32_t entry = add("entry", 60, 80);
    click(300, 600); // empty canvas
    d().pump();
    EXPECT_EQ(d().selected(), 0u);
    const SDL_Rect row = d().tree_row(entry);
    ASSERT_GT(row.w, 0);
    click_on(row);
    d().pump();
    EXPECT_EQ(d().selected(), entry);

    key(SDLK_F5);
    click(70, 90);
    key(SDLK_a);
    d().pump();
    EXPECT_TRUE(d().previewing());
    key(SDLK_F5);
    d().pump();
    EXPECT_FALSE(d().previewing());
    EXPECT_EQ(field_text(object(entry).label), ""); // typing in the preview leaves the form
}

} // namespace
} // namespace velform::designer
