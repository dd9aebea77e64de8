// Pull-down menus: choosing by a release, leaving in both modes, hover
// darkening and its exact undoing, and the refreshed rectangle.
#include "menu/menu.hpp"
#include "velumo_test.hpp"

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>
#include <time.h>

namespace velumo::test {
namespace {

constexpr uint32_t kMenu = 9;
constexpr uint32_t kFirst = 10, kSecond = 11, kThird = 12;
constexpr uint32_t kEmptyMenu = 13;

// Points on the menu at (100, 40), 150 x 100, and its entries.
constexpr uint16_t kColumn = 175;
constexpr uint16_t kFirstRow = 57, kSecondRow = 89, kThirdRow = 121;
constexpr uint16_t kAbove = 30; // on the title, above the menu's top

// Events queued before a call that a menu must leave unread.
bool release_still_queued()
{
    SDL_Event event{};
    while (SDL_PollEvent(&event) == 1)
        if (event.type == SDL_MOUSEBUTTONUP) return true;
    return false;
}

double thread_cpu_seconds()
{
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) / 1e9;
}

uint32_t read_shared(uint32_t &field)
{
    return std::atomic_ref<uint32_t>(field).load();
}

// Runs a script beside a menu loop on another thread.  Each step waits, at
// most a few seconds, for what the loop should have done; if the menu is
// still open when the script ends, the pointer is moved off it so that the
// loop under test always ends (the test then fails on what it recorded).
class MenuDriver {
public:
    MenuDriver(vel_object &menu, std::function<void(MenuDriver &)> script)
        : menu_(menu), thread_([this, script] {
              script(*this);
              if (!wait_for([this] { return read_shared(menu_.hidden) == 1; }))
                  SDL_WarpMouse(kScreenWidth - 1, kScreenHeight - 1);
          })
    {
    }
    ~MenuDriver() { join(); }
    void join()
    {
        if (thread_.joinable()) thread_.join();
    }
    bool wait_for(const std::function<bool()> &condition)
    {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > deadline) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return true;
    }
    bool wait_until_open()
    {
        return wait_for([this] { return read_shared(menu_.hidden) == 0; });
    }

private:
    vel_object &menu_;
    std::thread thread_;
};

class MenuTest : public ScreenTest {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        FormBuilder form;
        form.object(8).type = VEL_TYPE_LABEL;
        vel_object_file_rec &menu = form.object(kMenu);
        menu.x = 100, menu.y = 40, menu.width = 150, menu.height = 100;
        menu.type = VEL_TYPE_MENU;
        menu.hidden = 1;
        menu.fill_r = menu.fill_g = menu.fill_b = 230;
        entry(form, kFirst, 0, {200, 150, 15});
        entry(form, kSecond, 1, {120, 21, 20});
        entry(form, kThird, 2, {60, 60, 60});
        vel_object_file_rec &empty = form.object(kEmptyMenu);
        empty.x = 300, empty.y = 40, empty.width = 100, empty.height = 100;
        empty.type = VEL_TYPE_MENU;
        empty.hidden = 1;
        load(form);
    }
    static void entry(FormBuilder &form, uint32_t n, uint32_t row, vel_rgb fill)
    {
        vel_object_file_rec &e = form.object(n);
        e.x = 102, e.y = 42 + 32 * row, e.width = 146, e.height = 30;
        e.type = VEL_TYPE_LABEL;
        e.master = kMenu;
        e.fill_r = fill.r, e.fill_g = fill.g, e.fill_b = fill.b;
        form.object(kMenu).dep_objs[row] = n;
    }
    vel_rgb fill(uint32_t n)
    {
        vel_object &o = object(n);
        return {static_cast<uint8_t>(read_shared(o.fill_r)),
                static_cast<uint8_t>(read_shared(o.fill_g)),
                static_cast<uint8_t>(read_shared(o.fill_b))};
    }
    void expect_colours_as_loaded()
    {
        EXPECT_EQ(fill(kFirst), (vel_rgb{200, 150, 15}));
        EXPECT_EQ(fill(kSecond), (vel_rgb{120, 21, 20}));
        EXPECT_EQ(fill(kThird), (vel_rgb{60, 60, 60}));
    }
    static void release_at(uint16_t x, uint16_t y)
    {
        push_mouse_button(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, x, y);
    }
    uint32_t open(uint32_t mode, uint32_t menu = kMenu)
    {
        return vel_move_out_menu(&ctx(), menu, mode);
    }
};

TEST_F(MenuTest, ReleaseOnAnEntryChoosesItAndHidesTheMenu)
{
    SDL_WarpMouse(kColumn, kSecondRow);
    push_mouse_button(SDL_MOUSEBUTTONUP, SDL_BUTTON_RIGHT, kColumn, kSecondRow);
    release_at(kColumn, kSecondRow);
    EXPECT_EQ(open(0), kSecond);
    EXPECT_EQ(object(kMenu).hidden, 1u);
    EXPECT_EQ(at(kColumn, kSecondRow), (vel_rgb{255, 255, 255})) << "erased";
    expect_colours_as_loaded();
}

TEST_F(MenuTest, ReleaseBesideEveryEntryChoosesNothing)
{
    SDL_WarpMouse(kColumn, kSecondRow);
    release_at(101, 139);
    EXPECT_EQ(open(1), 0u);
    EXPECT_EQ(object(kMenu).hidden, 1u);
}

