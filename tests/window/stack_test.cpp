// The window stack: opening, raising, closing, a full stack, the frame
// buttons' places, the text cursor's start and the modal dialogs.
#include "velumo_test.hpp"

#include <algorithm>
#include <vector>

namespace velumo::test {
namespace {

constexpr uint32_t kFirstWindow = 8;

class WindowStackTest : public ScreenTest {
protected:
    // Frame buttons 1..7 (16 x 16, hidden) and `windows` closed full-frame
    // windows from object 8 on, each 100 x 60, placed apart on a grid.
    void load_windows(uint32_t windows, uint32_t extra_objs = 0)
    {
        FormBuilder form;
        for (uint32_t k = 1; k <= VEL_FRAME_BUTTONS; ++k) {
            vel_object_file_rec &b = form.object(k);
            b.width = b.height = 16;
            b.type = VEL_TYPE_LABEL;
            b.hidden = 1;
            b.fill_r = b.fill_g = b.fill_b = 128;
        }
        for (uint32_t i = 0; i < windows; ++i) {
            vel_object_file_rec &w = form.object(kFirstWindow + i);
            w.x = 30 + (i % 4) * 150;
            w.y = 40 + (i / 4 % 4) * 110;
            w.width = 100;
            w.height = 60;
            w.type = VEL_TYPE_WINDOW;
            w.hidden = 1;
            w.fill_r = 0, w.fill_g = 160, w.fill_b = 0;
        }
        load(form, nullptr, extra_objs);
    }
    // Fills a spare record as a dependent of master.
    vel_object &add_dependent(uint32_t n, uint32_t master, uint32_t x, uint32_t y, uint32_t w,
                              uint32_t h, uint32_t type = VEL_TYPE_ENTRY)
    {
        vel_object &o = object(n);
        o.x = x, o.y = y, o.width = w, o.height = h;
        o.type = type;
        o.master = master;
        uint32_t *deps = object(master).dep_objs;
        while (*deps != 0)
            ++deps;
        *deps = n;
        return o;
    }
    void activate(uint32_t win)
    {
        ctx().window_to_activate = win;
        vel_activate_window(&ctx());
    }
    std::vector<uint32_t> stack()
    {
        return {ctx().window_stack, ctx().window_stack + ctx().window_count};
    }
    void expect_buttons_hidden(std::vector<uint32_t> hidden)
    {
        for (uint32_t k = 1; k <= VEL_FRAME_BUTTONS; ++k) {
            const bool expected = std::find(hidden.begin(), hidden.end(), k) != hidden.end();
            EXPECT_EQ(object(k).hidden, expected ? 1u : 0u) << "button " << k;
        }
    }
};

TEST_F(WindowStackTest, OpeningPutsEachNewWindowInFrontAndCountsIt)
{
    load_windows(3);
    for (uint32_t w : {8u, 9u, 10u})
        activate(w);
    EXPECT_EQ(stack(), (std::vector<uint32_t>{10, 9, 8}));
    EXPECT_EQ(ctx().active_window, 10u);
    EXPECT_EQ(ctx().window_to_activate, 0u);
    for (uint32_t w : {8u, 9u, 10u})
        EXPECT_EQ(object(w).hidden, 0u);
}

TEST_F(WindowStackTest, RaisingFromIndexThreeOfFiveKeepsTheCount)
{
    load_windows(5);
    for (uint32_t w = 8; w <= 12; ++w)
        activate(w);
    ASSERT_EQ(stack(), (std::vector<uint32_t>{12, 11, 10, 9, 8}));
    activate(9);
    EXPECT_EQ(stack(), (std::vector<uint32_t>{9, 12, 11, 10, 8}));
    EXPECT_EQ(ctx().active_window, 9u);
}

TEST_F(WindowStackTest, IgnoredActivationsChangeNothing)
{
    load_windows(2, 1);
    activate(8);
    activate(9);
    // The active window itself, a non-window and a dependent window.
    add_dependent(10, 8, 40, 50, 20, 20, VEL_TYPE_WINDOW);
    for (uint32_t target : {9u, 3u, 10u}) {
        activate(target);
        EXPECT_EQ(ctx().window_to_activate, target);
        EXPECT_EQ(ctx().active_window, 9u);
        EXPECT_EQ(stack(), (std::vector<uint32_t>{9, 8}));
    }
}

TEST_F(WindowStackTest, AFullStackRefusesANewWindowButStillRaises)
{
    load_windows(102);
    for (uint32_t w = 8; w < 108; ++w)
        activate(w);
    ASSERT_EQ(ctx().window_count, 100u);
    ASSERT_EQ(ctx().window_stack[99], 8u);

    activate(108);
    EXPECT_EQ(object(108).hidden, 0u) << "marked visible anyway";
    EXPECT_EQ(ctx().active_window, 107u);
    EXPECT_EQ(ctx().window_count, 100u);
    EXPECT_EQ(ctx().window_stack[0], 107u);
    EXPECT_EQ(ctx().window_to_activate, 108u);

    activate(8); // the bottom window comes to the front
    EXPECT_EQ(ctx().window_stack[0], 8u);
    EXPECT_EQ(ctx().window_stack[1], 107u);
    EXPECT_EQ(ctx().window_stack[99], 9u);
    EXPECT_EQ(ctx().window_count, 100u);

    object(109).hidden = 0; // visible from the start: enters, pushing out the last entry
    activate(109);
    EXPECT_EQ(ctx().window_stack[0], 109u);
    EXPECT_EQ(ctx().window_stack[99], 10u);
    EXPECT_EQ(ctx().window_count, 100u);
}

TEST_F(WindowStackTest, ClosingTheFrontOfThreeActivatesTheNext)
{
    load_windows(3);
    for (uint32_t w : {10u, 9u, 8u})
        activate(w);
    object(8).editable = 1;
    ctx().cursor_object = 8;
    vel_close_win(&ctx(), 0);
    EXPECT_EQ(stack(), (std::vector<uint32_t>{9, 10}));
    EXPECT_EQ(ctx().active_window, 9u);
    EXPECT_EQ(object(8).hidden, 1u);
    EXPECT_EQ(ctx().cursor_object, 0u) << "window 9 has nothing to take the cursor";
    EXPECT_EQ(object(7).x, object(9).x + 100 - 16) << "the buttons sit on window 9";
}

TEST_F(WindowStackTest, ClosingTheLastWindowLeavesNoneActive)
{
    load_windows(1);
    activate(8);
    vel_close_win(&ctx(), 0);
    EXPECT_EQ(ctx().window_count, 0u);
    EXPECT_EQ(ctx().active_window, 0u);
    expect_buttons_hidden({1, 2, 3, 4, 5, 6, 7});
    // With nothing active, "close the active window" is no request at all.
    vel_close_win(&ctx(), 0);
    EXPECT_EQ(ctx().window_count, 0u);
}

TEST_F(WindowStackTest, ClosingAWindowBelowErasesItAndKeepsTheFront)
{
    load_windows(3);
    for (uint32_t w : {8u, 9u, 10u})
        activate(w);
    vel_draw_all_objects(&ctx(), 0, 0);
    const vel_object &middle = object(9);
    ASSERT_EQ(at(middle.x + 50, middle.y + 30), (vel_rgb{0, 160, 0}));
    const uint32_t button_x = object(1).x;

    vel_close_win(&ctx(), 9);
    EXPECT_EQ(stack(), (std::vector<uint32_t>{10, 8}));
    EXPECT_EQ(ctx().active_window, 10u);
    EXPECT_EQ(at(middle.x + 50, middle.y + 30), (vel_rgb{255, 255, 255}));
    EXPECT_EQ(object(1).x, button_x);
    expect_buttons_hidden({});
}

TEST_F(WindowStackTest, ClosingAClosedOrUnstackedWindowIsIgnored)
{
    load_windows(3);
    activate(8);
    vel_close_win(&ctx(), 9); // closed
    object(10).hidden = 0;    // visible but never stacked
    vel_close_win(&ctx(), 10);
    EXPECT_EQ(object(10).hidden, 0u);
    EXPECT_EQ(stack(), (std::vector<uint32_t>{8}));
}

TEST_F(WindowStackTest, ActivationTakesTheMarksAndButtonsOffThePreviousWindow)
{
    load_windows(2);
    activate(8);
    vel_draw_all_objects(&ctx(), 0, 0);
    const vel_object &first = object(8);
    ASSERT_EQ(at(first.x - 5, first.y + 3), (vel_rgb{255, 0, 0})) << "selection square";
    const vel_object &button = object(4);
    ASSERT_EQ(at(button.x + 8, button.y + 8), (vel_rgb{128, 128, 128}));

    activate(9);
    EXPECT_EQ(at(first.x - 5, first.y + 3), (vel_rgb{255, 255, 255}));
    EXPECT_EQ(at(first.x - 1, first.y + 30), (vel_rgb{255, 255, 255})) << "outline";
    EXPECT_EQ(at(first.x + 100 - 112 + 48 + 8, first.y - 16), (vel_rgb{255, 255, 255}));
}

// ------------------------------------------------------------ frame buttons

TEST_F(WindowStackTest, FullFrameButtonsEndAtTheRightEdge)
{
    load_windows(1);
    object(8).x = 100, object(8).y = 100, object(8).width = 300;
    activate(8);
    for (uint32_t k = 1; k <= 7; ++k) {
        EXPECT_EQ(object(k).x, 100u + 300 - 112 + 16 * (k - 1)) << "button " << k;
        EXPECT_EQ(object(k).y, 76u);
    }
    expect_buttons_hidden({});
}

TEST_F(WindowStackTest, ReducedFrameShowsButtonsOneAndSeven)
{
    load_windows(1);
    object(8).x = 100, object(8).y = 100, object(8).width = 300;
    object(8).window_kind = VEL_WINDOW_REDUCED_FRAME;
    activate(8);
    EXPECT_EQ(object(1).x, 368u);
    EXPECT_EQ(object(7).x, 384u);
    EXPECT_EQ(object(1).y, 76u);
    EXPECT_EQ(object(7).y, 76u);
    expect_buttons_hidden({2, 3, 4, 5, 6});
}

TEST_F(WindowStackTest, AWindowPastTheRightEdgeEndsTheRowTwoShortOfIt)
{
    load_windows(1);
    object(8).x = 500, object(8).width = 300;
    activate(8);
    EXPECT_EQ(object(7).x + 16, 640u - 2);
}

TEST_F(WindowStackTest, OperatorsWithoutAnActiveWindowAreHidden)
{
    load_windows(1);
    activate(8);
    object(8).window_kind = 2; // other kinds leave the buttons as they are
    object(3).x = 5;
    vel_set_operators(&ctx());
    EXPECT_EQ(object(3).x, 5u);
    expect_buttons_hidden({});

    ctx().active_window = 0;
    vel_set_operators(&ctx());
    expect_buttons_hidden({1, 2, 3, 4, 5, 6, 7});
}

// ------------------------------------------------------------------ cursor

TEST_F(WindowStackTest, CursorsStartAtTheMarginsOnce)
{
    load_windows(1, 4);
    vel_object &w = object(8);
    w.editable = 1, w.margin_left = 4, w.margin_top = 6;
    vel_object &field = add_dependent(9, 8, 40, 50, 60, 20);
    field.editable = 1, field.margin_left = 2, field.margin_top = 3;
    field.cursor_line = 5;
    vel_object &flat = add_dependent(10, 8, 40, 80, 0, 20, VEL_TYPE_LABEL);
    vel_object &inside_flat = add_dependent(11, 10, 40, 80, 20, 20);
    inside_flat.editable = 1;
    vel_object &placed = add_dependent(12, 8, 40, 90, 20, 20);
    placed.editable = 1, placed.cursor_x = 77, placed.cursor_y = 88;
    (void)flat;

    vel_initiate_cursor_win(&ctx(), 8);
    EXPECT_EQ(w.cursor_x, 30u + 4);
    EXPECT_EQ(w.cursor_y, 40u + 6);
    EXPECT_EQ(field.cursor_x, 42u);
    EXPECT_EQ(field.cursor_y, 53u);
    EXPECT_EQ(field.cursor_line, 0u);
    EXPECT_EQ(inside_flat.cursor_x, 0u) << "not descended into a zero-size dependent";
    EXPECT_EQ(placed.cursor_x, 77u);
    EXPECT_EQ(placed.cursor_y, 88u);
}

TEST_F(WindowStackTest, CursorSearchIsDepthFirstOverSizedDependents)
{
    load_windows(1, 5);
    add_dependent(9, 8, 40, 50, 0, 20).editable = 1; // no size
    add_dependent(10, 8, 40, 50, 60, 40, VEL_TYPE_LABEL);
    add_dependent(11, 10, 42, 52, 20, 20, VEL_TYPE_LABEL);
    add_dependent(12, 10, 42, 72, 20, 10).editable = 1;
    add_dependent(13, 8, 40, 95, 20, 5).editable = 1;
    object(12).hidden = 1; // not looked at
    EXPECT_EQ(vel_check_cursor_dep_objs(&ctx(), 8), 12u);
    EXPECT_EQ(vel_check_cursor_dep_objs(&ctx(), 13), 0u);

    activate(8);
    EXPECT_EQ(ctx().cursor_object, 12u);
}

TEST_F(WindowStackTest, AnEditableFlagOfTwoKeepsTheCursorObject)
{
    load_windows(2);
    object(8).editable = 1;
    activate(8);
    ASSERT_EQ(ctx().cursor_object, 8u);
    object(9).editable = 2;
    activate(9);
    EXPECT_EQ(ctx().cursor_object, 8u);
}

// ------------------------------------------------------- select and dialogs

TEST_F(WindowStackTest, SelectMovesTheCursorOrActivates)
{
    load_windows(2, 2);
    add_dependent(10, 8, 40, 50, 60, 20).editable = 1;
    add_dependent(11, 8, 40, 75, 60, 20, VEL_TYPE_LABEL).editable = 1;
    activate(8);
    activate(9);

    ctx().window_to_activate = 8;
    vel_select_window(&ctx());
    EXPECT_EQ(ctx().active_window, 8u);
    EXPECT_EQ(ctx().cursor_object, 10u);
    EXPECT_EQ(at(120, 90), (vel_rgb{0, 160, 0})) << "redrawn";

    ctx().cursor_object = 0;
    ctx().window_to_activate = 10;
    vel_select_window(&ctx());
    EXPECT_EQ(ctx().cursor_object, 10u);
    EXPECT_EQ(ctx().window_to_activate, 10u);

    ctx().window_to_activate = 11; // a caption takes no cursor
    vel_select_window(&ctx());
    EXPECT_EQ(ctx().cursor_object, 10u);
}

class DialogTest : public WindowStackTest {
protected:
    static constexpr uint32_t kYes = 10, kNo = 11;
    // Window 8 open; window 9 the dialog with a yes and a no button.
    void SetUp() override
    {
        WindowStackTest::SetUp();
        load_windows(2, 2);
        vel_object &dialog = object(9);
        dialog.x = 200, dialog.y = 200, dialog.width = 200, dialog.height = 100;
        add_dependent(kYes, 9, 210, 260, 60, 30, VEL_TYPE_LABEL);
        add_dependent(kNo, 9, 300, 260, 60, 30, VEL_TYPE_LABEL);
        activate(8);
    }
    static void click(uint16_t x, uint16_t y)
    {
        push_mouse_button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, x, y);
        push_mouse_button(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, x, y);
    }
    // Frame button 7 of the dialog, as it will be placed.
    static void click_close() { click(200 + 200 - 16 + 8, 200 - 24 + 8); }
};

TEST_F(DialogTest, DecideReturnsTheClickedAnswerAndCloses)
{
    click(80, 70); // on window 8, not an answer
    click(330, 275);
    click_close(); // ends the loop should the answer be missed
    EXPECT_EQ(vel_decide_window(&ctx(), 9, kYes, kNo), kNo);
    EXPECT_EQ(object(9).hidden, 1u);
    EXPECT_EQ(ctx().active_window, 8u);
    EXPECT_EQ(stack(), (std::vector<uint32_t>{8}));
}

TEST_F(DialogTest, TheCloseButtonAnswersSeven)
{
    click_close();
    EXPECT_EQ(vel_decide_window(&ctx(), 9, kYes, kNo), 7u);
    EXPECT_EQ(ctx().active_window, 8u);
}

TEST_F(DialogTest, NoticeEndsOnItsObject)
{
    click(330, 275); // the other button: ignored
    click(240, 275);
    push_key(SDL_KEYDOWN, SDLK_a); // left for the application
    click_close();
    vel_notice_window(&ctx(), 9, kYes);
    EXPECT_EQ(object(9).hidden, 1u);
    EXPECT_EQ(ctx().active_window, 8u);
    SDL_Event next{};
    ASSERT_EQ(SDL_PollEvent(&next), 1);
    EXPECT_EQ(next.type, SDL_KEYDOWN);
}

} // namespace
} // namespace velumo::test
