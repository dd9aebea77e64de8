// Painting single objects: body sizes and the window clamp, dependent bodies
// and pictures cut by their masters, text lines and captions clipped to the
// text limits, centring, and which objects paint text at all.
#include "render_fixture.hpp"

#include <string>
#include <vector>

namespace velumo::test {
namespace {

// A part of a reference rendering expected on the screen: the source
// rectangle starting at (src_x, src_y) shown at (dest_x, dest_y).
struct Piece {
    SDL_Surface *ref;
    int dest_x, dest_y, src_x, src_y, w, h;
};

class Painting : public RenderTest {
protected:
    int pitch() { return TTF_FontHeight(ctx().font); }

    // Window 8 at (100, 50), 300 x 200, margins 5, grey: its dependents may
    // use 105..394 x 55..244.
    void master_window()
    {
        set_margins(place(8, VEL_TYPE_WINDOW, 100, 50, 300, 200), 5);
        vel_evoke_object(&ctx(), 8);
    }

    vel_object &text_object(uint32_t n, uint32_t type, uint32_t x, uint32_t y, uint32_t w,
                            uint32_t h, uint32_t master = 0)
    {
        vel_object &o = place(n, type, x, y, w, h, master, kWhite);
        o.text_index = 1;
        return o;
    }

    // Compares a rectangle (inclusive corners) with the body colour and the
    // pieces drawn over it.
    ::testing::AssertionResult region_is(int x0, int y0, int x1, int y1, vel_rgb body,
                                         const std::vector<Piece> &pieces)
    {
        int wrong = 0;
        std::string first;
        for (int y = y0; y <= y1; ++y) {
            for (int x = x0; x <= x1; ++x) {
                vel_rgb expected = body;
                for (const Piece &p : pieces) {
                    const int sx = p.src_x + x - p.dest_x;
                    const int sy = p.src_y + y - p.dest_y;
                    if (x >= p.dest_x && x < p.dest_x + p.w && y >= p.dest_y &&
                        y < p.dest_y + p.h && sx < p.ref->w && sy < p.ref->h)
                        expected = pixel(p.ref, sx, sy);
                }
                if (!(at(x, y) == expected) && wrong++ == 0)
                    first = std::to_string(x) + "," + std::to_string(y);
            }
        }
        if (wrong == 0) return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure() << wrong << " pixels differ, first at " << first;
    }
};

TEST_F(Painting, TopLevelWindowsAreClampedInTheirRecord)
{
    place(8, VEL_TYPE_WINDOW, 0, 0, 100, 50);
    vel_evoke_object(&ctx(), 8);
    EXPECT_EQ(object(8).x, 11u);
    EXPECT_EQ(object(8).y, 25u);
    EXPECT_TRUE(box_is(11, 25, 110, 74, kGrey));

    // Signed: a position left of the screen is clamped too; 11, 25 stay.
    place(9, VEL_TYPE_WINDOW, 0xFFFFFFF0u, 25, 10, 10);
    vel_evoke_object(&ctx(), 9);
    EXPECT_EQ(object(9).x, 11u);
    EXPECT_EQ(object(9).y, 25u);

    // Neither dependent windows nor other top-level types move.
    place(10, VEL_TYPE_WINDOW, 5, 5, 10, 10, 9);
    place(11, VEL_TYPE_LABEL, 5, 5, 10, 10);
    vel_evoke_object(&ctx(), 10);
    vel_evoke_object(&ctx(), 11);
    EXPECT_EQ(object(10).x, 5u);
    EXPECT_EQ(object(11).y, 5u);
}

TEST_F(Painting, TopLevelBodySizes)
{
    // Frame buttons are 16 x 16 whatever their record says.
    place(3, VEL_TYPE_LABEL, 200, 200, 50, 40);
    vel_evoke_object(&ctx(), 3);
    EXPECT_TRUE(box_is(200, 200, 215, 215, kGrey));

    // Others are cut by the screen: 38 x 75 here.
    fill_screen(kWhite);
    place(8, VEL_TYPE_LABEL, 600, 400, 100, 200);
    vel_evoke_object(&ctx(), 8);
    EXPECT_TRUE(box_is(600, 400, 637, 474, kGrey));

    // Empty records and unknown types get a body at top level only.
    for (uint32_t type : {0u, 12u}) {
        fill_screen(kWhite);
        place(9, type, 50, 50, 10, 10);
        vel_evoke_object(&ctx(), 9);
        EXPECT_TRUE(box_is(50, 50, 59, 59, kGrey)) << type;
        master_window();
        place(10, type, 150, 100, 10, 10, 8, kRed);
        vel_evoke_object(&ctx(), 10);
        EXPECT_EQ(count_not(150, 100, 159, 109, kGrey), 0) << type;
    }

    // A picture that failed to load paints nothing but its border.
    fill_screen(kWhite);
    place(11, VEL_TYPE_PICTURE_FILE, 50, 50, 10, 10);
    vel_evoke_object(&ctx(), 11);
    EXPECT_EQ(count_not(40, 40, 70, 70, kWhite), 0);
}

TEST_F(Painting, DependentBodiesAreCutByTheMasterLimits)
{
    struct Case {
        const char *name;
        uint32_t x, y, w, h;
        int x0, y0, x1, y1;
    };
    const Case cases[] = {
        {"inside", 150, 100, 20, 10, 150, 100, 169, 109},
        {"top", 150, 40, 20, 30, 150, 55, 169, 69},
        {"bottom", 150, 230, 20, 30, 150, 230, 169, 244},
        {"top and bottom", 150, 40, 20, 300, 150, 55, 169, 244},
        {"left", 90, 100, 30, 10, 105, 100, 119, 109},
        {"right", 380, 100, 30, 10, 380, 100, 394, 109},
        {"left and right", 90, 100, 400, 10, 105, 100, 394, 109},
        {"corner", 90, 40, 30, 30, 105, 55, 119, 69},
    };
    for (const Case &c : cases) {
        fill_screen(kWhite);
        master_window();
        place(9, VEL_TYPE_TEXT, c.x, c.y, c.w, c.h, 8, kRed);
        vel_evoke_object(&ctx(), 9);
        EXPECT_TRUE(box_is(c.x0, c.y0, c.x1, c.y1, kRed)) << c.name;
    }

    // Wholly above the limits: no body at all.
    fill_screen(kWhite);
    master_window();
    place(9, VEL_TYPE_TEXT, 150, 10, 20, 20, 8, kRed);
    vel_evoke_object(&ctx(), 9);
    EXPECT_EQ(count_not(0, 0, 639, 479, kRed), 640 * 480);
}

TEST_F(Painting, DeeperDependentsUseTheShiftedPanelArea)
{
    master_window();
    set_margins(place(9, VEL_TYPE_WINDOW, 120, 80, 100, 60, 8, kBlue), 2);
    vel_evoke_object(&ctx(), 9);
    place(10, VEL_TYPE_TEXT, 110, 70, 200, 100, 9, kRed);
    vel_evoke_object(&ctx(), 10);
    // Limits 120 < x < 217, 80 < y < 137.
    EXPECT_TRUE(box_is(121, 81, 216, 136, kRed));
}

class Pictures : public Painting {
protected:
    static vel_rgb colour_of(int c, int r)
    {
        return {static_cast<uint8_t>(c * 6), static_cast<uint8_t>(r * 8), 200};
    }
    void SetUp() override
    {
        Painting::SetUp();
        Surface picture = surface_like_screen(40, 30);
        for (int r = 0; r < 30; ++r) {
            for (int c = 0; c < 40; ++c) {
                const vel_rgb k = colour_of(c, r);
                SDL_Rect cell{static_cast<Sint16>(c), static_cast<Sint16>(r), 1, 1};
                SDL_FillRect(picture.get(), &cell, SDL_MapRGB(picture->format, k.r, k.g, k.b));
            }
        }
        // Freed with the object by vel_close.
        place(12, VEL_TYPE_PICTURE, 0, 0, 40, 30).image = picture.release();
    }
    void show_at(uint32_t x, uint32_t y, uint32_t master)
    {
        vel_object &o = object(12);
        o.x = x;
        o.y = y;
        o.master = master;
        vel_evoke_object(&ctx(), 12);
    }
    // Whether the screen shows picture columns from src_x and rows from
    // src_y in the w x h rectangle at (x, y), and not beyond it.
    ::testing::AssertionResult shows(int x, int y, int src_x, int src_y, int w, int h)
    {
        for (int r = 0; r < h; ++r)
            for (int c = 0; c < w; ++c)
                if (!(at(x + c, y + r) == colour_of(src_x + c, src_y + r)))
                    return ::testing::AssertionFailure()
                           << "at " << x + c << "," << y + r << ": " << at(x + c, y + r);
        for (int c = -1; c <= w; ++c)
            if (at(x + c, y - 1).b == 200 || at(x + c, y + h).b == 200)
                return ::testing::AssertionFailure() << "picture beyond the rows";
        for (int r = -1; r <= h; ++r)
            if (at(x - 1, y + r).b == 200 || at(x + w, y + r).b == 200)
                return ::testing::AssertionFailure() << "picture beyond the columns";
        return ::testing::AssertionSuccess();
    }
};

TEST_F(Pictures, TopLevelPictureIsBlittedWhole)
{
    show_at(50, 60, 0);
    EXPECT_TRUE(shows(50, 60, 0, 0, 40, 30));
}

TEST_F(Pictures, DependentPicturesKeepTheirSourceOffsets)
{
    master_window();
    show_at(150, 40, 8);
    EXPECT_TRUE(shows(150, 55, 0, 15, 40, 15)) << "cut at the top";

    fill_screen(kWhite);
    master_window();
    show_at(90, 100, 8);
    EXPECT_TRUE(shows(105, 100, 15, 0, 25, 30)) << "cut at the left";

    fill_screen(kWhite);
    master_window();
    show_at(380, 230, 8);
    EXPECT_TRUE(shows(380, 230, 0, 0, 15, 15)) << "cut at the right and bottom";

    fill_screen(kWhite);
    master_window();
    show_at(150, 100, 8);
    EXPECT_TRUE(shows(150, 100, 0, 0, 40, 30)) << "inside";
}

TEST_F(Pictures, PictureCutOnAllSides)
{
    // Window limits 304 < x < 325, 304 < y < 315.
    set_margins(place(9, VEL_TYPE_WINDOW, 300, 300, 30, 20), 5);
    vel_evoke_object(&ctx(), 9);
    show_at(290, 290, 9);
    EXPECT_TRUE(shows(305, 305, 15, 15, 20, 10));
}

TEST_F(Painting, TextLinesInsideTheirArea)
{
    vel_object &o = text_object(8, VEL_TYPE_TEXT, 100, 100, 300, 100);
    set_margins(o, 5);
    o.number_of_lines = 1;
    set_line(1, 0, "Hello");
    set_line(1, 1, "World");
    vel_evoke_object(&ctx(), 8);
    Surface hello = reference_line("Hello", kBlack, kWhite);
    Surface world = reference_line("World", kBlack, kWhite);
    EXPECT_TRUE(region_is(100, 100, 399, 199, kWhite,
                          {{hello.get(), 105, 105, 0, 0, hello->w, hello->h},
                           {world.get(), 105, 105 + pitch(), 0, 0, world->w, world->h}}));
    ASSERT_NE(ctx().text_surface, nullptr);
    EXPECT_EQ(ctx().text_surface->w, text_width("World"));
}

TEST_F(Painting, TextLinesClippedAtTheMastersTop)
{
    master_window();
    // Text limits 149 < x < 350, 54 < y < 105; the body covers rows 55..104.
    text_object(9, VEL_TYPE_TEXT, 150, 45, 200, 60, 8).number_of_lines = 0;
    set_line(1, 0, "Hello");
    vel_evoke_object(&ctx(), 9);
    Surface hello = reference_line("Hello", kBlack, kWhite);
    const int tw = hello->w;
    // The first line counts one row taller: row 55 shows its row 54 - 45.
    const int visible = 45 + pitch() - 54;
    EXPECT_TRUE(region_is(150, 55, 349, 104, kWhite, {{hello.get(), 150, 55, 0, 9, tw, visible}}));
    EXPECT_GT(count_not(150, 55, 349, 55 + visible - 1, kWhite), 0);
    EXPECT_EQ(count_not(150, 55 + visible, 349, 104, kWhite), 0);
    EXPECT_EQ(count_not(100, 50, 399, 54, kGrey), 0);

    // A later line straddling the limit shows its rows from 54 - 45 + 1.
    fill_screen(kWhite);
    master_window();
    vel_object &o = object(9);
    o.number_of_lines = 1;
    o.scroll_y = static_cast<uint32_t>(-pitch());
    set_line(1, 1, "Hello");
    vel_evoke_object(&ctx(), 9);
    EXPECT_TRUE(
        region_is(150, 55, 349, 104, kWhite, {{hello.get(), 150, 55, 0, 10, tw, visible - 1}}));
    EXPECT_EQ(count_not(100, 50, 399, 54, kGrey), 0);
}

TEST_F(Painting, TextLinesClippedAtTheMastersBottomAndLeft)
{
    master_window();
    vel_object &o = text_object(9, VEL_TYPE_TEXT, 150, 230, 200, 60, 8);
    o.number_of_lines = 1;
    set_line(1, 0, "Hello");
    set_line(1, 1, "World");
    vel_evoke_object(&ctx(), 9);
    Surface hello = reference_line("Hello", kBlack, kWhite);
    const int tw = hello->w;
    // Rows 230..244; the second line starts below the limit.
    EXPECT_TRUE(region_is(150, 230, 349, 244, kWhite, {{hello.get(), 150, 230, 0, 0, tw, 15}}));
    EXPECT_EQ(count_not(100, 245, 399, 249, kGrey), 0);

    // Cut at the left (limit 104): column 105 shows column 9 of the line,
    // the line's right end counting one column past its last pixel.
    fill_screen(kWhite);
    master_window();
    o.x = 95;
    o.y = 100;
    o.number_of_lines = 0;
    vel_evoke_object(&ctx(), 9);
    EXPECT_TRUE(
        region_is(105, 100, 294, 159, kWhite, {{hello.get(), 105, 100, 9, 0, tw - 9, pitch()}}));
}

TEST_F(Painting, LinesCutOnBothSidesKeepTheEarlierSourceX)
{
    const std::string wide(30, 'M');
    ASSERT_GT(text_width(wide.c_str()), 310);
    master_window();
    // Text limits 104 < x < 395.
    text_object(9, VEL_TYPE_TEXT, 95, 100, 400, 80, 8).number_of_lines = 2;
    set_line(1, 0, wide.c_str());
    set_line(1, 1, "Hello");
    set_line(1, 2, wide.c_str());
    vel_evoke_object(&ctx(), 9);
    Surface long_line = reference_line(wide.c_str(), kBlack, kWhite);
    Surface hello = reference_line("Hello", kBlack, kWhite);
    const int p = pitch();
    // 395 - 106 columns: one narrower than the limits admit.  The first line
    // starts at source column 0, the third at the 9 the second one set.
    EXPECT_TRUE(region_is(105, 100, 394, 100 + 3 * p - 1, kWhite,
                          {{long_line.get(), 105, 100, 0, 0, 289, p},
                           {hello.get(), 105, 100 + p, 9, 0, hello->w - 9, p},
                           {long_line.get(), 105, 100 + 2 * p, 9, 0, 289, p}}));
}

TEST_F(Painting, CaptionsArePaintedOnceAtTheFirstVisiblePosition)
{
    for (uint32_t type : {VEL_TYPE_LABEL, VEL_TYPE_ENTRY, VEL_TYPE_NUMERIC_ENTRY}) {
        fill_screen(kWhite);
        vel_object &o = text_object(8, type, 100, 100, 200, 80);
        set_margins(o, 2);
        set_string(o.label, "Hi");
        o.number_of_lines = 3;
        o.scroll_y = 0;
        vel_evoke_object(&ctx(), 8);
        Surface hi = reference_line("Hi", kBlack, kWhite);
        EXPECT_TRUE(
            region_is(100, 100, 299, 179, kWhite, {{hi.get(), 102, 102, 0, 0, hi->w, hi->h}}))
            << type;

        // Position 0 hidden above the limit 101: position 1 shows from row 1.
        fill_screen(kWhite);
        o.scroll_y = static_cast<uint32_t>(-(pitch() + 1));
        vel_evoke_object(&ctx(), 8);
        EXPECT_TRUE(
            region_is(100, 100, 299, 179, kWhite, {{hi.get(), 102, 102, 0, 1, hi->w, pitch() - 1}}))
            << type;

        // With only position 0 it is not painted at all.
        fill_screen(kWhite);
        o.number_of_lines = 0;
        vel_evoke_object(&ctx(), 8);
        EXPECT_EQ(count_not(100, 100, 299, 179, kWhite), 0) << type;
    }
}

TEST_F(Painting, AtMostFortyLines)
{
    vel_object &o = text_object(8, VEL_TYPE_TEXT, 20, 20, 400, 440);
    o.number_of_lines = 44;
    // Lines 0..19 lie above the area, so 40..44 would still fit below.
    o.scroll_y = static_cast<uint32_t>(-20 * pitch());
    for (uint32_t n = 0; n <= 44; ++n)
        set_line(1, n, ("Line " + std::to_string(n)).c_str());
    vel_evoke_object(&ctx(), 8);
    const int line_39 = 20 + 19 * pitch();
    EXPECT_GT(count_not(20, line_39, 419, line_39 + pitch() - 1, kWhite), 0);
    EXPECT_EQ(count_not(20, line_39 + pitch(), 419, 459, kWhite), 0);
}

TEST_F(Painting, CentredWindowLinesWriteScrollX)
{
    vel_object &o = text_object(8, VEL_TYPE_WINDOW, 100, 100, 300, 100);
    set_margins(o, 10);
    o.window_kind = VEL_WINDOW_REDUCED_FRAME;
    o.centred = 1;
    set_line(1, 0, "Hi");
    vel_evoke_object(&ctx(), 8);
    const int tw = text_width("Hi");
    // Text limits 109 and 390.
    EXPECT_EQ(static_cast<int32_t>(o.scroll_x), (280 - tw) / 2);
    Surface hi = reference_line("Hi", kBlack, kWhite);
    EXPECT_TRUE(region_is(100, 100, 399, 199, kWhite,
                          {{hi.get(), 110 + (280 - tw) / 2, 110, 0, 0, hi->w, hi->h}}));

    // A narrow inner area gives a negative offset, truncated toward zero.
    set_line(1, 0, "Hello");
    o.width = 60;
    set_margins(o, 20);
    vel_evoke_object(&ctx(), 8);
    EXPECT_EQ(static_cast<int32_t>(o.scroll_x), (20 - text_width("Hello")) / 2);

    // A line at least as wide as the window, or a full-frame window, keeps it.
    o.scroll_x = 7;
    o.width = 20;
    vel_evoke_object(&ctx(), 8);
    EXPECT_EQ(o.scroll_x, 7u);
    o.width = 300;
    o.window_kind = VEL_WINDOW_FULL_FRAME;
    vel_evoke_object(&ctx(), 8);
    EXPECT_EQ(o.scroll_x, 7u);
}

TEST_F(Painting, WhichObjectsPaintText)
{
    set_line(1, 0, "Hello");
    set_line(2, 0, "Hello");
    ctx().text_recs[2].text[0] = '\0';
    struct Case {
        uint32_t type, text_index, font_choice;
        bool painted;
    };
    const Case cases[] = {
        {VEL_TYPE_TEXT, 1, 0, true},  {VEL_TYPE_WINDOW, 1, 0, true},  {VEL_TYPE_CHAIN, 1, 0, true},
        {VEL_TYPE_TEXT, 2, 0, false}, {VEL_TYPE_WINDOW, 2, 0, false}, {VEL_TYPE_CHAIN, 2, 0, true},
        {VEL_TYPE_TEXT, 0, 0, false}, {VEL_TYPE_MENU, 1, 0, false},   {VEL_TYPE_TEXT, 1, 2, false},
        {VEL_TYPE_TEXT, 1, 1, false},
    };
    for (const Case &c : cases) {
        fill_screen(kWhite);
        vel_object &o = text_object(8, c.type, 100, 100, 200, 50);
        o.text_index = c.text_index;
        o.font_choice = c.font_choice;
        o.own_font = nullptr;
        vel_evoke_object(&ctx(), 8);
        EXPECT_EQ(count_not(100, 100, 299, 149, kWhite) > 0, c.painted)
            << "type " << c.type << " text " << c.text_index << " font " << c.font_choice;
    }
    ctx().text_recs[2].text[0] = 't';
}

} // namespace
} // namespace velumo::test
