// Frame actions on the active window: resize limits, scroll ranges and who
// follows a scroll, the move loop with its clamp, mode switch and close.
#include "velumo_test.hpp"

#include <chrono>
#include <thread>
#include <time.h>

namespace velumo::test {
namespace {

constexpr uint32_t kWindow = 8;
constexpr uint32_t kField = 9;      // editable entry field, clip_mode 0
constexpr uint32_t kFramed = 10;    // clip_mode 1 directly on the window
constexpr uint32_t kPanel = 11;     // clip_mode 0, holds kInner
constexpr uint32_t kInner = 12;     // clip_mode 1 on a nested panel
constexpr uint32_t kUnclipped = 13; // clip_mode 2, holds kBelowUnclipped
constexpr uint32_t kBelowUnclipped = 14;

class FrameActionTest : public ScreenTest {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        FormBuilder form;
        for (uint32_t k = 1; k <= VEL_FRAME_BUTTONS; ++k) {
            vel_object_file_rec &b = form.object(k);
            b.width = b.height = 16;
            b.type = VEL_TYPE_LABEL;
            b.hidden = 1;
        }
        vel_object_file_rec &w = form.object(kWindow);
        w.x = 100, w.y = 100, w.width = 300, w.height = 200;
        w.type = VEL_TYPE_WINDOW;
        w.hidden = 1;
        w.editable = 1;
        w.fill_r = 0, w.fill_g = 160, w.fill_b = 0;
        w.scroll_max_x = 100, w.scroll_max_y = 50;
        place(form, kField, kWindow, 110, 110, VEL_TYPE_ENTRY, 0).editable = 1;
        place(form, kFramed, kWindow, 110, 140, VEL_TYPE_LABEL, 1);
        place(form, kPanel, kWindow, 200, 110, VEL_TYPE_LABEL, 0);
        place(form, kInner, kPanel, 210, 120, VEL_TYPE_ENTRY, 1).editable = 1;
        place(form, kUnclipped, kWindow, 110, 200, VEL_TYPE_LABEL, 2);
        place(form, kBelowUnclipped, kUnclipped, 115, 205, VEL_TYPE_LABEL, 0);
        load(form);
        ctx().window_to_activate = kWindow;
        vel_activate_window(&ctx());
        ASSERT_EQ(ctx().active_window, kWindow);
    }
    static vel_object_file_rec &place(FormBuilder &form, uint32_t n, uint32_t master, uint32_t x,
                                      uint32_t y, uint32_t type, uint32_t clip_mode)
    {
        vel_object_file_rec &o = form.object(n);
        o.x = x, o.y = y, o.width = 60, o.height = 20;
        o.type = type;
        o.master = master;
        o.clip_mode = clip_mode;
        uint32_t *deps = form.object(master).dep_objs;
        while (*deps != 0)
            ++deps;
        *deps = n;
        return o;
    }
    void press(uint32_t button, uint32_t times = 1)
    {
        for (uint32_t i = 0; i < times; ++i) {
            ctx().window_to_activate = button;
            vel_exa_left_pressed(&ctx());
        }
    }
    void release(uint32_t button)
    {
        ctx().window_to_activate = button;
        vel_exa_left_released(&ctx());
    }
    vel_object &window() { return object(kWindow); }
    int32_t scroll_x() { return static_cast<int32_t>(window().scroll_x); }
    int32_t scroll_y() { return static_cast<int32_t>(window().scroll_y); }
};

// ------------------------------------------------------------------ resize

TEST_F(FrameActionTest, ResizeStopsAtItsLimits)
{
    window().width = 586;
    window().height = 426;
    press(6, 2);
    press(3, 3);
    EXPECT_EQ(window().width, 590u) << "590 is not below 640 - 50";
    EXPECT_EQ(window().height, 430u);
    EXPECT_EQ(object(kField).x, 110u) << "dependents stay";

    window().height = 22;
    window().width = 21;
    press(2, 2);
    press(5, 2);
    EXPECT_EQ(window().height, 18u);
    EXPECT_EQ(window().width, 17u);
}

TEST_F(FrameActionTest, ResizeRedrawsEvenAtTheLimit)
{
    window().width = 590;
    fill_screen({1, 2, 3});
    press(6);
    EXPECT_EQ(at(300, 290), (vel_rgb{0, 160, 0}));
    EXPECT_EQ(at(95, 105), (vel_rgb{255, 0, 0})) << "selection square";
}

TEST_F(FrameActionTest, PressesNeedAFullFrameWindowAndAKnownMode)
{
    window().width = 300;
    window().window_kind = VEL_WINDOW_REDUCED_FRAME;
    press(6);
    EXPECT_EQ(window().width, 300u);

    window().window_kind = VEL_WINDOW_FULL_FRAME;
    ctx().frame_mode = 7;
    press(6);
    EXPECT_EQ(window().width, 300u);

    ctx().frame_mode = 0;
    ctx().active_window = 0;
    press(6);
    EXPECT_EQ(window().width, 300u);
}

// ------------------------------------------------------------------ scroll

TEST_F(FrameActionTest, HorizontalRangeRunsFromMinusMaxToTwiceMax)
{
    ctx().frame_mode = 1;
    press(5, 25);
    EXPECT_EQ(scroll_x(), 200);
    const uint32_t field_x = object(kField).x;
    press(5);
    EXPECT_EQ(object(kField).x, field_x) << "out of range: nothing moves";
    press(6, 40);
    EXPECT_EQ(scroll_x(), -100);
}

TEST_F(FrameActionTest, VerticalRangeAndFiveScreensWithoutMax)
{
    ctx().frame_mode = 1;
    press(2, 15);
    EXPECT_EQ(scroll_y(), 100);
    press(3, 20);
    EXPECT_EQ(scroll_y(), -50);

    window().scroll_max_x = 0;
    window().scroll_x = 3190;
    press(5, 2);
    EXPECT_EQ(scroll_x(), 3200);
    window().scroll_x = static_cast<uint32_t>(-3190);
    press(6, 2);
    EXPECT_EQ(scroll_x(), -3200);
}

TEST_F(FrameActionTest, CursorFollowsTheOffsetExceptScrollingLeft)
{
    ctx().frame_mode = 1;
    const uint32_t cursor_x = window().cursor_x;
    const uint32_t cursor_y = window().cursor_y;
    const uint32_t field_cursor_x = object(kField).cursor_x;
    press(6, 2);
    EXPECT_EQ(window().cursor_x, cursor_x + 20) << "left moves it right";
    EXPECT_EQ(object(kField).x, 90u);
    EXPECT_EQ(object(kField).cursor_x, field_cursor_x - 20);
    press(5, 3);
    EXPECT_EQ(window().cursor_x, cursor_x + 50);
    EXPECT_EQ(object(kField).x, 120u);

    press(2);
    EXPECT_EQ(window().cursor_y, cursor_y + 10);
    EXPECT_EQ(object(kField).y, 120u);
    press(3, 2);
    EXPECT_EQ(window().cursor_y, cursor_y - 10);
    EXPECT_EQ(object(kField).y, 100u);
}

TEST_F(FrameActionTest, FrameClippedDependentsOfTheWindowStayPut)
{
    ctx().frame_mode = 1;
    press(5);
    EXPECT_EQ(object(kFramed).x, 110u);
    EXPECT_EQ(object(kPanel).x, 210u);
    EXPECT_EQ(object(kInner).x, 220u) << "clip_mode 1 one level deeper scrolls";
    EXPECT_EQ(object(kUnclipped).x, 110u);
    EXPECT_EQ(object(kBelowUnclipped).x, 115u) << "not descended into";
}

TEST_F(FrameActionTest, ScrollRedrawsOnlyTheActiveWindow)
{
    ctx().frame_mode = 1;
    fill_screen({1, 2, 3});
    press(5);
    EXPECT_EQ(at(390, 290), (vel_rgb{0, 160, 0}));
    EXPECT_EQ(at(95, 105), (vel_rgb{1, 2, 3})) << "no selection marks";
}

// ------------------------------------------------------------- dependents

TEST_F(FrameActionTest, MoveShiftCarriesCursorsOfTextObjectsOnly)
{
    object(kPanel).editable = 1; // a caption: its cursor is not moved
    object(kPanel).cursor_x = 5;
    object(kFramed).width = 0; // sizes are not looked at
    const uint32_t inner_cursor_y = object(kInner).cursor_y;
    vel_update_dep_objs_after_move(&ctx(), kWindow, static_cast<uint32_t>(-10), 7);
    EXPECT_EQ(object(kField).x, 100u);
    EXPECT_EQ(object(kFramed).y, 147u);
    EXPECT_EQ(object(kInner).y, 127u);
    EXPECT_EQ(object(kInner).cursor_y, inner_cursor_y + 7);
    EXPECT_EQ(object(kPanel).cursor_x, 5u);
    EXPECT_EQ(object(kBelowUnclipped).x, 105u);
}

TEST_F(FrameActionTest, DifferenceShiftSkipsEmptyObjectsAndMovesEveryEditableCursor)
{
    object(kPanel).editable = 1;
    object(kPanel).cursor_x = 5;
    object(kUnclipped).height = 0;
    vel_add_difference_toxy_dep_objs(&ctx(), kWindow, 3, 0);
    EXPECT_EQ(object(kPanel).cursor_x, 8u);
    EXPECT_EQ(object(kInner).x, 213u);
    EXPECT_EQ(object(kUnclipped).x, 110u);
    EXPECT_EQ(object(kBelowUnclipped).x, 115u);
}

// -------------------------------------------------------------------- move

TEST_F(FrameActionTest, MoveTakesTheNextLeftPress)
{
    push_key(SDL_KEYDOWN, SDLK_a);
    push_mouse_button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_RIGHT, 300, 300);
    push_mouse_button(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, 310, 310);
    push_mouse_button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 200, 150);
    push_mouse_button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 400, 400);
    const uint32_t cursor_x = window().cursor_x;
    const uint32_t field_cursor_y = object(kField).cursor_y;
    release(1);

    EXPECT_EQ(window().x, 200u);
    EXPECT_EQ(window().y, 150u);
    EXPECT_EQ(window().cursor_x, cursor_x + 100);
    EXPECT_EQ(object(kField).x, 210u);
    EXPECT_EQ(object(kField).cursor_y, field_cursor_y + 50);
    EXPECT_EQ(object(7).x, 200u + 300 - 16);
    EXPECT_EQ(object(7).y, 126u);
    EXPECT_EQ(at(150, 120), (vel_rgb{255, 255, 255})) << "old place erased";
    EXPECT_EQ(at(450, 340), (vel_rgb{0, 160, 0}));

    SDL_Event next{};
    ASSERT_EQ(SDL_PollEvent(&next), 1) << "events after the click stay queued";
    EXPECT_EQ(next.button.x, 400);
}