TEST_F(MenuTest, PointerRightOfOrBelowTheMenuLeavesIt)
{
    SDL_WarpMouse(250, kSecondRow);
    release_at(kColumn, kSecondRow);
    EXPECT_EQ(open(1), 0u);
    EXPECT_TRUE(release_still_queued());

    SDL_WarpMouse(kColumn, 140);
    release_at(kColumn, kSecondRow);
    EXPECT_EQ(open(1), 0u);
    EXPECT_TRUE(release_still_queued());
}

TEST_F(MenuTest, ModeOneWaitsOnTheTitleForAnEntry)
{
    SDL_WarpMouse(kColumn, kAbove);
    push_key(SDL_KEYDOWN, SDLK_a);
    push_key(SDL_KEYUP, SDLK_a);
    push_mouse_button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, kColumn, kThirdRow);
    release_at(kColumn, kThirdRow);
    EXPECT_EQ(open(1), kThird) << "the release is tested where the event happened";
}

TEST_F(MenuTest, OtherModesCloseAtOnceAboveTheTop)
{
    SDL_WarpMouse(kColumn, kAbove);
    release_at(kColumn, kThirdRow);
    EXPECT_EQ(open(0), 0u);
    EXPECT_TRUE(release_still_queued());
}

TEST_F(MenuTest, HoverDarkensOneEntryAtATimeAndRestoresExactly)
{
    SDL_WarpMouse(kColumn, kFirstRow);
    bool first_dark = false, second_dark = false;
    MenuDriver driver(object(kMenu), [&](MenuDriver &d) {
        first_dark = d.wait_for([&] { return fill(kFirst) == vel_rgb{180, 130, 15}; });
        SDL_WarpMouse(kColumn, kSecondRow);
        // Only components above 20 are lowered; the first entry is given back.
        second_dark = d.wait_for([&] {
            return fill(kSecond) == vel_rgb{100, 1, 20} && fill(kFirst) == vel_rgb{200, 150, 15};
        });
        release_at(kColumn, kSecondRow);
    });
    const uint32_t chosen = open(0);
    driver.join();
    EXPECT_TRUE(first_dark);
    EXPECT_TRUE(second_dark);
    EXPECT_EQ(chosen, kSecond);
    expect_colours_as_loaded();
}

TEST_F(MenuTest, ModeOneClosesWhenThePointerGoesBackAboveAfterAnEntry)
{
    SDL_WarpMouse(kColumn, kAbove);
    bool highlighted = false, closed = false;
    MenuDriver driver(object(kMenu), [&](MenuDriver &d) {
        d.wait_until_open();
        SDL_WarpMouse(kColumn, kFirstRow);
        highlighted = d.wait_for([&] { return fill(kFirst) == vel_rgb{180, 130, 15}; });
        SDL_WarpMouse(kColumn, kAbove);
        closed = d.wait_for([&] { return read_shared(object(kMenu).hidden) == 1; });
    });
    const uint32_t chosen = open(1);
    driver.join();
    EXPECT_TRUE(highlighted);
    EXPECT_TRUE(closed);
    EXPECT_EQ(chosen, 0u);
    expect_colours_as_loaded();
}

TEST_F(MenuTest, AMenuWithoutEntriesIgnoresReleases)
{
    SDL_WarpMouse(350, 90);
    release_at(350, 90);
    bool open_after_release = false;
    MenuDriver driver(object(kEmptyMenu), [&](MenuDriver &d) {
        d.wait_until_open();
        d.wait_for([] {
            SDL_Event pending[4];
            return SDL_PeepEvents(pending, 4, SDL_PEEKEVENT, SDL_ALLEVENTS) == 0;
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        open_after_release = read_shared(object(kEmptyMenu).hidden) == 0;
        SDL_WarpMouse(450, 90);
    });
    EXPECT_EQ(open(0, kEmptyMenu), 0u);
    driver.join();
    EXPECT_TRUE(open_after_release);
    EXPECT_EQ(object(kEmptyMenu).hidden, 1u);
}

TEST_F(MenuTest, AnOpenMenuWaitsWithoutOccupyingTheProcessor)
{
    SDL_WarpMouse(kColumn, kAbove);
    MenuDriver driver(object(kMenu), [](MenuDriver &d) {
        d.wait_until_open();
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        SDL_WarpMouse(kColumn, 200); // below the menu
    });
    const auto wall_start = std::chrono::steady_clock::now();
    const double cpu_start = thread_cpu_seconds();
    EXPECT_EQ(open(1), 0u);
    const double cpu = thread_cpu_seconds() - cpu_start;
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - wall_start;
    driver.join();
    EXPECT_LT(cpu, 0.25 * wall.count()) << "cpu " << cpu << " s of " << wall.count() << " s";
}

TEST_F(MenuTest, RefreshedRectangleStaysOnTheScreen)
{
    vel_object &m = object(kMenu);
    SDL_Rect r = detail::menu_update_rect(&ctx(), m, 150, 100);
    EXPECT_EQ(r.x, 100);
    EXPECT_EQ(r.y, 40);
    EXPECT_EQ(r.w, 150);
    EXPECT_EQ(r.h, 100);

    m.x = 700;
    r = detail::menu_update_rect(&ctx(), m, vel_p_cutted_w_independent(&ctx(), kMenu), 100);
    EXPECT_EQ(r.x, 640 - 5);
    EXPECT_EQ(r.w, 5);

    m.x = 20;
    m.y = static_cast<uint32_t>(-30);
    r = detail::menu_update_rect(&ctx(), m, 150, 100);
    EXPECT_EQ(r.x, 20);
    EXPECT_EQ(r.y, 0);
}

} // namespace
} // namespace velumo::test
