// Drawing hostile data: lines far beyond the surface, objects right of the
// screen's edge, master cycles, dependent cycles and diamonds.
#include "render_fixture.hpp"

#include "model/tables.hpp"

#include <cstdlib>

namespace velumo::test {
namespace {

class DrawingGuards : public RenderTest {
protected:
    int count(int x1, int y1, int x2, int y2, vel_rgb colour)
    {
        int n = 0;
        for (int y = y1; y <= y2; ++y)
            for (int x = x1; x <= x2; ++x)
                n += at(x, y) == mapped(colour) ? 1 : 0;
        return n;
    }
    void list_many_times(uint32_t master, uint32_t dependent)
    {
        for (uint32_t &entry : object(master).dep_objs)
            entry = dependent;
    }
};

TEST_F(DrawingGuards, LinesAreCutToTheSurfaceBeforeTheyRun)
{
    // Each would run through billions of coordinates off the surface.
    vel_draw_line(&ctx(), 600, 10, 0x7FFFFF00u, 10, 255, 0, 0);
    vel_draw_line(&ctx(), 5, 0x7FFFFF00u, 5, 470, 255, 0, 0);
    vel_draw_line(&ctx(), 0x80000010u, 20, 630, 20, 255, 0, 0);
    vel_draw_line(&ctx(), 700, 30, 0x7FFFFF00u, 30, 255, 0, 0);
    EXPECT_EQ(count(600, 10, 639, 10, kRed), 40);
    EXPECT_EQ(count(5, 470, 5, 479, kRed), 10);
    EXPECT_EQ(count(630, 20, 639, 20, kRed), 10);
    EXPECT_EQ(count(0, 0, 639, 479, kRed), 60);
}

TEST_F(DrawingGuards, UnsupportedDepthsReportOnlyPixelsOnTheSurface)
{
    use_depth(24);
    OutputCapture capture;
    vel_draw_line(&ctx(), 630, 5, 0x7FFFFF00u, 5, 255, 0, 0);
    const std::string printed = capture.finish();
    std::string expected;
    for (int i = 0; i < 10; ++i)
        expected += "24 bit is not supported ! \n";
    EXPECT_EQ(printed, expected);
}

TEST_F(DrawingGuards, AWindowFarRightOfTheScreenDrawsOnlyWhatReachesIt)
{
    vel_object &w = place(8, VEL_TYPE_WINDOW, 2000000000u, 100, 200, 100);
    w.border_style = 1;
    w.border_inset = 2;
    set_margins(w, 4);
    vel_evoke_object(&ctx(), 8);
    vel_draw_selected_lines(&ctx(), 8);
    vel_draw_selected_box(&ctx(), 8);
    // The wrapped cut width puts the outline's right edge at column 638.
    const vel_rgb mark = ctx().mark_colour;
    EXPECT_EQ(count(0, 0, 637, 479, mark), 0);
    EXPECT_GT(count(638, 0, 639, 479, mark), 0);
}

TEST_F(DrawingGuards, MasterCyclesEndEveryWalkUpTheChain)
{
    place(8, VEL_TYPE_TEXT, 50, 50, 100, 80, 9).border_style = 1;
    place(9, VEL_TYPE_TEXT, 60, 60, 100, 80, 10);
    place(10, VEL_TYPE_TEXT, 70, 70, 100, 80, 8);
    place(11, VEL_TYPE_LABEL, 80, 80, 20, 20, 8);
    const uint32_t root = vel_search_master(&ctx(), 11);
    EXPECT_TRUE(root == 8 || root == 9 || root == 10) << root;
    vel_p_cutted_w_dependent(&ctx(), 11);
    vel_p_cutted_h_dependent(&ctx(), 11);
    uint32_t l = 0, r = 0, t = 0, b = 0;
    vel_get_borders_for_text(&ctx(), 11, &l, &r, &t, &b);
    vel_evoke_object(&ctx(), 11);
    vel_evoke_object(&ctx(), 8);
    EXPECT_LE(vel_in_object(&ctx(), 11, 90, 90), 1u);
    // A master outside the table is no master at all.
    place(12, VEL_TYPE_LABEL, 300, 300, 40, 40, 100000, kBlue);
    EXPECT_EQ(vel_search_master(&ctx(), 12), 0u);
    vel_evoke_object(&ctx(), 12);
    EXPECT_EQ(at(320, 320), mapped(kBlue));
}

TEST_F(DrawingGuards, DependentCyclesAndDiamondsAreWalkedBriefly)
{
    // 8 lists 9 a hundred times, 9 lists 10 a hundred times, and so on: five
    // levels make 10^10 paths.  12 lists its ancestors and itself.
    place(8, VEL_TYPE_WINDOW, 20, 20, 400, 300);
    place(9, VEL_TYPE_LABEL, 30, 30, 300, 200, 8);
    place(10, VEL_TYPE_LABEL, 40, 40, 200, 150, 9);
    place(11, VEL_TYPE_LABEL, 50, 50, 100, 100, 10);
    place(12, VEL_TYPE_LABEL, 60, 60, 50, 50, 11, kRed);
    for (uint32_t n = 8; n <= 11; ++n)
        list_many_times(n, n + 1);
    object(12).dep_objs[0] = 8;
    object(12).dep_objs[1] = 9;
    object(12).dep_objs[2] = 12;
    object(12).dep_objs[3] = 70000;
    object(12).dep_objs[4] = 11;

    vel_draw_dep_objs(&ctx(), 8);
    EXPECT_EQ(at(80, 80), mapped(kRed));
    EXPECT_EQ(vel_test_dep_objs(&ctx(), 8, 80, 80), 12u);
    EXPECT_EQ(vel_check_cursor_dep_objs(&ctx(), 8), 0u);
    vel_initiate_cursor_dep_objs(&ctx(), 8);
    vel_update_x_dependent_obj(&ctx(), 8, 2, 1);
    vel_update_dep_objs_after_move(&ctx(), 8, 1, 1);
    vel_add_difference_toxy_dep_objs(&ctx(), 8, 1, 1);
    // Record 0, which every number outside the table reaches, stays empty.
    EXPECT_EQ(object(0).dep_objs[0], 0u);
    EXPECT_EQ(object(0).x, 0u);
}

// A chain of 20,000 nested dependents, each the master of the next: the
// walks stop VEL_MAX_NESTING levels below their start, the walks up the
// masters take no stack, and nothing overflows.
TEST_F(DrawingGuards, DeepTreesAreWalkedToTheNestingLimit)
{
    constexpr uint32_t kWindow = 8, kCount = 20000;
    std::free(ctx().objects);
    ctx().objects = static_cast<vel_object *>(std::calloc(kCount + 1, sizeof(vel_object)));
    ASSERT_NE(ctx().objects, nullptr);
    ctx().object_count = kCount;
    for (uint32_t n = kWindow; n <= kCount; ++n) {
        place(n, n == kWindow ? VEL_TYPE_WINDOW : VEL_TYPE_LABEL, 100, 100, 300, 200,
              n == kWindow ? 0 : n - 1, n == kWindow ? kGrey : kRed);
        if (n < kCount) object(n).dep_objs[0] = n + 1;
    }
    ctx().active_window = kWindow;
    ctx().window_stack[0] = kWindow;
    ctx().window_count = 1;

    vel_draw_all_objects(&ctx(), 1, 0);
    EXPECT_EQ(at(200, 200), mapped(kRed));
    EXPECT_EQ(vel_test_all_objects(&ctx(), 200, 200), kWindow + VEL_MAX_NESTING);
    EXPECT_EQ(vel_search_master(&ctx(), kCount), kWindow);
    vel_p_cutted_w_dependent(&ctx(), kCount);
    vel_p_cutted_h_dependent(&ctx(), kCount);
    uint32_t l = 0, r = 0, t = 0, b = 0;
    vel_get_borders_for_text(&ctx(), kCount, &l, &r, &t, &b);
    vel_update_dep_objs_after_move(&ctx(), kWindow, 5, 5);
    EXPECT_EQ(object(kWindow + VEL_MAX_NESTING).x, 105u);
    EXPECT_EQ(object(kWindow + VEL_MAX_NESTING + 1).x, 100u);
}

} // namespace
} // namespace velumo::test
