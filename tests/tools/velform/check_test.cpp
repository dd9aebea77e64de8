// velform check: one row per class of problem, with the exact line the
// check prints and the exit status, for TOML forms and for binary forms.
#include "commands.hpp"
#include "velform_test.hpp"

#include <functional>

namespace velform::test {
namespace {

namespace fs = std::filesystem;
using velumo::test::FormBuilder;
using velumo::test::TempDir;
using velumo::test::TextBuilder;

// A window at (0,0) 100 x 100 with a label inside, for rows to append to.
const std::string kWindow = R"([[object]]
name = "win"
type = "window"
width = 100
height = 100
children = ["ok"]

[[object]]
name = "ok"
type = "label"
margin_left = 1
y = 10
width = 20
height = 10
)";

struct TomlCase {
    const char *name;
    std::string source;
    int status;
    std::string line; // printed exactly so, among the other lines
};

std::string many_children(std::size_t count)
{
    std::string list;
    for (std::size_t i = 0; i < count; ++i)
        list += i == 0 ? "0" : ", 0";
    return "children = [" + list + "]\n";
}

const TomlCase kTomlCases[] = {
    {"unknown_key", kWindow + "widht = 3\n", 1,
     "form.toml:15:1: error: unknown key 'widht' (did you mean 'width'?); valid keys are the "
     "fields of an object record, name, text, children and master"},
    {"unknown_form_key", "objects = 1\n", 1,
     "form.toml:1:1: error: unknown key 'objects' (did you mean 'object'?); valid: asset_dir, "
     "frame_button, object or texts"},
    {"syntax", "[[object]]\nname = \n", 1,
     "form.toml:2:8: error: Error while parsing key-value pair: expected value, saw '\\n'"},
    {"duplicate_name", kWindow + "[[object]]\nname = \"OK\"\ntype = \"label\"\n", 1,
     "form.toml:16:1: error: name 'OK' is taken already (at form.toml:9:1; names must differ "
     "also in upper case)"},
    {"unknown_name", kWindow + "children = [\"okk\"]\n", 1,
     "form.toml:15:13: error: children: no object is named 'okk' (did you mean 'ok'?)"},
    {"two_parents",
     kWindow + "[[object]]\nname = \"other\"\ntype = \"label\"\nchildren = [\"ok\"]\n", 1,
     "form.toml:18:13: error: children: 'ok' is already a child of 'win'; an object has one "
     "master (list it once, or give it an explicit master)"},
    {"cycle",
     "[[object]]\nname = \"a\"\ntype = \"label\"\nchildren = [\"b\"]\n"
     "[[object]]\nname = \"b\"\ntype = \"label\"\nchildren = [\"a\"]\n",
     1, "form.toml:1:1: error: masters run in a cycle: 'a' -> 'b' -> 'a'"},
    {"too_many_children", kWindow + many_children(101), 1,
     "form.toml:15:1: error: children: 101 dependents; an object holds at most 100"},
    {"dependent_outside", kWindow + "children = [40]\n", 1,
     "form.toml:15:1: error: dependent 40 is outside the table (objects 1..9)"},
    {"master_outside", kWindow + "master = 50\n", 1,
     "form.toml:15:1: error: master 50 is outside the table (objects 1..9, or 0 for none)"},
    {"text_outside", kWindow + "text = 3\n", 1,
     "form.toml:15:1: error: text 3 is outside the text file (the text file holds no texts, or "
     "0 for none)"},
    {"unknown_text", kWindow + "text = \"welcom\"\n[texts]\nwelcome = \"Hi\"\n", 1,
     "form.toml:15:8: error: text: no text is named 'welcom' (did you mean 'welcome'?); texts: "
     "welcome"},
    {"long_string", kWindow + "label = \"" + std::string(68, 'x') + "\"\n", 1,
     "form.toml:15:9: error: label: 68 bytes, over the limit of 67 bytes of a string"},
    {"long_text", kWindow + "[texts]\nt = \"" + std::string(1000, 'x') + "\"\n", 1,
     "form.toml:16:5: error: t: 1000 bytes, over the limit of 999 bytes of a text"},
    {"not_latin1", kWindow + "label = \"5 \u20ac\"\n", 1,
     "form.toml:15:9: error: label: character U+20AC at 3 is not in Latin-1, the library's "
     "encoding (U+0000..U+00FF)"},
    {"nul_in_string", kWindow + "label = \"a\\u0000b\"\n", 1,
     "form.toml:15:9: error: label: character U+0000 at 2 would end the string there; the "
     "library's strings end at their first NUL, so a string may not hold one"},
    {"type_code", kWindow + "[[object]]\nname = \"odd\"\ntype = 12\nwidth = 1\nheight = 1\n", 1,
     "form.toml:17:1: error: type code 12 is not one the library knows; valid: 0..9 (empty, "
     "window, label, text, picture, entry, number, menu, chain or picture_loaded)"},
    {"unknown_word", kWindow + "clip_mode = \"marginz\"\n", 1,
     "form.toml:15:13: error: clip_mode: 'marginz' is not a clip mode (did you mean "
     "'margins'?); valid: margins, frame, none, or a number"},
    {"bad_colour", kWindow + "fill = \"red\"\n", 1,
     "form.toml:15:8: error: fill: expected a colour \"#rrggbb\" or [red, green, blue], found "
     "\"red\""},
    {"bad_number", kWindow + "max_chars = -4\n", 1,
     "form.toml:15:13: error: max_chars: expected a whole number from 0 to 4294967295, found one "
     "out of "
     "range"},
    {"missing_picture",
     kWindow + "[[object]]\nname = \"pic\"\ntype = \"picture\"\nwidth = 1\nheight = 1\n"
               "image_path = \"missing.png\"\n",
     1, "form.toml:20:1: error: picture 'missing.png' does not exist"},
    {"long_path",
     "asset_dir = \"/" + std::string(60, 'd') + "\"\n" + kWindow + "image_path = \"picture.png\"\n",
     1,
     "form.toml:16:1: error: image_path: 'picture.png' is written as '/" + std::string(60, 'd') +
         "/picture.png' (73 bytes), over the limit of 67; give a shorter directory with "
         "--asset-dir or the form's asset_dir"},
    {"outside_master", kWindow + "x = 200\n", 0,
     "form.toml:15:1: warning: the object lies wholly outside its master 'win' (0,0 size "
     "100x100)"},
    {"zero_size", kWindow + "[[object]]\nname = \"flat\"\ntype = \"label\"\nwidth = 5\n", 0,
     "form.toml:15:1: warning: zero size: the object is neither drawn nor hit"},
    {"explicit_master", kWindow + "[[object]]\nname = \"b\"\ntype = \"label\"\nmaster = \"win\"\n",
     0,
     "form.toml:18:1: warning: master is 'win', but that object does not list it among its "
     "dependents"},
};

TEST(Check, TomlFormsReportEachProblemAtItsPlace)
{
    for (const TomlCase &c : kTomlCases) {
        TempDir dir;
        write_text_file(dir.path("form.toml"), c.source);
        const Outcome outcome = run(dir, [&](std::ostream &out) {
            return check_command({dir.path("form.toml")}, std::nullopt, out);
        });
        EXPECT_EQ(outcome.status, c.status) << c.name << "\n" << outcome.messages;
        EXPECT_NE(outcome.messages.find(c.line + "\n"), std::string::npos)
            << c.name << ": expected\n"
            << c.line << "\ngot\n"
            << outcome.messages;
    }
}

// A binary window 8 listing label 9, both sized, for rows to change.
struct BinaryForm {
    FormBuilder form;
    TextBuilder texts;
    bool with_texts = true;
    std::size_t trailing_bytes = 0;
    BinaryForm()
    {
        for (uint32_t n = 1; n <= 9; ++n) {
            form.object(n).type = VEL_TYPE_LABEL;
            form.object(n).width = form.object(n).height = 16;
        }
        form.object(8).type = VEL_TYPE_WINDOW;
        form.object(8).width = form.object(8).height = 100;
        form.object(8).dep_objs[0] = 9;
        form.object(9).master = 8;
    }
};

struct BinaryCase {
    const char *name;
    std::function<void(BinaryForm &)> change;
    int status;
    std::string line;
};

const BinaryCase kBinaryCases[] = {
    {"disagreeing_master", [](BinaryForm &f) { f.form.object(9).master = 0; }, 1,
     "form.vfm: object 8: children: error: lists 'label_9' as a dependent, but its master is "
     "none"},
    {"unlisted_dependent", [](BinaryForm &f) { f.form.object(8).dep_objs[0] = 0; }, 1,
     "form.vfm: object 9: master: error: master is 'window_8', but that object does not list it "
     "among its dependents"},
    {"master_outside", [](BinaryForm &f) { f.form.object(9).master = 30; }, 1,
     "form.vfm: object 9: master: error: master 30 is outside the table (objects 1..9, or 0 for "
     "none)"},
    {"own_master", [](BinaryForm &f) { f.form.object(9).master = 9; }, 1,
     "form.vfm: object 9: master: error: the object is its own master"},
    {"dependent_cycle", [](BinaryForm &f) { f.form.object(9).dep_objs[0] = 8; }, 1,
     "form.vfm: object 9: children: error: dependents run in a cycle: 'window_8' -> 'label_9' "
     "-> 'window_8'"},
    {"type_code", [](BinaryForm &f) { f.form.object(9).type = 10; }, 1,
     "form.vfm: object 9: type: error: type code 10 is not one the library knows; valid: 0..9 "
     "(empty, window, label, text, picture, entry, number, menu, chain or picture_loaded)"},
    {"string_without_nul",
     [](BinaryForm &f) {
         std::fill(std::begin(f.form.object(9).label), std::end(f.form.object(9).label), 'x');
     },
     1,
     "form.vfm: object 9: label: error: no NUL within its 68 bytes; the library cuts it at 67 "
     "characters, the most a string may have"},
    {"text_without_nul",
     [](BinaryForm &f) {
         f.form.object(9).text_index = 1;
         std::fill(std::begin(f.texts.text(1).text), std::end(f.texts.text(1).text), 'x');
     },
     1,
     "form.vtx: text 1: error: no NUL within its 1000 bytes; the library cuts it at 999 "
     "characters, the most a text may have"},
    {"text_outside", [](BinaryForm &f) { f.form.object(9).text_index = 2; }, 1,
     "form.vfm: object 9: text: error: text 2 is outside the text file (texts 1..1, or 0 for "
     "none)"},
    {"missing_text_file",
     [](BinaryForm &f) {
         f.form.object(9).text_index = 1;
         f.with_texts = false;
     },
     1, "form.vtx: error: the text file does not exist, and objects refer to texts"},
    {"missing_font",
     [](BinaryForm &f) {
         f.form.object(9).font_choice = 1;
         velumo::test::set_string(f.form.object(9).font_path, "/nonexistent/font.ttf");
     },
     1, "form.vfm: object 9: font_path: error: font '/nonexistent/font.ttf' does not exist"},
    {"reserved_word", [](BinaryForm &f) { f.form.object(9).reserved_cursor_x = 5; }, 0,
     "form.vfm: object 9: reserved word at offset 240: warning: is 5, not 0; the library "
     "ignores it and decompiling drops it"},
    {"trailing_bytes", [](BinaryForm &f) { f.trailing_bytes = 10; }, 0,
     "form.vfm: warning: 10 bytes after the last whole record of 776 bytes are ignored"},
    // A chain head's list is its chain; the members may hang on a window.
    {"chain_on_a_window",
     [](BinaryForm &f) {
         f.form.object(9).type = VEL_TYPE_CHAIN;
         vel_object_file_rec &head = f.form.object(10);
         head.type = VEL_TYPE_CHAIN;
         head.width = head.height = 16;
         head.dep_objs[0] = 9;
     },
     0, ""},
    {"hidden_dependent", [](BinaryForm &f) { f.form.object(9).hidden = 1; }, 0,
     "form.vfm: object 9: hidden: warning: hidden is not loaded for a dependent other than a "
     "menu; the object starts visible"},
};

TEST(Check, BinaryFormsReportEachProblemByObjectAndField)
{
    for (const BinaryCase &c : kBinaryCases) {
        TempDir dir;
        BinaryForm form;
        form.texts.set(1, "text");
        c.change(form);
        form.form.write(dir.path("form.vfm"), form.trailing_bytes);
        if (form.with_texts) form.texts.write(dir.path("form.vtx"));
        const Outcome outcome = run(dir, [&](std::ostream &out) {
            return check_command({dir.path("form.vfm")}, std::nullopt, out);
        });
        EXPECT_EQ(outcome.status, c.status) << c.name << "\n" << outcome.messages;
        if (c.line.empty()) {
            EXPECT_EQ(outcome.messages, "") << c.name;
            continue;
        }
        EXPECT_NE(outcome.messages.find(c.line + "\n"), std::string::npos)
            << c.name << ": expected\n"
            << c.line << "\ngot\n"
            << outcome.messages;
    }
}

TEST(Check, MissingFilesAreErrorsAndEveryFileIsChecked)
{
    TempDir dir;
    write_text_file(dir.path("good.toml"), kWindow);
    const Outcome outcome = run(dir, [&](std::ostream &out) {
        return check_command({dir.path("none.toml"), dir.path("good.toml"), dir.path("none.vfm")},
                             std::nullopt, out);
    });
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.messages,
              "none.toml: error: the form file does not exist or cannot be read\n"
              "none.vfm: error: the form file does not exist or cannot be read\n");
}

} // namespace
} // namespace velform::test
