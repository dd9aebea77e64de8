// Border styles: frames around the inner area, shadows, the styles that draw
// nothing, and the clipping of each line to the screen rectangle or masters.
#include "render_fixture.hpp"

namespace velumo::test {
namespace {

class Borders : public RenderTest {
protected:
    vel_object &bordered(uint32_t n, uint32_t style, uint32_t inset, uint32_t x, uint32_t y,
                         uint32_t w, uint32_t h, uint32_t master = 0)
    {
        vel_object &o = place(n, VEL_TYPE_LABEL, x, y, w, h, master);
        o.border_style = style;
        o.border_inset = inset;
        o.border_r = 255;
        return o;
    }
    int red_pixels() { return 640 * 480 - count_not(0, 0, 639, 479, kRed); }
    // Whether the rectangle (inclusive corners) is outlined in red and
    // nothing else on the screen is red.
    ::testing::AssertionResult only_outline(int x0, int y0, int x1, int y1)
    {
        const int expected = 2 * (x1 - x0 + 1) + 2 * (y1 - y0 - 1);
        if (count_not(x0, y0, x1, y0, kRed) || count_not(x0, y1, x1, y1, kRed) ||
            count_not(x0, y0, x0, y1, kRed) || count_not(x1, y0, x1, y1, kRed))
            return ::testing::AssertionFailure() << "outline incomplete";
        if (red_pixels() != expected)
            return ::testing::AssertionFailure() << red_pixels() << " red pixels, not " << expected;
        return ::testing::AssertionSuccess();
    }
};

TEST_F(Borders, FrameAroundTheInnerArea)
{
    for (uint32_t style : {1u, 3u}) {
        fill_screen(kWhite);
        set_margins(bordered(8, style, 1, 100, 100, 50, 20), 3);
        vel_evoke_borders(&ctx(), 8);
        EXPECT_TRUE(only_outline(101, 101, 148, 118)) << "style " << style;
    }
}

TEST_F(Borders, ShadowMovedByTheInset)
{
    for (uint32_t style : {4u, 5u}) {
        fill_screen(kWhite);
        set_margins(bordered(8, style, 3, 100, 100, 50, 20), 3);
        vel_evoke_borders(&ctx(), 8);
        EXPECT_TRUE(only_outline(103, 103, 152, 122)) << "style " << style;
    }
}

TEST_F(Borders, OtherStylesDrawNothing)
{
    for (uint32_t style : {0u, 2u, 6u, 99u}) {
        bordered(8, style, 1, 100, 100, 50, 20);
        vel_evoke_borders(&ctx(), 8);
        EXPECT_EQ(red_pixels(), 0) << "style " << style;
    }
}

TEST_F(Borders, TopLevelLinesAreClippedToTheScreenRectangle)
{
    ctx().screen_rect = SDL_Rect{0, 0, 300, 300};
    // Right and bottom lines (349) lie outside: left and top lines run to 298.
    bordered(8, 4, 0, 250, 250, 100, 100);
    vel_evoke_borders(&ctx(), 8);
    EXPECT_EQ(count_not(250, 250, 298, 250, kRed), 0);
    EXPECT_EQ(count_not(250, 250, 250, 298, kRed), 0);
    EXPECT_EQ(red_pixels(), 49 + 48);

    // The rectangle's own first row is outside too.
    fill_screen(kWhite);
    bordered(8, 4, 0, 0, 100, 50, 50);
    vel_evoke_borders(&ctx(), 8);
    EXPECT_EQ(at(0, 120), kWhite);
    EXPECT_EQ(count_not(1, 100, 49, 100, kRed), 0);
    EXPECT_EQ(count_not(49, 100, 49, 149, kRed), 0);
    EXPECT_EQ(red_pixels(), 50 + 48 + 48);
}

TEST_F(Borders, DependentLinesAreClippedToTheMasters)
{
    // Window limits: 104 < x < 395, 54 < y < 245.
    set_margins(place(8, VEL_TYPE_WINDOW, 100, 50, 300, 200), 5);

    // The top line lies above the limit: lost; the sides start at 55.
    bordered(9, 4, 0, 150, 52, 50, 30, 8);
    vel_evoke_borders(&ctx(), 9);
    EXPECT_EQ(count_not(150, 55, 150, 81, kRed), 0);
    EXPECT_EQ(count_not(199, 55, 199, 81, kRed), 0);
    EXPECT_EQ(count_not(150, 81, 199, 81, kRed), 0);
    EXPECT_EQ(red_pixels(), 27 + 27 + 48);

    // Wider than the window on both sides: only top and bottom, 105..394.
    fill_screen(kWhite);
    bordered(10, 4, 0, 90, 100, 400, 20, 8);
    vel_evoke_borders(&ctx(), 10);
    EXPECT_EQ(count_not(105, 100, 394, 100, kRed), 0);
    EXPECT_EQ(count_not(105, 119, 394, 119, kRed), 0);
    EXPECT_EQ(red_pixels(), 2 * 290);

    // Wholly below the window: nothing.
    fill_screen(kWhite);
    bordered(11, 4, 0, 150, 300, 50, 30, 8);
    vel_evoke_borders(&ctx(), 11);
    EXPECT_EQ(red_pixels(), 0);
}

} // namespace
} // namespace velumo::test
