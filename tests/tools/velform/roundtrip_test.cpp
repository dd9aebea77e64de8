// Round trips: binary -> TOML -> binary gives the same bytes, for the
// sample form through the commands and for generated forms with every odd
// value a record can hold; and the header and prefix a compile writes.
#include "binary_form.hpp"
#include "commands.hpp"
#include "header_writer.hpp"
#include "sample_form.hpp"
#include "toml_reader.hpp"
#include "toml_writer.hpp"
#include "velform_test.hpp"

#include <fstream>
#include <random>
#include <sstream>

namespace velform::test {
namespace {

namespace fs = std::filesystem;
using velumo::test::TempDir;

TEST(RoundTrip, SampleFormDecompilesAndCompilesToTheSameFiles)
{
    TempDir dir;
    const fs::path form = velumo::sample::write_sample_form(dir.root().string());
    const fs::path texts = dir.path(velumo::sample::kTextFile);
    const Outcome decompiled = run(dir, [&](std::ostream &out) {
        return decompile_command({form, texts, dir.path("sample.toml")}, out);
    });
    ASSERT_EQ(decompiled.status, 0) << decompiled.messages;
    const Outcome compiled = run(dir, [&](std::ostream &out) {
        return compile_command({dir.path("sample.toml"), dir.path("out/sample"), {}, {}}, out);
    });
    ASSERT_EQ(compiled.status, 0) << compiled.messages;
    EXPECT_EQ(read_bytes(dir.path("out/sample.vfm")), read_bytes(form));
    EXPECT_EQ(read_bytes(dir.path("out/sample.vtx")), read_bytes(texts));
}

// Forms with random values in every field, including those the library gives
// an "any other value" meaning, colour words above a byte, dependents lists
// with a 0 inside, objects listed twice and masters that disagree with the
// lists; masters and dependents point only forward and back, so no cycles.
class RandomForm {
public:
    explicit RandomForm(unsigned seed) : random_(seed) {}

    Form make()
    {
        Form form;
        const uint32_t count = kFrameButtons + pick(0, 12);
        for (uint32_t n = 1; n <= count; ++n) {
            form.objects.push_back(n <= kFrameButtons && pick(0, 1) ? standard_frame_button(n - 1)
                                                                    : object());
            form.names.push_back(generated_object_name(n, form.objects.back().type));
        }
        for (uint32_t t = 1, texts = pick(0, 4); t <= texts; ++t) {
            vel_text_rec text{};
            set_field_text(text.text, latin1_text(pick(0, 3) == 0 ? 999 : 40));
            text.cursor_index = pick(0, 1) ? 0 : pick(0, 30);
            form.texts.push_back(text);
            form.text_names.push_back("text_" + std::to_string(t));
        }
        for (uint32_t n = 1; n <= count; ++n)
            relate(form, n);
        return form;
    }

private:
    uint32_t pick(uint32_t low, uint32_t high)
    {
        return std::uniform_int_distribution<uint32_t>(low, high)(random_);
    }
    uint32_t any() { return pick(0, 3) == 0 ? pick(0, UINT32_MAX) : pick(0, 300); }

    std::string latin1_text(std::size_t length)
    {
        std::string text;
        for (std::size_t i = 0, n = pick(0, static_cast<uint32_t>(length)); i < n; ++i)
            text += static_cast<char>(pick(1, 255));
        return text;
    }

