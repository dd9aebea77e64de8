// Pixels, lines, boxes and outlines at every supported depth, the messages
// of unsupported depths, dropped writes beyond the surface, locking.
#include "render_fixture.hpp"

#include <string>

namespace velumo::test {
namespace {

class Primitives : public RenderTest, public ::testing::WithParamInterface<int> {
protected:
    void SetUp() override
    {
        RenderTest::SetUp();
        use_depth(GetParam());
        fill_screen(kBlack);
    }
    void pixel_at(uint32_t x, uint32_t y) { vel_draw_pixel(&ctx(), x, y, 255, 0, 0); }
    void line(uint32_t x1, uint32_t y1, uint32_t x2, uint32_t y2)
    {
        vel_draw_line(&ctx(), x1, y1, x2, y2, 255, 0, 0);
    }
    int red_pixels(int x0, int y0, int x1, int y1)
    {
        return (x1 - x0 + 1) * (y1 - y0 + 1) - count_not(x0, y0, x1, y1, mapped(kRed));
    }
};

TEST_P(Primitives, PixelLandsOnItsCellOnly)
{
    pixel_at(5, 7);
    EXPECT_EQ(at(5, 7), mapped(kRed));
    EXPECT_EQ(red_pixels(0, 0, 20, 20), 1);
    pixel_at(639, 479);
    EXPECT_EQ(at(639, 479), mapped(kRed));
}

TEST_P(Primitives, PixelsBeyondTheSurfaceAreDropped)
{
    pixel_at(640, 7); // would be (0, 8) by the raw address
    pixel_at(3, 480);
    pixel_at(0xFFFFFFFFu, 0);
    EXPECT_EQ(at(0, 8), mapped(kBlack));
    EXPECT_EQ(red_pixels(0, 0, 639, 479), 0);
}

TEST_P(Primitives, LinesIncludeBothEndsInEitherDirection)
{
    line(10, 5, 3, 5);
    EXPECT_EQ(red_pixels(0, 5, 20, 5), 8);
    EXPECT_EQ(red_pixels(3, 5, 10, 5), 8);
    fill_screen(kBlack);
    line(3, 5, 10, 5);
    EXPECT_EQ(red_pixels(3, 5, 10, 5), 8);
    EXPECT_EQ(red_pixels(0, 0, 20, 20), 8);

    fill_screen(kBlack);
    line(7, 20, 7, 24);
    line(9, 24, 9, 20);
    EXPECT_EQ(red_pixels(7, 20, 7, 24), 5);
    EXPECT_EQ(red_pixels(9, 20, 9, 24), 5);
    EXPECT_EQ(red_pixels(0, 0, 30, 30), 10);
}

TEST_P(Primitives, PointsAndSlantedLinesDrawNothing)
{
    line(4, 4, 4, 4);
    line(2, 2, 12, 12);
    line(12, 2, 2, 12);
    EXPECT_EQ(red_pixels(0, 0, 20, 20), 0);
}

TEST_P(Primitives, FallingRunsStopAtZero)
{
    line(3, 9, 0, 9);
    line(4, 3, 4, 0);
    EXPECT_EQ(red_pixels(0, 9, 3, 9), 4);
    EXPECT_EQ(red_pixels(4, 0, 4, 3), 4);
    EXPECT_EQ(red_pixels(0, 0, 639, 479), 8);
}

TEST_P(Primitives, BoxesAndOutlines)
{
    vel_draw_box(&ctx(), 10, 10, 6, 4, 0, 255, 0);
    EXPECT_TRUE(box_is(10, 10, 15, 13, mapped(kGreen)));

    vel_draw_rectangle(&ctx(), 30, 30, 5, 3, 255, 0, 0);
    EXPECT_EQ(red_pixels(30, 30, 34, 30), 5);
    EXPECT_EQ(red_pixels(30, 32, 34, 32), 5);
    EXPECT_EQ(at(30, 31), mapped(kRed));
    EXPECT_EQ(at(34, 31), mapped(kRed));
    EXPECT_EQ(red_pixels(29, 29, 35, 33), 12);

    // Width 1: only the vertical edges, which coincide.
    vel_draw_rectangle(&ctx(), 50, 50, 1, 4, 255, 0, 0);
    EXPECT_EQ(red_pixels(49, 49, 51, 54), 4);
    EXPECT_EQ(red_pixels(50, 50, 50, 53), 4);
    // Height 1: only the horizontal edges.
    vel_draw_rectangle(&ctx(), 60, 60, 4, 1, 255, 0, 0);
    EXPECT_EQ(red_pixels(59, 59, 64, 61), 4);
}

INSTANTIATE_TEST_SUITE_P(Depths, Primitives, ::testing::Values(8, 16, 32));

using UnsupportedDepth = RenderTest;

std::string repeated(const std::string &line, int times)
{
    std::string out;
    for (int i = 0; i < times; ++i)
        out += line + "\n";
    return out;
}

TEST_F(UnsupportedDepth, ThreeBytesPrintOnceAPixelAndBoxesStillFill)
{
    use_depth(24);
    fill_screen(kBlack);
    OutputCapture capture;
    vel_draw_pixel(&ctx(), 5, 5, 255, 0, 0);
    vel_draw_line(&ctx(), 10, 5, 13, 5, 255, 0, 0);
    vel_draw_pixel(&ctx(), 900, 900, 255, 0, 0);
    EXPECT_EQ(capture.finish(), repeated("24 bit is not supported ! ", 6));
    EXPECT_EQ(count_not(0, 0, 20, 20, kBlack), 0);

    vel_draw_box(&ctx(), 2, 2, 3, 3, 0, 255, 0);
    EXPECT_TRUE(box_is(2, 2, 4, 4, kGreen));
}

TEST_F(UnsupportedDepth, OtherDepthsPrintTheColourDepthError)
{
    SDL_Surface *screen = ctx().screen;
    Surface odd = surface_like_screen(8, 8);
    SDL_FillRect(odd.get(), nullptr, 0);
    odd->format->BytesPerPixel = 5;
    ctx().screen = odd.get();
    OutputCapture capture;
    vel_draw_pixel(&ctx(), 1, 1, 255, 255, 255);
    vel_draw_rectangle(&ctx(), 0, 0, 2, 2, 255, 255, 255);
    const std::string printed = capture.finish();
    odd->format->BytesPerPixel = 4;
    ctx().screen = screen;
    // The outline of a 2 x 2 rectangle asks for eight pixels.
    EXPECT_EQ(printed, repeated("Error - can't get color depth. ", 9));
    EXPECT_EQ(pixel(odd.get(), 1, 1), kBlack);
}

TEST_F(UnsupportedDepth, LockOnlyWhatSdlWantsLocked)
{
    if (sdl_is_compat())
        GTEST_SKIP() << "sdl12-compat keeps its own lock count; surface->locked does not show it";
    Surface plain = surface_like_screen(4, 4);
    vel_lock(plain.get());
    EXPECT_EQ(plain->locked, 0);
    vel_unlock(plain.get());

    plain->offset = 4;
    vel_lock(plain.get());
    EXPECT_EQ(plain->locked, 1);
    vel_unlock(plain.get());
    EXPECT_EQ(plain->locked, 0);
    plain->offset = 0;
}

} // namespace
} // namespace velumo::test
