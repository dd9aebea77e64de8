// Writes the seed corpus of both fuzz targets into <fuzz dir>/corpus: the
// sample form and small forms with masters, chains, pictures and menus, and
// event scripts that type, click, edit, move, resize, scroll and open menus.
#include "events_script.hpp"
#include "harness.hpp"
#include "sample_form.hpp"
#include "velumo.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace velumo::fuzz;
namespace sample = velumo::sample;
using Bytes = std::vector<uint8_t>;

template <std::size_t N> void set_string(char (&field)[N], const std::string &value)
{
    std::memset(field, 0, N);
    value.copy(field, N - 1);
}

Bytes read_file(const fs::path &path)
{
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

template <typename Record> Bytes as_bytes(const std::vector<Record> &records)
{
    const auto *p = reinterpret_cast<const uint8_t *>(records.data());
    return Bytes(p, p + records.size() * sizeof(Record));
}

void put_le32(Bytes &out, uint32_t v)
{
    for (int i = 0; i < 4; ++i)
        out.push_back(static_cast<uint8_t>(v >> (8 * i)));
}

// One form target input: header, form, texts, stream.
Bytes form_input(const Bytes &form, const Bytes &texts, const std::string &stream = "",
                 uint8_t options = 0)
{
    Bytes out;
    put_le32(out, static_cast<uint32_t>(form.size()));
    put_le32(out, static_cast<uint32_t>(texts.size()));
    out.push_back(options);
    out.resize(kFormHeaderBytes, 0);
    out.insert(out.end(), form.begin(), form.end());
    out.insert(out.end(), texts.begin(), texts.end());
    out.insert(out.end(), stream.begin(), stream.end());
    return out;
}

class Form {
public:
    vel_object_file_rec &at(uint32_t n)
    {
        if (records_.size() < n) records_.resize(n, vel_object_file_rec{});
        return records_[n - 1];
    }
    // Frame buttons 1..7, as the sample form has them.
    void frame_buttons()
    {
        for (uint32_t k = 1; k <= 7; ++k) {
            vel_object_file_rec &o = at(k);
            o.width = o.height = 16;
            o.type = VEL_TYPE_LABEL;
            o.hidden = 1;
            o.fill_r = o.fill_g = 200;
            o.fill_b = 220;
            o.border_style = 1;
        }
    }
    vel_object_file_rec &object(uint32_t n, uint32_t type, uint32_t master, uint32_t x, uint32_t y,
                                uint32_t w, uint32_t h, const std::string &label = "")
    {
        vel_object_file_rec &o = at(n);
        o.type = type;
        o.master = master;
        o.x = x;
        o.y = y;
        o.width = w;
        o.height = h;
        o.fill_r = 230 - 10 * (n % 8);
        o.fill_g = 235;
        o.fill_b = 240;
        o.margin_left = o.margin_right = o.margin_top = o.margin_bottom = 4;
        o.border_style = 1;
        set_string(o.label, label);
        o.text_length = static_cast<uint32_t>(label.size());
        if (master != 0) {
            vel_object_file_rec &m = at(master);
            std::size_t i = 0;
            while (m.dep_objs[i] != 0)
                ++i;
            m.dep_objs[i] = n;
        }
        return o;
    }
    Bytes bytes() const { return as_bytes(records_); }

private:
    std::vector<vel_object_file_rec> records_;
};

class Texts {
public:
    void set(uint32_t t, const std::string &text)
    {
        if (records_.size() < t) records_.resize(t, vel_text_rec{});
        set_string(records_[t - 1].text, text);
    }
    Bytes bytes() const { return as_bytes(records_); }

private:
    std::vector<vel_text_rec> records_;
};

const std::string kLongWord(85, 'w');

// The sample form as the demo writes it, its pictures named by the path
// every fuzzing process provides.
Bytes sample_form_input()
{
    const fs::path dir = fs::temp_directory_path() / "velumo-make-corpus";
    fs::create_directories(dir);
    sample::write_sample_form(dir.string());
    Bytes form = read_file(dir / sample::kFormFile);
    const Bytes texts = read_file(dir / sample::kTextFile);
    fs::remove_all(dir);
    for (uint32_t picture : {sample::kMainPicture, sample::kSettingsPicture}) {
        auto *record = reinterpret_cast<vel_object_file_rec *>(form.data()) + (picture - 1);
        set_string(record->image_path, kPicturePath);
    }
    return form_input(form, texts, sample::kChainStream);
}

Bytes window_fields_input()
{
    Form f;
    f.frame_buttons();
    vel_object_file_rec &w = f.object(8, VEL_TYPE_WINDOW, 0, 60, 60, 400, 300);
    w.text_index = 1;
    w.editable = 1;
    f.object(9, VEL_TYPE_LABEL, 8, 80, 300, 90, 30, "OK");
    vel_object_file_rec &entry = f.object(10, VEL_TYPE_ENTRY, 8, 80, 120, 200, 26, "Name");
    entry.editable = 1;
    entry.max_chars = 30;
    vel_object_file_rec &number = f.object(11, VEL_TYPE_NUMERIC_ENTRY, 8, 300, 120, 80, 26, "42");
    number.editable = 1;
    number.max_chars = 4;
    vel_object_file_rec &text = f.object(12, VEL_TYPE_TEXT, 8, 80, 160, 300, 120);
    text.text_index = 2;
    text.editable = 1;
    text.line_spacing = 2;
    Texts t;
    t.set(1, "Window text");
    t.set(2, "A text object with a few lines.\nSecond paragraph " + kLongWord + " end.");
    return form_input(f.bytes(), t.bytes(), "", 1);
}

// Four levels of masters with every clip mode and border style, a window
// partly right of the screen and one clamped at the top left corner.
Bytes nested_masters_input()
{
    Form f;
    f.frame_buttons();
    vel_object_file_rec &w = f.object(8, VEL_TYPE_WINDOW, 0, 40, 50, 300, 250);
    w.border_style = 4;
    w.border_inset = 3;
    w.scroll_max_x = 40;
    vel_object_file_rec &text = f.object(9, VEL_TYPE_TEXT, 8, 50, 60, 280, 200);
    text.text_index = 1;
    text.editable = 1;
    vel_object_file_rec &label = f.object(10, VEL_TYPE_LABEL, 9, 60, 100, 320, 80, "Inner");
    label.clip_mode = 1;
    label.border_style = 3;
    label.border_inset = 2;
    vel_object_file_rec &field = f.object(11, VEL_TYPE_ENTRY, 10, 70, 120, 290, 40, "deep");
    field.clip_mode = 2;
    field.editable = 1;
    field.max_chars = 64;
    field.border_style = 5;
    vel_object_file_rec &deepest = f.object(12, VEL_TYPE_LABEL, 11, 75, 125, 20, 20, "x");
    deepest.border_style = 2;
    vel_object_file_rec &right = f.object(13, VEL_TYPE_WINDOW, 0, 560, 300, 200, 220);
    right.window_kind = VEL_WINDOW_REDUCED_FRAME;
    right.text_index = 2;
    f.object(14, VEL_TYPE_LABEL, 13, 570, 320, 150, 30, "cut off");
    vel_object_file_rec &corner = f.object(15, VEL_TYPE_WINDOW, 0, 5, 5, 100, 60);
    corner.centred = 1;
    corner.window_kind = VEL_WINDOW_REDUCED_FRAME;
    corner.text_index = 3;
    Texts t;
    t.set(1, "Nested objects clip each other.");
    t.set(2, "Partly off screen.");
    t.set(3, "Centred");
    return form_input(f.bytes(), t.bytes());
}

// A chain head with three members, fed a stream longer than they hold.
Bytes chain_input()
{
    Form f;
    f.frame_buttons();
    f.object(8, VEL_TYPE_CHAIN, 0, 10, 30, 620, 440);
    for (uint32_t m = 0; m < 3; ++m) {
        vel_object_file_rec &member =
            f.object(9 + m, VEL_TYPE_CHAIN, 8, 15 + 205 * m, 35, 200, 430);
        member.text_index = m + 1;
        member.clip_mode = 1;
        member.margin_left = member.margin_right = 2;
    }
    Texts t;
    for (uint32_t m = 1; m <= 3; ++m)
        t.set(m, "");
    std::string stream;
    for (int i = 0; i < 60; ++i)
        stream += "Chained text flows on from box to box. " + (i % 7 == 0 ? kLongWord : "") +
                  (i % 5 == 0 ? "\n\n" : " ");
    return form_input(f.bytes(), t.bytes(), stream);
}

// Pictures at top level and inside a window, cut by it, and one whose file
// does not exist.
Bytes pictures_input()
{
    Form f;
    f.frame_buttons();
    vel_object_file_rec &top = f.object(8, VEL_TYPE_PICTURE_FILE, 0, 500, 400, 10, 10);
    set_string(top.image_path, kPicturePath);
    f.object(9, VEL_TYPE_WINDOW, 0, 100, 100, 200, 150);
    vel_object_file_rec &inside = f.object(10, VEL_TYPE_PICTURE_FILE, 9, 270, 230, 48, 32);
    set_string(inside.image_path, kPicturePath);
    vel_object_file_rec &missing = f.object(11, VEL_TYPE_PICTURE_FILE, 9, 120, 120, 40, 40);
    set_string(missing.image_path, "/tmp/velumo-fuzz/no-such-picture.bmp");
    return form_input(f.bytes(), Bytes());
}

// A window with a menu and its entries, a list of rows like a file
// selector's, and objects with their own font.
Bytes menus_and_fonts_input()
{
    Form f;
    f.frame_buttons();
    vel_object_file_rec &w = f.object(8, VEL_TYPE_WINDOW, 0, 30, 40, 500, 400);
    w.text_index = 1;
    w.window_kind = VEL_WINDOW_REDUCED_FRAME;
    w.centred = 1;
    w.font_choice = 1;
    w.font_size = 18;
    set_string(w.font_path, kFontPath);
    vel_object_file_rec &menu = f.object(9, VEL_TYPE_MENU, 8, 40, 60, 120, 90);
    menu.hidden = 1;
    f.object(10, VEL_TYPE_LABEL, 9, 42, 62, 116, 26, "Open");
    f.object(11, VEL_TYPE_LABEL, 9, 42, 90, 116, 26, "Save");
    f.object(12, VEL_TYPE_LABEL, 9, 42, 118, 116, 26, "Quit");
    f.object(13, VEL_TYPE_LABEL, 8, 200, 80, 200, 300);
    for (uint32_t row = 0; row < 4; ++row) {
        vel_object_file_rec &r =
            f.object(14 + row, VEL_TYPE_LABEL, 13, 205, 85 + 29 * row, 180, 26, "file");
        r.font_choice = row % 2;
        r.font_size = 11;
        set_string(r.font_path, kFontPath);
    }
    Texts t;
    t.set(1, "Menus");
    return form_input(f.bytes(), t.bytes(), "", 2);
}

// Scripts of at most kMaxRecords records: the harness ignores the rest.
Bytes typed(std::initializer_list<uint16_t> symbols, uint16_t mod = 0)
{
    ScriptWriter s;
    for (uint16_t sym : symbols)
        s.press_and_release(sym, mod);
    return s.loop(0).bytes();
}

Bytes typing_letters_script()
{
    return typed({SDLK_h, SDLK_e, SDLK_l, SDLK_o, SDLK_SPACE, SDLK_RETURN, SDLK_KP_ENTER});
}

Bytes typing_modifiers_script()
{
    ScriptWriter s;
    s.press_and_release(SDLK_w, KMOD_LSHIFT);
    s.press_and_release(SDLK_e, KMOD_LALT);
    s.press_and_release(SDLK_3, KMOD_RSHIFT);
    s.press_and_release(SDLK_q, KMOD_CAPS);
    s.press_and_release(SDLK_WORLD_68).press_and_release(SDLK_DELETE);
    return s.loop(0).bytes();
}

Bytes typing_controls_script()
{
    return typed({SDLK_UP, SDLK_DOWN, SDLK_LEFT, SDLK_RIGHT, SDLK_INSERT, SDLK_a, SDLK_BACKSPACE});
}

Bytes clicks_script()
{
    ScriptWriter s;
    s.motion(100, 100).button(true, SDL_BUTTON_LEFT, 100, 233);
    s.button(false, SDL_BUTTON_LEFT, 100, 233).button(false, SDL_BUTTON_RIGHT, 300, 280);
    s.loop(2);
    s.select(sample::kSettingsWindow).select(sample::kAgeField);
    s.key(true, SDLK_7).key(false, SDLK_7).key(true, SDLK_k).key(false, SDLK_k);
    s.loop(2).edit(sample::kAgeField, '5', 1);
    return s.bytes();
}

Bytes field_edits_script()
{
    ScriptWriter s;
    s.select(sample::kNameField);
    for (uint16_t key : {'a', 'b', 'c'})
        s.edit(sample::kNameField, key, 1);
    s.edit(sample::kNameField, 277, 0).edit(sample::kNameField, 'x', 1);
    s.edit(sample::kNameField, 8, 0).edit(sample::kNameField, 127, 0);
    s.edit(sample::kInnerField, '9', 1).edit(sample::kInnerField, 276, 0);
    return s.bytes();
}

Bytes notes_edits_script()
{
    ScriptWriter s;
    s.select(sample::kMainWindow);
    for (int i = 0; i < 10; ++i)
        s.edit(sample::kNotesText, static_cast<uint16_t>('a' + i % 26), i == 5 ? 0 : 1);
    s.edit(sample::kNotesText, 271, 0).edit(sample::kNotesText, 273, 0);
    s.edit(sample::kNotesText, 274, 0).edit(sample::kNotesText, 275, 0);
    s.edit(sample::kChainFirst, 'c', 1);
    return s.bytes();
}

Bytes frame_buttons_script()
{
    ScriptWriter s;
    for (uint8_t mode : {0, 1})
        for (uint8_t button : {2, 3, 5, 6})
            s.frame(button, false, mode);
    s.frame(4, true, 0).frame(4, true, 1);
    return s.bytes();
}

Bytes frame_moves_script()
{
    ScriptWriter s;
    s.frame(1, true, 0, 200, 150);
    s.button(false, SDL_BUTTON_LEFT, 250, 200).loop(1);
    s.select(sample::kSettingsWindow).frame(1, true, 0, 5, 5).frame(2, false, 0);
    s.select(sample::kThirdWindow).frame(7, true, 0);
    s.button(false, SDL_BUTTON_LEFT, 20, 20).loop(3);
    s.frame(7, true, 0).frame(7, true, 0).select(sample::kMainWindow);
    return s.bytes();
}

Bytes menu_script()
{
    ScriptWriter s;
    s.menu(0, 60, 80).menu(1, 60, 100).menu(1, 60, 65).menu(0, 600, 400);
    s.select(sample::kSettingsWindow).menu(1, 100, 125);
    return s.bytes();
}

void write_seed(const fs::path &dir, const std::string &name, const Bytes &bytes)
{
    fs::create_directories(dir);
    std::ofstream out(dir / name, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char *>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    std::printf("%s/%s: %zu bytes\n", dir.string().c_str(), name.c_str(), bytes.size());
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <fuzz directory>\n", argv[0]);
        return 2;
    }
    const fs::path form = fs::path(argv[1]) / "corpus" / "form";
    write_seed(form, "sample_form", sample_form_input());
    write_seed(form, "window_fields", window_fields_input());
    write_seed(form, "nested_masters", nested_masters_input());
    write_seed(form, "chain", chain_input());
    write_seed(form, "pictures", pictures_input());
    write_seed(form, "menus_and_fonts", menus_and_fonts_input());

    const fs::path events = fs::path(argv[1]) / "corpus" / "events";
    write_seed(events, "typing_letters", typing_letters_script());
    write_seed(events, "typing_modifiers", typing_modifiers_script());
    write_seed(events, "typing_controls", typing_controls_script());
    write_seed(events, "clicks", clicks_script());
    write_seed(events, "field_edits", field_edits_script());
    write_seed(events, "notes_edits", notes_edits_script());
    write_seed(events, "frame_buttons", frame_buttons_script());
    write_seed(events, "frame_moves", frame_moves_script());
    write_seed(events, "menu", menu_script());
    return 0;
}