TEST_F(FrameActionTest, MoveKeepsClearOfTheTopLeftCorner)
{
    push_mouse_button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 5, 5);
    vel_move_window(&ctx());
    EXPECT_EQ(window().x, 11u);
    EXPECT_EQ(window().y, 25u);
    EXPECT_EQ(object(kField).x, 21u);

    push_mouse_button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 11, 25);
    vel_move_window(&ctx());
    EXPECT_EQ(window().x, 11u);
    EXPECT_EQ(window().y, 25u);
}

TEST_F(FrameActionTest, MoveIgnoresAPressHandledBefore)
{
    ctx().event.type = SDL_MOUSEBUTTONDOWN;
    ctx().event.button.button = SDL_BUTTON_LEFT;
    ctx().event.button.x = 50;
    push_mouse_button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 300, 60);
    vel_move_window(&ctx());
    EXPECT_EQ(window().x, 300u);
    EXPECT_EQ(ctx().event.type, 0) << "the click is consumed";
}

TEST_F(FrameActionTest, WaitingForTheMoveClickLeavesTheProcessorFree)
{
    std::thread clicker([] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        push_mouse_button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 300, 200);
    });
    const auto cpu_seconds = [] {
        timespec t{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) / 1e9;
    };
    const auto wall_start = std::chrono::steady_clock::now();
    const double cpu_start = cpu_seconds();
    vel_move_window(&ctx());
    const double cpu = cpu_seconds() - cpu_start;
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - wall_start;
    clicker.join();
    EXPECT_EQ(window().x, 300u);
    EXPECT_LT(cpu, 0.25 * wall.count()) << "cpu " << cpu << " s of " << wall.count() << " s";
}

