// Scene drawing: the order of the passes seen through overlap colours, the
// visibility and fitting of dependents, selection marks, cursor, refreshes.
#include "velumo_test.hpp"

#include <vector>

// Counts the refreshes the library asks SDL for; linked in with --wrap.
namespace {
std::vector<SDL_Rect> refreshed_rects;
}
#ifdef VELUMO_TEST_WRAPS_UPDATE_RECTS
extern "C" void __real_SDL_UpdateRects(SDL_Surface *screen, int count, SDL_Rect *rects);
extern "C" void __wrap_SDL_UpdateRects(SDL_Surface *screen, int count, SDL_Rect *rects)
{
    for (int i = 0; i < count; ++i)
        refreshed_rects.push_back(rects[i]);
    __real_SDL_UpdateRects(screen, count, rects);
}
#endif

namespace velumo::test {
namespace {

constexpr vel_rgb kDesktop{128, 128, 128};
constexpr vel_rgb kWindowA{0, 0, 200};
constexpr vel_rgb kWindowB{0, 200, 0};
constexpr vel_rgb kWindowC{200, 0, 0};
constexpr vel_rgb kButton{250, 250, 0};
constexpr vel_rgb kMark{255, 0, 0};
constexpr vel_rgb kBackground{255, 255, 255};

void box(vel_object_file_rec &r, uint32_t type, uint32_t x, uint32_t y, uint32_t w, uint32_t h,
         vel_rgb fill)
{
    r.type = type;
    r.x = x;
    r.y = y;
    r.width = w;
    r.height = h;
    r.fill_r = fill.r;
    r.fill_g = fill.g;
    r.fill_b = fill.b;
}

// Seven hidden frame buttons followed by `extra` empty records.
FormBuilder frame_buttons_and(uint32_t extra)
{
    FormBuilder form;
    for (uint32_t k = 1; k <= 7; ++k) {
        box(form.object(k), VEL_TYPE_LABEL, 0, 0, 16, 16, kButton);
        form.object(k).hidden = 1;
    }
    if (extra) form.object(7 + extra);
    return form;
}

class Scene : public ScreenTest {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        refreshed_rects.clear();
    }
    void stack(std::vector<uint32_t> windows)
    {
        for (std::size_t i = 0; i < windows.size(); ++i)
            ctx().window_stack[i] = windows[i];
        ctx().window_count = static_cast<uint32_t>(windows.size());
        ctx().active_window = windows.empty() ? 0 : windows[0];
    }
};

TEST_F(Scene, PassesPaintDesktopThenStackFromTheBottomThenFrameButtons)
{
    FormBuilder form = frame_buttons_and(5);
    box(form.object(8), VEL_TYPE_LABEL, 0, 0, 640, 480, kDesktop);
    box(form.object(9), VEL_TYPE_WINDOW, 50, 50, 200, 200, kWindowC);
    box(form.object(10), VEL_TYPE_WINDOW, 100, 100, 200, 200, kWindowB);
    box(form.object(11), VEL_TYPE_WINDOW, 150, 150, 200, 200, kWindowA);
    box(form.object(12), VEL_TYPE_TEXT, 400, 20, 50, 50, kWindowA);
    form.object(1).hidden = 0;
    form.object(1).x = 160;
    form.object(1).y = 160;
    load(form);
    ctx().mark_colour = kMark;
    stack({11, 10, 9});

    EXPECT_EQ(vel_draw_all_objects(&ctx(), 0, 0), 1u);
    EXPECT_EQ(at(20, 20), kDesktop);
    EXPECT_EQ(at(60, 60), kWindowC);
    EXPECT_EQ(at(120, 120), kWindowB) << "B lies on C";
    EXPECT_EQ(at(200, 200), kWindowA) << "the active window lies on B";
    EXPECT_EQ(at(165, 165), kButton) << "frame buttons come last";
    EXPECT_EQ(at(149, 200), kMark) << "selection outline left of the active window";
    EXPECT_EQ(at(142, 152), kMark) << "selection square";
    EXPECT_EQ(at(99, 200), kWindowC) << "no marks around background windows";
    EXPECT_EQ(at(420, 40), kDesktop) << "a top-level text area is never painted";
}

TEST_F(Scene, SingleWindowStackHasNoBackgroundPassAndEmptyTopHidesTheActive)
{
    FormBuilder form = frame_buttons_and(2);
    box(form.object(8), VEL_TYPE_WINDOW, 50, 50, 100, 100, kWindowC);
    box(form.object(9), VEL_TYPE_WINDOW, 300, 50, 100, 100, kWindowB);
    load(form);
    fill_screen(kBackground);
    ctx().window_stack[0] = 8;
    ctx().window_stack[1] = 9;
    ctx().window_count = 1;
    ctx().active_window = 8;
    vel_draw_all_objects(&ctx(), 0, 0);
    EXPECT_EQ(at(100, 100), kWindowC);
    EXPECT_EQ(at(350, 100), kBackground) << "entry 1 lies beyond window_count";

    fill_screen(kBackground);
    ctx().window_stack[0] = 0;
    vel_draw_all_objects(&ctx(), 0, 0);
    EXPECT_EQ(at(100, 100), kBackground) << "top entry 0 suppresses the active window";
}

TEST_F(Scene, DependentsAreHiddenOnlyWhileOutsideTheirMastersArea)
{
    FormBuilder form = frame_buttons_and(3);
    box(form.object(8), VEL_TYPE_WINDOW, 100, 100, 200, 150, kWindowA);
    vel_object_file_rec &w = form.object(8);
    w.margin_left = w.margin_right = w.margin_top = w.margin_bottom = 5;
    w.dep_objs[0] = 9;
    w.dep_objs[1] = 10;
    box(form.object(9), VEL_TYPE_LABEL, 120, 120, 50, 20, kWindowB);
    form.object(9).master = 8;
    box(form.object(10), VEL_TYPE_MENU, 120, 300, 50, 20, kWindowC);
    form.object(10).master = 8;
    load(form);
    // Limits of the dependents: top 104, bottom 245 (clip mode 0).
    auto hidden_at = [&](uint32_t y) {
        object(9).y = y;
        vel_switch_dep_object(&ctx(), 8);
        return object(9).hidden;
    };
    EXPECT_EQ(hidden_at(120), 0u);
    EXPECT_EQ(hidden_at(60), 1u) << "scrolled out above";
    EXPECT_EQ(hidden_at(104), 0u) << "top edge on the limit, bottom inside";
    EXPECT_EQ(hidden_at(85), 1u) << "both edges at or above the limit";
    EXPECT_EQ(hidden_at(240), 0u) << "bottom edge cut away";
    EXPECT_EQ(hidden_at(245), 1u);
    EXPECT_EQ(hidden_at(120), 0u) << "back inside";
    EXPECT_EQ(object(10).hidden, 0u) << "menus keep their own flag";
}

TEST_F(Scene, FittedStylesCoverTheMastersInnerAreaWidenedByItsInset)
{
    FormBuilder form = frame_buttons_and(5);
    box(form.object(8), VEL_TYPE_WINDOW, 100, 100, 200, 150, kWindowA);
    vel_object_file_rec &w = form.object(8);
    w.margin_left = 3;
    w.margin_right = 4;
    w.margin_top = 5;
    w.margin_bottom = 6;
    w.border_inset = 2;
    for (uint32_t k = 9; k <= 12; ++k) {
        w.dep_objs[k - 9] = k;
        box(form.object(k), VEL_TYPE_LABEL, 120, 120, 10, 10, kWindowB);
        form.object(k).master = 8;
        form.object(k).border_style = k == 12 ? 1 : k - 7; // styles 2, 3, 4 and 1
    }
    form.object(11).border_style = 5;
    load(form);
    vel_switch_dep_object(&ctx(), 8);
    for (uint32_t k : {9u, 10u, 11u}) {
        EXPECT_EQ(object(k).x, 101u) << k;
        EXPECT_EQ(object(k).y, 103u) << k;
        EXPECT_EQ(object(k).width, 197u) << k;
        EXPECT_EQ(object(k).height, 143u) << k;
    }
    EXPECT_EQ(object(12).x, 120u) << "style 1 keeps its geometry";
    EXPECT_EQ(object(12).width, 10u);
}

TEST_F(Scene, DependentsPaintDepthFirstAfterTheirMaster)
{
    FormBuilder form = frame_buttons_and(4);
    box(form.object(8), VEL_TYPE_WINDOW, 100, 100, 300, 200, kWindowA);
    form.object(8).dep_objs[0] = 9;
    form.object(8).dep_objs[1] = 11;
    box(form.object(9), VEL_TYPE_LABEL, 120, 120, 100, 100, kWindowB);
    form.object(9).master = 8;
    form.object(9).dep_objs[0] = 10;
    box(form.object(10), VEL_TYPE_LABEL, 130, 130, 50, 50, kWindowC);
    form.object(10).master = 9;
    form.object(10).clip_mode = 1;
    box(form.object(11), VEL_TYPE_LABEL, 150, 150, 100, 100, kDesktop);
    form.object(11).master = 8;
    load(form);
    stack({8});
    vel_draw_all_objects(&ctx(), 0, 0);
    EXPECT_EQ(at(140, 140), kWindowC) << "grandchild painted over its master";
    EXPECT_EQ(at(160, 160), kDesktop) << "next sibling painted after the grandchild";
    EXPECT_EQ(at(300, 280), kWindowA);
}

TEST_F(Scene, MarksLieOutsideTheCutRectangle)
{
    FormBuilder form = frame_buttons_and(1);
    box(form.object(8), VEL_TYPE_WINDOW, 100, 60, 200, 100, kWindowA);
    load(form);
    fill_screen(kBackground);
    ctx().mark_colour = kMark;
    vel_draw_selected_lines(&ctx(), 8);
    vel_draw_selected_box(&ctx(), 8);
    for (int x = 99; x <= 300; ++x) {
        ASSERT_EQ(at(x, 59), kMark) << x;
        ASSERT_EQ(at(x, 160), kMark) << x;
    }
    for (int y = 59; y <= 160; ++y) {
        ASSERT_EQ(at(99, y), kMark) << y;
        ASSERT_EQ(at(300, y), kMark) << y;
    }
    EXPECT_EQ(at(90, 68), kMark);
    EXPECT_EQ(at(89, 68), kBackground);
    EXPECT_EQ(at(90, 69), kBackground);
    EXPECT_EQ(at(301, 100), kBackground);
    EXPECT_EQ(at(150, 100), kBackground) << "the inside is not touched";

    vel_undraw_selected_lines(&ctx(), 8);
    vel_undraw_selected_box(&ctx(), 8);
    EXPECT_EQ(at(99, 59), kBackground);
    EXPECT_EQ(at(95, 65), kBackground);
}

TEST_F(Scene, MarksClampTheWindowTheirOwnWay)
{
    FormBuilder form = frame_buttons_and(1);
    box(form.object(8), VEL_TYPE_WINDOW, 5, 1, 200, 100, kWindowA);
    load(form);
    fill_screen(kBackground);
    ctx().mark_colour = kMark;
    vel_draw_selected_lines(&ctx(), 8);
    EXPECT_EQ(object(8).x, 11u);
    EXPECT_EQ(object(8).y, 1u) << "the outline clamps y only from 0 down";
    vel_draw_selected_box(&ctx(), 8);
    EXPECT_EQ(object(8).y, 2u) << "the square clamps y from 1 down";
    EXPECT_EQ(at(1, 1), kMark);
    EXPECT_EQ(at(10, 10), kMark);
    EXPECT_EQ(at(0, 5), kBackground);

    object(8).y = 10;
    vel_undraw_selected_lines(&ctx(), 8);
    EXPECT_EQ(object(8).y, 25u) << "erasing clamps like painting";
    EXPECT_EQ(at(10, 24), kBackground);
}

TEST_F(Scene, UndrawErasesTheFullRecordSize)
{
    FormBuilder form = frame_buttons_and(1);
    box(form.object(8), VEL_TYPE_WINDOW, 0, 0, 700, 100, kWindowA);
    load(form);
    fill_screen(kWindowA);
    vel_undraw_object(&ctx(), 8);
    EXPECT_EQ(object(8).x, 11u);
    EXPECT_EQ(object(8).y, 25u);
    EXPECT_EQ(at(639, 124), kBackground) << "erased up to the screen edge, not the cut width";
    EXPECT_EQ(at(639, 125), kWindowA);
    EXPECT_EQ(at(10, 50), kWindowA);
}

TEST_F(Scene, RefreshesOnlyWhenAskedAndOnlyTheActiveWindowAfterTyping)
{
#ifndef VELUMO_TEST_WRAPS_UPDATE_RECTS
    GTEST_SKIP() << "refreshes are counted only against a static library";
#endif
    FormBuilder form = frame_buttons_and(1);
    box(form.object(8), VEL_TYPE_WINDOW, 600, 100, 100, 50, kWindowA);
    load(form);
    stack({8});
    ctx().screen_rect = SDL_Rect{1, 2, 300, 400};
    vel_draw_all_objects(&ctx(), 0, 0);
    EXPECT_TRUE(refreshed_rects.empty());
    vel_draw_all_objects(&ctx(), 1, 1);
    ASSERT_EQ(refreshed_rects.size(), 1u);
    EXPECT_EQ(refreshed_rects[0].x, 1);
    EXPECT_EQ(refreshed_rects[0].h, 400);

    refreshed_rects.clear();
    vel_draw_selected_window(&ctx());
    EXPECT_TRUE(refreshed_rects.empty());
    vel_draw_and_screenup_selected_window(&ctx());
    ASSERT_EQ(refreshed_rects.size(), 1u);
    EXPECT_EQ(refreshed_rects[0].x, 600);
    EXPECT_EQ(refreshed_rects[0].y, 100);
    EXPECT_EQ(refreshed_rects[0].w, 38) << "the cut width";
    EXPECT_EQ(refreshed_rects[0].h, 50);
}

class Cursor : public Scene {
protected:
    // A text object whose text limits are left 10, right 200, top 90, bottom 300.
    void SetUp() override
    {
        Scene::SetUp();
        FormBuilder form = frame_buttons_and(1);
        box(form.object(8), VEL_TYPE_TEXT, 11, 91, 189, 209, kBackground);
        form.object(8).text_r = 0;
        form.object(8).text_g = 0;
        form.object(8).text_b = 0;
        load(form);
        fill_screen(kBackground);
        object(8).cursor_x = 50;
        object(8).cursor_y = 100;
        height_ = TTF_FontHeight(ctx().font);
    }
    // Rows of column 50 painted in the text colour.
    std::vector<int> cursor_rows()
    {
        std::vector<int> rows;
        for (int y = 0; y < kScreenHeight; ++y)
            if (at(50, y) == vel_rgb{0, 0, 0}) rows.push_back(y);
        return rows;
    }
    static std::vector<int> range(int from, int to)
    {
        std::vector<int> rows;
        for (int y = from; y <= to; ++y)
            rows.push_back(y);
        return rows;
    }
    int height_ = 0;
};

// Placements against the text limits (top 90, bottom 300 unless changed);
// the rows are given relative to the font height where the bottom is the
// cursor's own.
TEST_F(Cursor, ClipsAgainstTheTextLimits)
{
    struct Case {
        const char *name;
        uint32_t y, margin_top, margin_bottom, cursor_y;
        int first, last; // rows painted; `last` below 0 counts from the cursor's bottom
    };
    const Case cases[] = {
        {"inside", 91, 0, 0, 100, 100, -1},
        {"cut at the top", 91, 15, 0, 100, 106, -1},
        {"cut at the bottom", 91, 0, 190, 100, 100, 109},
        {"cut on both sides", 91, 15, 190, 100, 106, 109},
        // top limit -1: no top lies below it unsigned, so the cursor starts at row 0
        {"top limit -1", 0, 0, 0, 5, 0, -1},
        // limits 250 and 245 cross: the run goes up from 251 to 244
        {"crossing limits", 91, 160, 55, 240, 244, 251},
        {"one pixel between the limits", 91, 15, 193, 100, 0, 0},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        fill_screen(kBackground);
        object(8).y = c.y;
        object(8).margin_top = c.margin_top;
        object(8).margin_bottom = c.margin_bottom;
        object(8).cursor_y = c.cursor_y;
        vel_draw_cursor(&ctx(), 8);
        const int last = c.last < 0 ? int(c.cursor_y) + height_ + c.last : c.last;
        EXPECT_EQ(cursor_rows(), c.first == 0 && c.last == 0 ? range(1, 0) : range(c.first, last));
    }
}

TEST_F(Cursor, ColumnOnALimitOrOwnFontHeight)
{
    object(8).cursor_x = 10;
    vel_draw_cursor(&ctx(), 8);
    object(8).cursor_x = 200;
    vel_draw_cursor(&ctx(), 8);
    EXPECT_TRUE(cursor_rows().empty());

    object(8).cursor_x = 50;
    object(8).font_choice = 1;
    object(8).own_font = TTF_OpenFont(kFontPath, 30);
    vel_draw_cursor(&ctx(), 8);
    EXPECT_EQ(cursor_rows(), range(100, 100 + TTF_FontHeight(object(8).own_font) - 1));
    TTF_CloseFont(object(8).own_font);
    object(8).own_font = nullptr;
    object(8).font_choice = 0;
}

} // namespace
} // namespace velumo::test
