// A hostile form run through the whole library: numbers outside the tables in
// every field and context field, cycles, diamonds and a window right of the
// screen's edge; loading, drawing, hit testing, activation, closing, the
// selection loop and the editor all stay inside their memory and end quickly.
#include "velumo_test.hpp"

#include <chrono>
#include <cstring>
#include <string>

namespace velumo::test {
namespace {

constexpr uint32_t kObjects = 25;
constexpr uint32_t kSpare = 4;
constexpr uint32_t kCapacity = kObjects + kSpare + 1;
constexpr uint32_t kMain = 8, kEntry = 9, kBadText = 10, kBadMaster = 11, kSelfMaster = 12;
constexpr uint32_t kCycleA = 13, kCycleB = 14, kDiamond = 15, kFarRight = 21, kChain = 22;
constexpr uint32_t kStop = 25;

vel_object_file_rec &box(FormBuilder &form, uint32_t n, uint32_t type, uint32_t x, uint32_t y,
                         uint32_t w, uint32_t h, uint32_t master = 0)
{
    vel_object_file_rec &r = form.object(n);
    r.type = type;
    r.x = x, r.y = y, r.width = w, r.height = h;
    r.master = master;
    r.fill_r = 40 * (n % 6), r.fill_g = 200, r.fill_b = 30 * (n % 8);
    r.text_r = 200;
    return r;
}

FormBuilder hostile_form()
{
    FormBuilder form;
    for (uint32_t k = 1; k <= VEL_FRAME_BUTTONS; ++k)
        box(form, k, VEL_TYPE_LABEL, 0, 0, 16, 16).hidden = 1;

    vel_object_file_rec &main = box(form, kMain, VEL_TYPE_WINDOW, 40, 60, 300, 200);
    main.text_index = 1;
    main.margin_left = main.margin_top = 5;
    const uint32_t main_deps[] = {kEntry, kBadText, kBadMaster, kSelfMaster, kCycleA, 70000};
    std::memcpy(main.dep_objs, main_deps, sizeof main_deps);
    vel_object_file_rec &entry = box(form, kEntry, VEL_TYPE_ENTRY, 60, 90, 200, 24, kMain);
    entry.editable = 1;
    entry.max_chars = 30;
    set_string(entry.label, "abc");
    vel_object_file_rec &bad_text = box(form, kBadText, VEL_TYPE_TEXT, 60, 130, 200, 60, kMain);
    bad_text.text_index = 9999;
    bad_text.editable = 1;
    vel_object_file_rec &bad_master = box(form, kBadMaster, VEL_TYPE_LABEL, 60, 200, 80, 20);
    bad_master.master = 0xFFFFFFFFu;
    set_string(bad_master.label, "eleven");
    box(form, kSelfMaster, VEL_TYPE_TEXT, 150, 200, 80, 30, kSelfMaster).text_index = 2;
    box(form, kCycleA, VEL_TYPE_TEXT, 60, 210, 80, 40, kCycleB).dep_objs[0] = kCycleB;
    box(form, kCycleB, VEL_TYPE_TEXT, 70, 215, 40, 20, kCycleA).dep_objs[0] = kCycleA;

    // A diamond five levels deep: each level lists the next a hundred times.
    box(form, kDiamond, VEL_TYPE_WINDOW, 360, 40, 250, 150).window_kind = VEL_WINDOW_REDUCED_FRAME;
    for (uint32_t n = kDiamond + 1; n <= kDiamond + 5; ++n) {
        const uint32_t inset = 10 * (n - kDiamond);
        box(form, n, VEL_TYPE_LABEL, 360 + inset, 40 + inset, 200 - inset, 120 - inset, n - 1);
        for (uint32_t &d : form.object(n - 1).dep_objs)
            d = n;
    }

    vel_object_file_rec &far = box(form, kFarRight, VEL_TYPE_WINDOW, 2000000000u, 100, 200, 100);
    far.border_style = 1;
    far.border_inset = 3;

    vel_object_file_rec &chain = box(form, kChain, VEL_TYPE_CHAIN, 20, 300, 10, 10);
    chain.dep_objs[0] = kChain + 1, chain.dep_objs[1] = kChain + 2, chain.dep_objs[2] = 7777;
    box(form, kChain + 1, VEL_TYPE_CHAIN, 20, 320, 150, 60, kChain).text_index = 3;
    box(form, kChain + 2, VEL_TYPE_CHAIN, 20, 390, 150, 60, kChain).text_index = 5555;

    set_string(box(form, kStop, VEL_TYPE_LABEL, 400, 400, 60, 30).label, "stop");
    return form;
}

class Hostile : public ScreenTest {
protected:
    void SetUp() override
    {
        ScreenTest::SetUp();
        started_ = std::chrono::steady_clock::now();
    }
    void TearDown() override
    {
        const auto elapsed = std::chrono::steady_clock::now() - started_;
        // Sanitizer builds run several times slower; unguarded walks would
        // take hours.
        EXPECT_LT(std::chrono::duration_cast<std::chrono::seconds>(elapsed).count(), 20);
        ScreenTest::TearDown();
    }