// ------------------------------------------------------ mode switch, close

TEST_F(FrameActionTest, ModeButtonSwitchesModeAndMarkColour)
{
    release(4);
    EXPECT_EQ(ctx().frame_mode, 1u);
    EXPECT_EQ(ctx().mark_colour, (vel_rgb{0, 0, 255}));
    EXPECT_EQ(at(95, 105), (vel_rgb{0, 0, 255}));
    release(4);
    EXPECT_EQ(ctx().frame_mode, 0u);
    EXPECT_EQ(at(95, 105), (vel_rgb{255, 0, 0}));

    ctx().frame_mode = 7;
    ctx().mark_colour = {9, 9, 9};
    release(4);
    EXPECT_EQ(ctx().frame_mode, 7u);
    EXPECT_EQ(ctx().mark_colour, (vel_rgb{9, 9, 9}));
}

TEST_F(FrameActionTest, CloseButtonClosesAndRedraws)
{
    vel_draw_all_objects(&ctx(), 0, 0);
    release(7);
    EXPECT_EQ(ctx().active_window, 0u);
    EXPECT_EQ(window().hidden, 1u);
    EXPECT_EQ(at(300, 290), (vel_rgb{255, 255, 255}));
    EXPECT_EQ(object(7).hidden, 1u);
}

} // namespace
} // namespace velumo::test
