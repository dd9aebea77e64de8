// Key translation for a German keyboard: a key-down becomes one key code,
// which the next key-up of any key hands to the editor.
#include "model/tables.hpp"

#include <array>
#include <cstring>

namespace {

// Codes of one key symbol: without modifiers, with exactly one Shift key,
// with exactly the left Alt key.  Character rows are printable, control
// rows are not.
struct KeyRow {
    uint32_t plain = 0;
    uint32_t shifted = 0;
    uint32_t alt = 0;
    uint32_t printable = 0;
    bool present = false;
};

struct SpecialRow {
    uint32_t sym;
    KeyRow row;
};

constexpr KeyRow character(uint32_t plain, uint32_t shifted, uint32_t alt)
{
    return {plain, shifted, alt, 1, true};
}

constexpr KeyRow control(uint32_t code)
{
    return {code, code, code, 0, true};
}

// Both Enter keys give the keypad Enter code, the one the editor knows.
constexpr uint32_t enter_code = SDLK_KP_ENTER;
// Shift+3 yields the section sign sign-extended from its byte, and Alt+e a
// code above 255: the editor types neither.
constexpr uint32_t shifted_three = 0xFFFFFFA7u;
constexpr uint32_t alt_e = 321;

// The keys whose codes differ from their symbol.  The acute-accent key has
// no row: it types its symbol (180) with or without Shift.
constexpr SpecialRow special_rows[] = {
    {246, character(246, 214, 246)},  // ö
    {252, character(252, 220, 252)},  // ü
    {228, character(228, 196, 228)},  // ä
    {223, character(223, '?', '\\')}, // ß
    {'e', character('e', 'E', alt_e)},
    {'q', character('q', 'Q', '@')},
    {'1', character('1', '!', '1')},
    {'2', character('2', '"', '2')},
    {'3', character('3', shifted_three, '3')},
    {'4', character('4', '$', '4')},
    {'5', character('5', '%', '5')},
    {'6', character('6', '&', '6')},
    {'7', character('7', '/', '{')},
    {'8', character('8', '(', '[')},
    {'9', character('9', ')', ']')},
    {'0', character('0', '=', '}')},
    {'+', character('+', '*', '~')},
    {'#', character('#', '\'', '#')},
    {',', character(',', ';', ',')},
    {'.', character('.', ':', '.')},
    {'-', character('-', '_', '-')},
    {'<', character('<', '<', '|')},
    {SDLK_RIGHT, control(SDLK_RIGHT)},
    {SDLK_LEFT, control(SDLK_LEFT)},
    {SDLK_UP, control(SDLK_UP)},
    {SDLK_DOWN, control(SDLK_DOWN)},
    {SDLK_INSERT, control(SDLK_INSERT)},
    {SDLK_BACKSPACE, control(SDLK_BACKSPACE)},
    {SDLK_DELETE, control(SDLK_DELETE)},
    {SDLK_RETURN, control(enter_code)},
    {SDLK_KP_ENTER, control(enter_code)},
};

// Every symbol up to 255 types itself (letters with their capitals under
// Shift); of the symbols from 256 on only the rows above yield a code.
constexpr std::size_t key_table_size = SDLK_INSERT + 1;

constexpr std::array<KeyRow, key_table_size> build_key_table()
{
    std::array<KeyRow, key_table_size> table{};
    for (uint32_t s = 0; s <= 255; ++s)
        table[s] = character(s, s, s);
    for (uint32_t s = 'a'; s <= 'z'; ++s)
        table[s] = character(s, s - ('a' - 'A'), s);
    for (const SpecialRow &special : special_rows)
        table[special.sym] = special.row;
    return table;
}

constexpr std::array<KeyRow, key_table_size> key_table = build_key_table();

// Modifier tests are exact: with Caps Lock, Num Lock or both Shift keys
// down a key counts as plain, and only the left Alt key selects Alt.
constexpr uint32_t code_for(const KeyRow &row, uint32_t mod)
{
    if (mod == KMOD_LSHIFT || mod == KMOD_RSHIFT) return row.shifted;
    if (mod == KMOD_LALT) return row.alt;
    return row.plain;
}

constexpr bool is_digit_symbol(uint32_t sym)
{
    return sym >= '0' && sym <= '9';
}

} // namespace

extern "C" {

void vel_getfirstkeyinformation(vel_context *ctx)
{
    const uint32_t target = velumo::detail::cursor_object(ctx);
    if (target == 0 || ctx->event.type != SDL_KEYDOWN) return;
    SDL_keysym &key = ctx->event.key.keysym;
    // Read as plain numbers: an application may push any value, and loading
    // one outside the enumerations' ranges as the enum itself is undefined.
    uint32_t sym = 0;
    uint32_t mod = 0;
    static_assert(sizeof key.sym == sizeof sym && sizeof key.mod == sizeof mod);
    std::memcpy(&sym, &key.sym, sizeof sym);
    std::memcpy(&mod, &key.mod, sizeof mod);

    uint32_t code = 0;
    if (sym < key_table.size() && key_table[sym].present) {
        code = code_for(key_table[sym], mod);
        ctx->key_printable = key_table[sym].printable;
    }
    // A numeric field takes the digit keys only; the test is on the symbol,
    // so a shifted digit stays printable there.
    if (velumo::detail::object(ctx, target).type == VEL_TYPE_NUMERIC_ENTRY)
        ctx->key_printable = is_digit_symbol(sym) ? 1 : 0;

    if (code == 0) return;
    ctx->key_code = code;
    key.sym = SDLK_UNKNOWN;
    ctx->event.type = 0;
}

void vel_getfinalkeyinformation(vel_context *ctx)
{
    if (ctx->event.type != SDL_KEYUP || ctx->key_code == 0) return;
    ctx->final_key = ctx->key_code;
    ctx->key_code = 0;
}

} // extern "C"