    std::string load_hostile()
    {
        TextBuilder texts;
        texts.set(1, "The main window's text.\nA second paragraph.");
        texts.set(2, "self");
        texts.set(3, "");
        OutputCapture capture;
        load(hostile_form(), &texts, kSpare, 1);
        const std::string printed = capture.finish();
        stream_.clear();
        for (int i = 0; i < 300; ++i)
            stream_ += "a stream of words\n";
        object(kChain).stream = stream_.data();
        return printed;
    }
    void spoil_context()
    {
        ctx().window_stack[0] = 60000;
        ctx().window_stack[1] = kMain;
        ctx().window_stack[2] = 4000000000u;
        ctx().window_count = 500;
        ctx().active_window = 70000;
        ctx().window_to_activate = 80000;
        ctx().cursor_object = 90000;
        ctx().dir_last = 500;
        ctx().object_count = 1000000;
    }
    void select(uint32_t n)
    {
        ctx().window_to_activate = n;
        vel_select_window(&ctx());
    }
    static void key(SDLKey sym)
    {
        push_key(SDL_KEYDOWN, sym);
        push_key(SDL_KEYUP, sym);
    }
    void expect_record_zero_untouched()
    {
        EXPECT_EQ(object(0).reserved, kCapacity);
        EXPECT_EQ(object(0).master, 0u);
        EXPECT_EQ(object(0).dep_objs[0], 0u);
        EXPECT_EQ(object(0).text_index, 0u);
    }

    std::chrono::steady_clock::time_point started_;
    std::string stream_;
};

TEST_F(Hostile, LoadingReportsEachMalformedRecordOnce)
{
    EXPECT_EQ(load_hostile(),
              "velumo: object 8: dep_objs entry 70000 is outside the table, set to 0\n"
              "velumo: object 11: master 4294967295 is outside the table, set to 0\n"
              "velumo: object 12: master is the object itself, set to 0\n"
              "velumo: object 22: dep_objs entry 7777 is outside the table, set to 0\n"
              "velumo: object 10: text_index 9999 is outside the text records, set to 0\n"
              "velumo: object 24: text_index 5555 is outside the text records, set to 0\n"
              "velumo: object 13: master chain runs in a cycle\n"
              "velumo: object 14: master chain runs in a cycle\n"
              "velumo: object 14: dep_objs entry 13 closes a cycle\n");
}

TEST_F(Hostile, DrawingHitTestingAndActivationStayInBounds)
{
    load_hostile();
    spoil_context();
    EXPECT_EQ(vel_draw_all_objects(&ctx(), 1, 1), 1u);
    for (uint32_t y = 0; y < 480; y += 6)
        for (uint32_t x = 0; x < 640; x += 6)
            ASSERT_LT(vel_test_all_objects(&ctx(), x, y), kCapacity) << x << "," << y;

    for (uint32_t n = 0; n <= kCapacity + 2; ++n) {
        select(n);
        if (ctx().cursor_object != 90000) {
            ASSERT_LT(ctx().cursor_object, kCapacity) << n;
        }
        vel_draw_all_objects(&ctx(), 1, 1);
    }
    select(0xFFFFFFFFu);
    EXPECT_EQ(ctx().active_window, kFarRight);
    for (uint32_t w : {kMain, kDiamond, kFarRight}) {
        select(w);
        EXPECT_EQ(ctx().active_window, w);
        vel_draw_all_objects(&ctx(), 0, 1);
        ASSERT_LT(vel_test_all_objects(&ctx(), 50, 100), kCapacity);
    }
    vel_close_win(&ctx(), 123456);
    EXPECT_EQ(ctx().active_window, kFarRight);
    vel_close_win(&ctx(), 0);
    EXPECT_NE(ctx().active_window, kFarRight);
    vel_draw_all_objects(&ctx(), 1, 1);
    expect_record_zero_untouched();
}

TEST_F(Hostile, TheSelectionLoopAndTheEditorStayInBounds)
{
    load_hostile();
    spoil_context();
    select(kMain);
    ASSERT_EQ(ctx().active_window, kMain);

    // Keys for an object outside the table are dropped.
    ctx().cursor_object = 90000;
    ctx().final_key = 'x';
    ctx().key_printable = 1;
    vel_get_text(&ctx());
    EXPECT_EQ(ctx().final_key, static_cast<uint32_t>('x'));
    ctx().final_key = 0;

    // SDL queues at most 127 events: each round ends with its stop click.
    const auto run_until_stop = [this](uint32_t target) {
        push_mouse_button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 430, 415);
        push_mouse_button(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, 430, 415);
        ASSERT_EQ(vel_get_mono_mouse_selection(&ctx(), kStop), kStop) << target;
    };
    for (uint32_t target : {kEntry, kBadText, kMain, kSelfMaster, 90000u}) {
        ctx().cursor_object = target;
        for (int round = 0; round < 3; ++round) {
            for (int i = 0; i < 30; ++i)
                key(SDLK_w);
            run_until_stop(target);
        }
        for (SDLKey k : {SDLK_RETURN, SDLK_UP, SDLK_DOWN, SDLK_LEFT, SDLK_RIGHT, SDLK_BACKSPACE,
                         SDLK_DELETE, SDLK_INSERT, SDLK_q, SDLK_RETURN, SDLK_RETURN})
            key(k);
        run_until_stop(target);
    }
    const std::size_t typed = std::strlen(object(kEntry).label);
    EXPECT_GT(typed, 3u);
    EXPECT_LE(typed, 31u);
    for (uint32_t t = 0; t < 5; ++t)
        EXPECT_LT(strnlen(ctx().text_recs[t].text, VEL_TEXT_BYTES), size_t{VEL_TEXT_BYTES}) << t;
    expect_record_zero_untouched();
}

} // namespace
} // namespace velumo::test
