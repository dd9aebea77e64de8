// Screen cut, usable sizes inside masters, the root of a chain, the limits of
// dependents and text areas, and the one-axis clip that painting relies on.
#include "render_fixture.hpp"

#include "layout/clip.hpp"

namespace velumo::test {
namespace {

struct Bounds {
    uint32_t left, right, top, bottom;
    bool operator==(const Bounds &) const = default;
};

std::ostream &operator<<(std::ostream &out, const Bounds &b)
{
    return out << "{" << static_cast<int32_t>(b.left) << ", " << static_cast<int32_t>(b.right)
               << ", " << static_cast<int32_t>(b.top) << ", " << static_cast<int32_t>(b.bottom)
               << "}";
}

class Geometry : public RenderTest {
protected:
    Bounds dep(uint32_t n)
    {
        Bounds b{};
        vel_get_borders_for_dep_object(&ctx(), n, &b.left, &b.right, &b.top, &b.bottom);
        return b;
    }
    Bounds text(uint32_t n)
    {
        Bounds b{};
        vel_get_borders_for_text(&ctx(), n, &b.left, &b.right, &b.top, &b.bottom);
        return b;
    }
    // Root window 8 at (100, 50), 300 x 200, margins 5; panel 9 inside it at
    // (120, 80), 100 x 60, margins 2.
    void window_and_panel()
    {
        set_margins(place(8, VEL_TYPE_WINDOW, 100, 50, 300, 200), 5);
        set_margins(place(9, VEL_TYPE_WINDOW, 120, 80, 100, 60, 8), 2);
    }
};

TEST_F(Geometry, ScreenCutKeepsTwoColumnsAndFiveRows)
{
    place(8, VEL_TYPE_LABEL, 600, 400, 100, 200);
    EXPECT_EQ(vel_p_cutted_w_independent(&ctx(), 8), 38u);
    EXPECT_EQ(vel_p_cutted_h_independent(&ctx(), 8), 75u);

    // Right edge exactly on screen_width is not cut; one more column is.
    place(9, VEL_TYPE_LABEL, 540, 380, 101, 101);
    EXPECT_EQ(vel_p_cutted_w_independent(&ctx(), 9), 101u);
    EXPECT_EQ(vel_p_cutted_h_independent(&ctx(), 9), 101u);
    object(9).width = 102;
    object(9).height = 102;
    EXPECT_EQ(vel_p_cutted_w_independent(&ctx(), 9), 98u);
    EXPECT_EQ(vel_p_cutted_h_independent(&ctx(), 9), 95u);
}

TEST_F(Geometry, DependentHeightLooksOneLevelFurtherThanWidth)
{
    window_and_panel();
    place(10, VEL_TYPE_LABEL, 200, 90, 50, 100, 9);
    // Width: the panel's own width bounds it, 120 + 100 - 1 - 2 = 217.
    EXPECT_EQ(vel_p_cutted_w_dependent(&ctx(), 10), 217u - 201u);
    // Height: the panel's y with the window's height, 80 + 200 - 1 - 2 = 277,
    // so the 100 rows of the object fit.
    EXPECT_EQ(vel_p_cutted_h_dependent(&ctx(), 10), 100u);
    object(10).height = 200;
    EXPECT_EQ(vel_p_cutted_h_dependent(&ctx(), 10), 277u - 91u);

    // Directly inside a top-level master both use the master's cut size.
    place(11, VEL_TYPE_LABEL, 300, 100, 200, 200, 8);
    EXPECT_EQ(vel_p_cutted_w_dependent(&ctx(), 11), 394u - 301u);
    EXPECT_EQ(vel_p_cutted_h_dependent(&ctx(), 11), 244u - 101u);
    object(11).width = 50;
    EXPECT_EQ(vel_p_cutted_w_dependent(&ctx(), 11), 50u);
}

TEST_F(Geometry, SearchMasterFindsTheRoot)
{
    window_and_panel();
    place(10, VEL_TYPE_LABEL, 130, 90, 10, 10, 9);
    EXPECT_EQ(vel_search_master(&ctx(), 8), 0u);
    EXPECT_EQ(vel_search_master(&ctx(), 9), 8u);
    EXPECT_EQ(vel_search_master(&ctx(), 10), 8u);

    // A cycle in the master links ends at one of its members.
    object(8).master = 10;
    const uint32_t root = vel_search_master(&ctx(), 10);
    EXPECT_TRUE(root == 8 || root == 9 || root == 10) << root;
}

TEST_F(Geometry, LimitsDirectlyInsideTheRoot)
{
    place(8, VEL_TYPE_WINDOW, 100, 50, 200, 100);
    vel_object &o = place(9, VEL_TYPE_LABEL, 120, 60, 10, 10, 8);
    o.clip_mode = 1;
    EXPECT_EQ(dep(9), (Bounds{99, 300, 49, 150}));

    set_margins(object(8), 4);
    o.clip_mode = 0;
    EXPECT_EQ(dep(9), (Bounds{103, 296, 53, 146}));

    o.clip_mode = 2;
    EXPECT_EQ(dep(9), (Bounds{0, 0, 0, 0}));
}

TEST_F(Geometry, CutRootEndsAtTheCutWithoutItsMargin)
{
    set_margins(place(8, VEL_TYPE_WINDOW, 400, 300, 300, 250), 5);
    vel_object &o = place(9, VEL_TYPE_LABEL, 420, 320, 10, 10, 8);
    // Cut width 238, cut height 175.
    EXPECT_EQ(dep(9), (Bounds{404, 638, 304, 475}));
    o.clip_mode = 2;
    EXPECT_EQ(dep(9), (Bounds{0, 638, 0, 475}));
}

TEST_F(Geometry, DeeperChainsAreShiftedOnePixel)
{
    window_and_panel();
    vel_object &o = place(10, VEL_TYPE_LABEL, 130, 90, 10, 10, 9);
    EXPECT_EQ(dep(10), (Bounds{120, 217, 80, 137}));
    o.clip_mode = 1;
    EXPECT_EQ(dep(10), (Bounds{118, 219, 78, 139}));
    // No limit from the panel: only the window's inner area and no right or
    // bottom limit from a level that yields 0.
    o.clip_mode = 2;
    EXPECT_EQ(dep(10), (Bounds{104, 0, 54, 0}));
}

TEST_F(Geometry, DeeperChainsFoldEveryLevel)
{
    set_margins(place(8, VEL_TYPE_WINDOW, 100, 50, 300, 200), 5);
    set_margins(place(9, VEL_TYPE_WINDOW, 120, 80, 200, 150, 8), 2);
    set_margins(place(10, VEL_TYPE_WINDOW, 300, 100, 100, 50, 9), 3);
    place(11, VEL_TYPE_LABEL, 310, 110, 10, 10, 10);
    // Left, top and bottom from panel 10; the right from panel 9's frame.
    EXPECT_EQ(dep(11), (Bounds{301, 317, 101, 146}));
}

TEST_F(Geometry, DeeperChainsInACutRoot)
{
    set_margins(place(8, VEL_TYPE_WINDOW, 400, 300, 300, 250), 5);
    set_margins(place(9, VEL_TYPE_WINDOW, 420, 320, 250, 200, 8), 2);
    place(10, VEL_TYPE_LABEL, 430, 330, 10, 10, 9);
    // The cut ends one past the last usable column: 400 + 238 - 1 + 1.
    EXPECT_EQ(dep(10), (Bounds{420, 638, 320, 475}));
    // Unless the root's inner edge lies further in: 400 + 300 - 70.
    object(8).margin_right = 70;
    EXPECT_EQ(dep(10).right, 630u);
}

TEST_F(Geometry, TextLimits)
{
    set_margins(place(8, VEL_TYPE_TEXT, 600, 400, 100, 200), 4);
    EXPECT_EQ(text(8), (Bounds{603, 634, 403, 471}));

    set_margins(place(9, VEL_TYPE_WINDOW, 100, 50, 300, 200), 5);
    set_margins(place(10, VEL_TYPE_TEXT, 130, 90, 50, 30, 9), 3);
    EXPECT_EQ(text(10), (Bounds{132, 177, 92, 117}));
    // Beyond the master's limits the master's side wins.
    object(10).x = 380;
    object(10).y = 40;
    EXPECT_EQ(text(10), (Bounds{382, 395, 54, 67}));
}

using velumo::detail::clip_run;
using velumo::detail::ClipCase;

TEST(ClipRun, TheFourPlacements)
{
    // Limits 10 and 20 admit 11..19.
    auto c = clip_run(12, 15, 4, 10, 20);
    EXPECT_EQ(c.kind, ClipCase::inside);
    EXPECT_EQ(c.dest, 12);
    EXPECT_EQ(c.source, 0u);
    EXPECT_EQ(c.length, 4u);

    c = clip_run(5, 15, 11, 10, 20);
    EXPECT_EQ(c.kind, ClipCase::cut_start);
    EXPECT_EQ(c.dest, 11);
    EXPECT_EQ(c.source, 6u);
    EXPECT_EQ(c.length, 5u);

    c = clip_run(15, 25, 11, 10, 20);
    EXPECT_EQ(c.kind, ClipCase::cut_end);
    EXPECT_EQ(c.dest, 15);
    EXPECT_EQ(c.source, 0u);
    EXPECT_EQ(c.length, 5u);

    c = clip_run(5, 25, 21, 10, 20);
    EXPECT_EQ(c.kind, ClipCase::cut_both);
    EXPECT_EQ(c.dest, 11);
    EXPECT_EQ(c.source, 6u);
    EXPECT_EQ(c.length, 9u);

    // Limits with nothing between them leave a spanning run empty.
    c = clip_run(5, 25, 21, 10, 11);
    EXPECT_EQ(c.kind, ClipCase::cut_both);
    EXPECT_EQ(c.length, 0u);

    EXPECT_EQ(clip_run(0, 10, 11, 10, 20).kind, ClipCase::none);
    EXPECT_EQ(clip_run(20, 30, 11, 10, 20).kind, ClipCase::none);
    // Signed: a limit of -1 admits column 0.
    EXPECT_EQ(clip_run(0, 3, 4, -1, 20).kind, ClipCase::inside);
}

} // namespace
} // namespace velumo::test
