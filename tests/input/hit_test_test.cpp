// Hit testing: the four stages and their directions, strict edges, the
// masters' limits and the dependents that let clicks through.
#include "velumo_test.hpp"

namespace velumo::test {
namespace {

class HitTest : public ScreenTest {
protected:
    // A form of `count` empty records (the objects stay zero until placed).
    void load_empty(uint32_t count, uint32_t extra_objs = 0)
    {
        FormBuilder form;
        form.object(count);
        load(form, nullptr, extra_objs);
    }
    vel_object &place(uint32_t n, uint32_t x, uint32_t y, uint32_t w, uint32_t h,
                      uint32_t type = VEL_TYPE_LABEL, uint32_t master = 0)
    {
        vel_object &o = object(n);
        o.x = x, o.y = y, o.width = w, o.height = h;
        o.type = type;
        o.master = master;
        if (master != 0) {
            uint32_t *deps = object(master).dep_objs;
            while (*deps != 0)
                ++deps;
            *deps = n;
        }
        return o;
    }
    uint32_t hit(uint32_t x, uint32_t y) { return vel_test_all_objects(&ctx(), x, y); }
};

TEST_F(HitTest, EdgesAreOutsideOnEverySide)
{
    load_empty(8);
    place(8, 100, 50, 200, 100);
    EXPECT_EQ(vel_in_object(&ctx(), 8, 101, 51), 1u);
    EXPECT_EQ(vel_in_object(&ctx(), 8, 299, 149), 1u);
    EXPECT_EQ(vel_in_object(&ctx(), 8, 100, 80), 0u) << "left edge";
    EXPECT_EQ(vel_in_object(&ctx(), 8, 150, 50), 0u) << "top edge";
    EXPECT_EQ(vel_in_object(&ctx(), 8, 300, 80), 0u) << "x + width";
    EXPECT_EQ(vel_in_object(&ctx(), 8, 150, 150), 0u) << "y + height";
    EXPECT_EQ(vel_in_object(&ctx(), 0, 0, 0), 0u) << "the empty record 0";
}

TEST_F(HitTest, ComparisonsAreSigned)
{
    load_empty(8);
    // An object reaching past the left screen edge, x = -10 as signed.
    place(8, static_cast<uint32_t>(-10), 20, 30, 30);
    EXPECT_EQ(vel_in_object(&ctx(), 8, 5, 30), 1u);
    EXPECT_EQ(vel_in_object(&ctx(), 8, -9, 30), 1u);
    EXPECT_EQ(vel_in_object(&ctx(), 8, -10, 30), 0u);
    EXPECT_EQ(vel_in_object(&ctx(), 8, 20, 30), 0u);
}

TEST_F(HitTest, DependentIsHitOnlyInsideItsMastersLimits)
{
    load_empty(9);
    place(8, 100, 50, 200, 100, VEL_TYPE_WINDOW);
    // Reaches 50 pixels out of its master on the right; clip_mode 1 leaves
    // it the master's rectangle, so x must stay below 300.
    vel_object &d = place(9, 250, 60, 100, 30, VEL_TYPE_LABEL, 8);
    d.clip_mode = 1;
    EXPECT_EQ(vel_in_object(&ctx(), 9, 299, 70), 1u);
    EXPECT_EQ(vel_in_object(&ctx(), 9, 300, 70), 0u);
    EXPECT_EQ(vel_in_object(&ctx(), 9, 320, 70), 0u) << "cut away by the master";
    // clip_mode 0 with margins 4: limits 103..296.
    d.clip_mode = 0;
    object(8).margin_left = object(8).margin_right = 4;
    object(8).margin_top = object(8).margin_bottom = 4;
    EXPECT_EQ(vel_in_object(&ctx(), 9, 295, 70), 1u);
    EXPECT_EQ(vel_in_object(&ctx(), 9, 296, 70), 0u);
}

TEST_F(HitTest, FrameButtonsComeFirstInAscendingOrder)
{
    load_empty(9);
    place(8, 0, 0, 400, 400, VEL_TYPE_WINDOW);
    ctx().active_window = 8;
    place(3, 10, 10, 50, 50);
    place(5, 30, 30, 50, 50);
    place(2, 100, 100, 50, 50).hidden = 1;
    EXPECT_EQ(hit(40, 40), 3u) << "the lower number wins";
    EXPECT_EQ(hit(70, 70), 5u);
    EXPECT_EQ(hit(120, 120), 8u) << "a hidden button is skipped";
}

TEST_F(HitTest, FrameButtonsAboveObjectCountAreNotTried)
{
    load_empty(4, 10);
    place(6, 10, 10, 50, 50);
    place(4, 100, 10, 50, 50);
    EXPECT_EQ(hit(20, 20), 0u);
    EXPECT_EQ(hit(120, 20), 4u);
}

TEST_F(HitTest, ActiveWindowYieldsItsInnermostDependent)
{
    load_empty(13);
    place(8, 100, 100, 300, 200, VEL_TYPE_WINDOW);
    place(9, 120, 120, 200, 100, VEL_TYPE_LABEL, 8);
    place(10, 130, 130, 50, 50, VEL_TYPE_LABEL, 9);
    place(11, 150, 150, 100, 100, VEL_TYPE_LABEL, 8); // overlaps 9 but comes later
    ctx().active_window = 8;
    object(8).hidden = 1; // the active window is tried all the same
    EXPECT_EQ(hit(140, 140), 10u);
    EXPECT_EQ(hit(200, 160), 9u) << "the first entry of the list lies on top";
    EXPECT_EQ(hit(240, 240), 11u);
    EXPECT_EQ(hit(380, 280), 8u);
    EXPECT_EQ(vel_test_dep_objs(&ctx(), 8, 380, 280), 0u);
    EXPECT_EQ(vel_test_dep_objs(&ctx(), 12, 380, 280), 0u) << "no dependents at all";
}

TEST_F(HitTest, TransparentDependentsHideTheirOwnDependents)
{
    load_empty(13);
    place(8, 100, 100, 300, 200, VEL_TYPE_WINDOW);
    place(9, 120, 120, 100, 100, VEL_TYPE_LABEL, 8);
    place(10, 130, 130, 20, 20, VEL_TYPE_LABEL, 9);
    ctx().active_window = 8;
    for (uint32_t style : {2u, 3u}) {
        object(9).border_style = style;
        EXPECT_EQ(hit(140, 140), 8u) << "style " << style;
    }
    object(9).border_style = 4;
    EXPECT_EQ(hit(140, 140), 10u);
    object(9).hidden = 1;
    EXPECT_EQ(hit(140, 140), 8u) << "hidden";
    object(9).hidden = 0;
    object(9).height = 0;
    EXPECT_EQ(hit(140, 140), 8u) << "zero height";
    object(9).height = 100;
    object(9).width = 0;
    EXPECT_EQ(hit(140, 140), 8u) << "zero width";
}

TEST_F(HitTest, DependentListEndsAtTheFirstZero)
{
    load_empty(10);
    place(8, 100, 100, 300, 200, VEL_TYPE_WINDOW);
    place(9, 120, 120, 50, 50, VEL_TYPE_LABEL, 8);
    place(10, 200, 120, 50, 50, VEL_TYPE_LABEL, 8);
    object(8).dep_objs[0] = 0; // 10 stays behind the gap
    ctx().active_window = 8;
    EXPECT_EQ(hit(210, 130), 8u);
}

TEST_F(HitTest, OtherWindowsAreTriedDownwardWithoutTheirDependents)
{
    load_empty(14);
    place(9, 100, 100, 200, 200, VEL_TYPE_WINDOW);
    place(10, 110, 110, 50, 50, VEL_TYPE_LABEL, 9);
    place(12, 150, 150, 200, 200, VEL_TYPE_WINDOW);
    place(13, 200, 200, 200, 200, VEL_TYPE_WINDOW).hidden = 1;
    // The stack says 9 is in front; hit testing ignores it.
    ctx().window_stack[0] = 9;
    ctx().window_stack[1] = 12;
    ctx().window_count = 2;
    EXPECT_EQ(hit(180, 180), 12u) << "the higher number wins";
    EXPECT_EQ(hit(120, 120), 9u) << "never one of its dependents";
    EXPECT_EQ(hit(320, 320), 12u) << "hidden 13 is skipped";
    // Once active, the same window yields its dependent.
    ctx().active_window = 9;
    EXPECT_EQ(hit(120, 120), 10u);
    EXPECT_EQ(hit(180, 180), 9u) << "the active window comes before 12";
}

TEST_F(HitTest, FreeStandingObjectsAreTriedUpward)
{
    load_empty(14);
    place(9, 100, 100, 200, 200);
    place(11, 150, 150, 200, 200);
    place(12, 160, 160, 20, 20, VEL_TYPE_LABEL, 11);
    place(13, 400, 400, 50, 50, VEL_TYPE_WINDOW);
    place(14, 380, 380, 50, 50);
    EXPECT_EQ(hit(200, 200), 9u) << "the lower number wins";
    EXPECT_EQ(hit(320, 320), 11u);
    EXPECT_EQ(hit(170, 170), 9u) << "9 covers the dependent of 11";
    object(9).hidden = 1;
    EXPECT_EQ(hit(170, 170), 12u) << "a free-standing object's dependent";
    EXPECT_EQ(hit(420, 420), 13u) << "windows before free-standing objects";
    EXPECT_EQ(hit(390, 390), 14u);
    EXPECT_EQ(hit(600, 20), 0u);
}

TEST_F(HitTest, DependentsAreNotTriedAsFreeStandingObjects)
{
    load_empty(10);
    place(8, 100, 100, 50, 50, VEL_TYPE_WINDOW).hidden = 1;
    place(9, 200, 200, 50, 50, VEL_TYPE_LABEL, 8);
    object(9).clip_mode = 2; // no limits from the master
    EXPECT_EQ(hit(220, 220), 0u);
}

} // namespace
} // namespace velumo::test