    vel_object_file_rec object()
    {
        vel_object_file_rec o{};
        for (uint32_t *word : {&o.x,
                               &o.y,
                               &o.width,
                               &o.height,
                               &o.fill_r,
                               &o.fill_g,
                               &o.fill_b,
                               &o.font_size,
                               &o.text_r,
                               &o.border_b,
                               &o.margin_left,
                               &o.margin_bottom,
                               &o.centred,
                               &o.line_width,
                               &o.line_spacing,
                               &o.hidden,
                               &o.window_kind,
                               &o.editable,
                               &o.max_chars,
                               &o.border_style,
                               &o.border_inset,
                               &o.scroll_max_x,
                               &o.clip_mode})
            *word = pick(0, 1) ? any() : pick(0, 7);
        o.type = pick(0, 9);
        o.font_choice = pick(0, 4) == 0 ? 1 : pick(0, 1) * 2;
        set_field_text(o.label, latin1_text(67));
        if (o.font_choice == 1) set_field_text(o.font_path, velumo::test::kFontPath);
        if (o.type == VEL_TYPE_PICTURE_FILE || pick(0, 1))
            set_field_text(o.image_path, velumo::test::kFontPath);
        o.text_length = pick(0, 1) ? any() : 0;
        return o;
    }

    void relate(Form &form, uint32_t n)
    {
        vel_object_file_rec &o = form.object(n);
        o.text_index = pick(0, form.text_count());
        if (o.text_length == 0) o.text_length = derived_text_length(form, o);
        std::size_t slot = 0;
        for (uint32_t d = n + 1; d <= form.object_count() && slot < kMaxDependents; ++d) {
            if (pick(0, 2) != 0) continue;
            o.dep_objs[slot++] = d;
            if (pick(0, 3) != 0) form.object(d).master = n;
            if (pick(0, 6) == 0) slot++; // a 0 inside the list
        }
        if (n > 1 && pick(0, 5) == 0) o.master = pick(1, n - 1);
    }

    std::mt19937 random_;
};

TEST(RoundTrip, GeneratedFormsWriteAndReadToTheSameRecords)
{
    for (unsigned seed = 1; seed <= 200; ++seed) {
        const Form form = RandomForm(seed).make();
        std::ostringstream toml;
        write_toml_form(form, "", toml);
        Diagnostics diagnostics;
        const std::optional<Form> back =
            read_toml_form(toml.str(), "/tmp/form.toml", std::nullopt, diagnostics);
        std::ostringstream messages;
        diagnostics.print(messages);
        ASSERT_TRUE(back) << "seed " << seed << "\n" << messages.str() << toml.str();
        EXPECT_EQ(object_file_bytes(*back), object_file_bytes(form)) << "seed " << seed;
        EXPECT_EQ(text_file_bytes(*back), text_file_bytes(form)) << "seed " << seed;
    }
}

TEST(Compile, HeaderNamesEveryObjectAndTextWithTheFilesPrefix)
{
    TempDir dir;
    write_text_file(dir.path("notes.form.toml"), R"([[object]]
name = "main"
type = "window"
width = 100
height = 50
text = "welcome"
children = ["ok"]

[[object]]
name = "ok"
type = "label"
width = 20
height = 10
x = 10
y = 10

[texts]
welcome = "Hello"
)");
    ASSERT_EQ(compile_command({dir.path("notes.form.toml"), dir.path("notes"), {}, {}}, std::cerr),
              0);
    std::ifstream header(dir.path("notes.h"));
    const std::string text((std::istreambuf_iterator<char>(header)), {});
    for (const char *line : {"#define NOTES_FRAME_CLOSE 7\n", "#define NOTES_MAIN 8\n",
                             "#define NOTES_OK 9\n", "#define NOTES_OBJECT_COUNT 9\n",
                             "#define NOTES_TEXT_WELCOME 1\n", "#define NOTES_TEXT_COUNT 1\n"})
        EXPECT_NE(text.find(line), std::string::npos) << line << " missing in\n" << text;
}

TEST(Compile, DefaultPrefixComesFromTheNameUpToTheFirstDot)
{
    const struct {
        const char *file, *prefix;
    } cases[] = {{"dir/notes.form.toml", "NOTES"},
                 {"my-app.toml", "MY_APP"},
                 {"3d.toml", "_3D"},
                 {"Settings", "SETTINGS"}};
    for (const auto &c : cases)
        EXPECT_EQ(default_prefix(c.file), c.prefix) << c.file;
}

} // namespace
} // namespace velform::test
