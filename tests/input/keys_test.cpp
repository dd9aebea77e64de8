// Key translation: the German table with its exact modifier tests, the
// numeric-field rule, consumption of key-downs and delivery at key-up.
#include "input_fixture.hpp"

namespace velumo::test {
namespace {

class Keys : public InputTest {
protected:
    void SetUp() override
    {
        InputTest::SetUp();
        load_form();
        ctx().cursor_object = kField;
    }
    // Translates one key-down; returns the code it left in key_code.
    uint32_t press(uint32_t sym, uint32_t mod = KMOD_NONE)
    {
        ctx().key_code = 0;
        ctx().event = SDL_Event{};
        ctx().event.key.type = SDL_KEYDOWN;
        ctx().event.key.keysym.sym = static_cast<SDLKey>(sym);
        ctx().event.key.keysym.mod = static_cast<SDLMod>(mod);
        vel_getfirstkeyinformation(&ctx());
        return ctx().key_code;
    }
    void release()
    {
        ctx().event = SDL_Event{};
        ctx().event.key.type = SDL_KEYUP;
        vel_getfinalkeyinformation(&ctx());
    }
};

struct Row {
    uint32_t sym;
    uint32_t plain, shifted, alt;
};

TEST_F(Keys, TableGivesPlainShiftedAndAltCodes)
{
    const Row rows[] = {
        {' ', ' ', ' ', ' '}, {246, 246, 214, 246},  {252, 252, 220, 252},
        {228, 228, 196, 228}, {223, 223, '?', '\\'}, {'a', 'a', 'A', 'a'},
        {'d', 'd', 'D', 'd'}, {'e', 'e', 'E', 321},  {'p', 'p', 'P', 'p'},
        {'q', 'q', 'Q', '@'}, {'r', 'r', 'R', 'r'},  {'z', 'z', 'Z', 'z'},
        {'1', '1', '!', '1'}, {'2', '2', '"', '2'},  {'3', '3', 0xFFFFFFA7u, '3'},
        {'4', '4', '$', '4'}, {'5', '5', '%', '5'},  {'6', '6', '&', '6'},
        {'7', '7', '/', '{'}, {'8', '8', '(', '['},  {'9', '9', ')', ']'},
        {'0', '0', '=', '}'}, {'+', '+', '*', '~'},  {'#', '#', '\'', '#'},
        {',', ',', ';', ','}, {'.', '.', ':', '.'},  {'-', '-', '_', '-'},
        {'<', '<', '<', '|'}, {180, 180, 180, 180},  {9, 9, 9, 9},
        {27, 27, 27, 27},     {'^', '^', '^', '^'},  {255, 255, 255, 255},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(press(row.sym), row.plain) << row.sym;
        EXPECT_EQ(ctx().key_printable, 1u) << row.sym;
        EXPECT_EQ(press(row.sym, KMOD_LSHIFT), row.shifted) << row.sym;
        EXPECT_EQ(press(row.sym, KMOD_RSHIFT), row.shifted) << row.sym;
        EXPECT_EQ(press(row.sym, KMOD_LALT), row.alt) << row.sym;
    }
}

TEST_F(Keys, ControlKeysKeepTheirSymbolAndAreNotPrintable)
{
    const uint32_t controls[] = {SDLK_RIGHT,  SDLK_LEFT,      SDLK_UP,    SDLK_DOWN,
                                 SDLK_INSERT, SDLK_BACKSPACE, SDLK_DELETE};
    for (uint32_t sym : controls) {
        for (uint32_t mod : {KMOD_NONE, KMOD_LSHIFT, KMOD_LALT}) {
            ctx().key_printable = 1;
            EXPECT_EQ(press(sym, mod), sym) << sym;
            EXPECT_EQ(ctx().key_printable, 0u) << sym;
        }
    }
    for (uint32_t sym : {SDLK_RETURN, SDLK_KP_ENTER}) {
        EXPECT_EQ(press(sym), 271u);
        EXPECT_EQ(ctx().key_printable, 0u);
    }
}

TEST_F(Keys, ModifierTestsAreExact)
{
    EXPECT_EQ(press('a', KMOD_LSHIFT | KMOD_CAPS), 'a') << "Shift with Caps Lock";
    EXPECT_EQ(press('a', KMOD_CAPS), 'a') << "Caps Lock alone";
    EXPECT_EQ(press('a', KMOD_LSHIFT | KMOD_RSHIFT), 'a') << "both Shift keys";
    EXPECT_EQ(press('a', KMOD_LSHIFT | KMOD_NUM), 'a') << "Num Lock";
    EXPECT_EQ(press('q', KMOD_RALT), 'q') << "right Alt";
    EXPECT_EQ(press('q', KMOD_LALT | KMOD_LSHIFT), 'q') << "Alt with Shift";
    EXPECT_EQ(press('q', KMOD_LALT | KMOD_NUM), 'q');
    EXPECT_EQ(press('q', KMOD_LCTRL), 'q');
}

TEST_F(Keys, KeysFromTwoHundredFiftySixOnYieldNoCode)
{
    const uint32_t silent[] = {SDLK_KP0,    SDLK_KP9,    SDLK_KP_PERIOD, SDLK_KP_EQUALS, SDLK_HOME,
                               SDLK_END,    SDLK_PAGEUP, SDLK_PAGEDOWN,  SDLK_F1,        SDLK_F12,
                               SDLK_LSHIFT, SDLK_RALT,   SDLK_NUMLOCK};
    for (uint32_t sym : silent) {
        for (uint32_t printable : {0u, 1u}) {
            ctx().key_printable = printable;
            EXPECT_EQ(press(sym), 0u) << sym;
            EXPECT_EQ(ctx().key_printable, printable) << "left as it was";
            EXPECT_EQ(ctx().event.type, SDL_KEYDOWN) << "not consumed";
            EXPECT_EQ(static_cast<uint32_t>(ctx().event.key.keysym.sym), sym);
        }
    }
}

TEST_F(Keys, ATranslatedKeyConsumesItsEvent)
{
    press('a');
    EXPECT_EQ(ctx().event.type, 0);
    EXPECT_EQ(ctx().event.key.keysym.sym, SDLK_UNKNOWN);
}

TEST_F(Keys, NothingIsTranslatedWithoutCursorObject)
{
    ctx().cursor_object = 0;
    ctx().key_printable = 0;
    EXPECT_EQ(press('a'), 0u);
    EXPECT_EQ(ctx().event.type, SDL_KEYDOWN);
    EXPECT_EQ(ctx().key_printable, 0u);
}

TEST_F(Keys, OnlyKeyDownEventsAreTranslated)
{
    ctx().event = SDL_Event{};
    ctx().event.key.type = SDL_KEYUP;
    ctx().event.key.keysym.sym = SDLK_a;
    vel_getfirstkeyinformation(&ctx());
    EXPECT_EQ(ctx().key_code, 0u);
}

TEST_F(Keys, NumericFieldsTakeDigitSymbolsOnly)
{
    object(kField).type = VEL_TYPE_NUMERIC_ENTRY;
    EXPECT_EQ(press('a'), 'a');
    EXPECT_EQ(ctx().key_printable, 0u);
    EXPECT_EQ(press('1', KMOD_LSHIFT), '!');
    EXPECT_EQ(ctx().key_printable, 1u) << "the symbol counts, not the code";
    EXPECT_EQ(press('7'), '7');
    EXPECT_EQ(ctx().key_printable, 1u);
    EXPECT_EQ(press(SDLK_BACKSPACE), 8u);
    EXPECT_EQ(ctx().key_printable, 0u);
    ctx().key_printable = 1;
    EXPECT_EQ(press(SDLK_F1), 0u);
    EXPECT_EQ(ctx().key_printable, 0u) << "also for keys without a code";
}

TEST_F(Keys, DeliveryAtAnyKeyUp)
{
    press('a');
    press('b');
    release();
    EXPECT_EQ(ctx().final_key, 'b') << "the last key-down is delivered";
    EXPECT_EQ(ctx().key_code, 0u);
    ctx().final_key = 0;
    release();
    EXPECT_EQ(ctx().final_key, 0u) << "nothing is pending any more";
    // Releasing Shift before the letter still delivers the capital.
    press('a', KMOD_LSHIFT);
    ctx().event = SDL_Event{};
    ctx().event.key.type = SDL_KEYUP;
    ctx().event.key.keysym.sym = SDLK_LSHIFT;
    vel_getfinalkeyinformation(&ctx());
    EXPECT_EQ(ctx().final_key, 'A');
}

TEST_F(Keys, DeliveryNeedsAKeyUpEvent)
{
    press('a');
    ctx().event.type = SDL_KEYDOWN;
    vel_getfinalkeyinformation(&ctx());
    EXPECT_EQ(ctx().final_key, 0u);
    EXPECT_EQ(ctx().key_code, 'a');
}

TEST_F(Keys, RealEventsTypeThroughTheLoop)
{
    queue_key(SDLK_q, KMOD_LALT);
    queue_key(SDLK_3, KMOD_LSHIFT); // 0xFFFFFFA7: never typed
    queue_key(SDLK_e, KMOD_LALT);   // 321: never typed
    queue_key(SDLK_WORLD_86);       // 246 "ö"
    queue_key(SDLK_LESS, KMOD_RSHIFT);
    run_loop();
    EXPECT_STREQ(object(kField).label, "@\xF6<");
}

} // namespace
} // namespace velumo::test
