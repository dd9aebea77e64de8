// The selection loops: stop values, frame button 7, which events count,
// keys reaching the editor, and the processor time of a waiting loop.
#include "input_fixture.hpp"

#include <sys/resource.h>

#include <chrono>
#include <thread>

namespace velumo::test {
namespace {

using Selection = InputTest;

class Delayed {
public:
    // Runs `action` on another thread after `delay`.
    template <typename Action>
    Delayed(std::chrono::milliseconds delay, Action action)
        : thread_([delay, action] {
              std::this_thread::sleep_for(delay);
              action();
          })
    {
    }
    ~Delayed() { thread_.join(); }
    Delayed(const Delayed &) = delete;
    Delayed &operator=(const Delayed &) = delete;

private:
    std::thread thread_;
};

double thread_cpu_seconds()
{
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    const auto seconds = [](timeval t) { return t.tv_sec + t.tv_usec / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// Centre points of the fixture's objects.
constexpr uint16_t kFieldX = 100, kFieldY = 70;
constexpr uint16_t kTextX = 200, kTextY = 200;

TEST_F(Selection, StopValueZeroReturnsWithoutReadingAnEvent)
{
    load_form();
    push_mouse_button(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, kFieldX, kFieldY);
    EXPECT_EQ(vel_get_mouse_selection(&ctx(), 0, kField), 0u);
    EXPECT_EQ(vel_get_mouse_selection(&ctx(), kField, 0), 0u);
    EXPECT_EQ(vel_get_mono_mouse_selection(&ctx(), 0), 0u);
    SDL_Event left{};
    ASSERT_EQ(SDL_PollEvent(&left), 1) << "the queued release is still there";
    EXPECT_EQ(left.type, SDL_MOUSEBUTTONUP);
}

TEST_F(Selection, ReleaseOnAStopObjectEndsTheLoopAndIsConsumed)
{
    load_form();
    push_mouse_button(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, kTextX, kTextY);
    push_mouse_button(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, kFieldX, kFieldY);
    queue_end();
    EXPECT_EQ(vel_get_mouse_selection(&ctx(), kField, kText), kText);
    EXPECT_EQ(ctx().event.type, 0) << "consumed";
    EXPECT_EQ(vel_get_mouse_selection(&ctx(), kText, kField), kField);
    EXPECT_EQ(vel_get_mono_mouse_selection(&ctx(), kField), kButton7);
}

TEST_F(Selection, OtherObjectsKeepTheLoopRunning)
{
    load_form();
    push_mouse_button(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, kTextX, kTextY);
    push_mouse_button(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, 620, 470); // empty space
    push_mouse_button(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, kFieldX, kFieldY);
    queue_end();
    EXPECT_EQ(vel_get_mono_mouse_selection(&ctx(), kField), kField);
}

TEST_F(Selection, ObjectSevenEndsEveryLoop)
{
    load_form();
    EXPECT_EQ(run_loop(), kButton7);
    queue_end();
    EXPECT_EQ(vel_get_mono_mouse_selection(&ctx(), kField), kButton7);
}

TEST_F(Selection, OnlyLeftButtonReleasesAreHitTested)
{
    load_form();
    push_mouse_button(SDL_MOUSEBUTTONUP, SDL_BUTTON_RIGHT, kFieldX, kFieldY);
    push_mouse_button(SDL_MOUSEBUTTONUP, SDL_BUTTON_MIDDLE, kFieldX, kFieldY);
    push_mouse_button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, kFieldX, kFieldY);
    SDL_Event quit{};
    quit.type = SDL_QUIT;
    SDL_PushEvent(&quit);
    // A release event whose state byte says pressed does not count either.
    SDL_Event odd{};
    odd.button.type = SDL_MOUSEBUTTONUP;
    odd.button.button = SDL_BUTTON_LEFT;
    odd.button.state = SDL_PRESSED;
    odd.button.x = kFieldX;
    odd.button.y = kFieldY;
    SDL_PushEvent(&odd);
    EXPECT_EQ(run_loop(), kButton7) << "the field was never selected";
}

TEST_F(Selection, KeysReachTheEditorAtTheirRelease)
{
    load_form();
    ctx().cursor_object = kField;
    queue_key(SDLK_h, KMOD_LSHIFT);
    queue_key(SDLK_a);
    push_key(SDL_KEYDOWN, SDLK_LSHIFT); // a modifier alone types nothing
    push_key(SDL_KEYUP, SDLK_LSHIFT);
    queue_key(SDLK_l);
    queue_key(SDLK_RETURN); // Enter does nothing in a one-line field
    run_loop();
    EXPECT_STREQ(object(kField).label, "Hal");
    EXPECT_EQ(ctx().final_key, 0u);
    EXPECT_EQ(ctx().key_code, 0u);
}

TEST_F(Selection, AKeyUpHandledAgainWhileIdleTypesOnce)
{
    load_form();
    ctx().cursor_object = kField;
    queue_key(SDLK_x);
    {
        Delayed end(std::chrono::milliseconds(100), [] { queue_end(); });
        EXPECT_EQ(vel_get_mono_mouse_selection(&ctx(), kField), kButton7);
    }
    EXPECT_STREQ(object(kField).label, "x");
}

TEST_F(Selection, WaitingTakesLittleProcessorTime)
{
    load_form();
    const auto wall_start = std::chrono::steady_clock::now();
    const double cpu_start = thread_cpu_seconds();
    {
        Delayed end(std::chrono::milliseconds(500), [] { queue_end(); });
        EXPECT_EQ(vel_get_mouse_selection(&ctx(), kField, kText), kButton7);
    }
    const double cpu = thread_cpu_seconds() - cpu_start;
    const double wall =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - wall_start).count();
    EXPECT_GE(wall, 0.45);
    EXPECT_LT(cpu / wall, 0.10) << "cpu " << cpu << " s over " << wall << " s";
    RecordProperty("idle_cpu_share_percent", std::to_string(100.0 * cpu / wall));
}

} // namespace
} // namespace velumo::test
