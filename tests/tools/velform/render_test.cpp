// velform render: a small form drawn through the library at each depth, the
// PNG read back: window body, border, selection marks, frame buttons and
// background at known pixels (glyph shapes are not looked at).
#include "render.hpp"
#include "velform_test.hpp"

#include <png.h>

namespace velform::test {
namespace {

using velumo::test::TempDir;

// A window at (100,60) 200 x 100 with a frame 2 pixels inside its edges
// (margins 5, inset 1) and a label without glyphs.
const char *const kForm = R"([[object]]
name = "main"
type = "window"
x = 100
y = 60
width = 200
height = 100
fill = "#3060c0"
margin_left = 5
margin_right = 5
margin_top = 5
margin_bottom = 5
border_style = "frame"
border_inset = 1
border_colour = "#ff8000"
hidden = true
children = ["button"]

[[object]]
name = "button"
type = "label"
font_choice = "none"
x = 120
y = 100
width = 60
height = 30
fill = "#20a040"
)";

struct Image {
    int width = 0, height = 0;
    std::vector<png_byte> rgb;
    vel_rgb at(int x, int y) const
    {
        const std::size_t i = (static_cast<std::size_t>(y) * width + x) * 3;
        return {rgb[i], rgb[i + 1], rgb[i + 2]};
    }
};

Image read_png(const std::string &path)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    Image out;
    if (!png_image_begin_read_from_file(&image, path.c_str())) return out;
    image.format = PNG_FORMAT_RGB;
    out.rgb.resize(PNG_IMAGE_SIZE(image));
    if (png_image_finish_read(&image, nullptr, out.rgb.data(), 0, nullptr)) {
        out.width = static_cast<int>(image.width);
        out.height = static_cast<int>(image.height);
    }
    return out;
}

bool near(vel_rgb a, vel_rgb b, int tolerance)
{
    return std::abs(a.r - b.r) <= tolerance && std::abs(a.g - b.g) <= tolerance &&
           std::abs(a.b - b.b) <= tolerance;
}

struct Spot {
    const char *what;
    int x, y;
    vel_rgb colour;
};
const Spot kSpots[] = {
    {"window body", 250, 80, {0x30, 0x60, 0xC0}},
    {"left border line", 103, 120, {0xFF, 0x80, 0x00}},
    {"top border line", 200, 63, {0xFF, 0x80, 0x00}},
    {"label body", 150, 115, {0x20, 0xA0, 0x40}},
    {"selection outline", 200, 59, {200, 40, 40}},
    {"selection square", 93, 64, {200, 40, 40}},
    {"frame button 1 top line", 195, 36, {40, 40, 60}},
    {"frame button 1 body", 201, 49, {200, 200, 220}},
    {"frame button 7 bottom line", 290, 51, {40, 40, 60}},
    {"background", 500, 400, {250, 250, 250}},
};

TEST(Render, DrawsTheOpenedWindowAtEveryDepth)
{
    const struct {
        int depth, tolerance;
    } depths[] = {{32, 0}, {16, 8}, {8, 40}};
    for (const auto &d : depths) {
        TempDir dir;
        write_text_file(dir.path("form.toml"), kForm);
        RenderOptions options;
        options.form = dir.path("form.toml");
        options.open = {"main"};
        options.output = dir.path("shot.png");
        options.depth = d.depth;
        const Outcome outcome =
            run(dir, [&](std::ostream &out) { return render_command(options, out); });
        ASSERT_EQ(outcome.status, 0) << outcome.messages;
        const Image image = read_png(dir.path("shot.png"));
        ASSERT_EQ(image.width, 640) << "depth " << d.depth;
        ASSERT_EQ(image.height, 480) << "depth " << d.depth;
        for (const Spot &spot : kSpots)
            EXPECT_TRUE(near(image.at(spot.x, spot.y), spot.colour, d.tolerance))
                << spot.what << " at depth " << d.depth << ": " << image.at(spot.x, spot.y)
                << ", expected " << spot.colour;
    }
}

TEST(Render, RefusesUnknownWindowsAndDepths)
{
    TempDir dir;
    write_text_file(dir.path("form.toml"), kForm);
    RenderOptions options;
    options.form = dir.path("form.toml");
    options.open = {"mian"};
    options.output = dir.path("shot.png");
    Outcome outcome = run(dir, [&](std::ostream &out) { return render_command(options, out); });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.messages,
              "--open: error: no object is named 'mian' (did you mean 'main'?)\n");
    options.depth = 24;
    outcome = run(dir, [&](std::ostream &out) { return render_command(options, out); });
    EXPECT_EQ(outcome.messages, "--depth: error: 24 is not a depth; valid: 8, 16 or 32\n");
}

} // namespace
} // namespace velform::test
