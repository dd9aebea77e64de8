// Text loading and reset: replacing texts, centring the buttons that go with
// them, resetting the cursor, padding labels and reading external streams.
#include "text_fixture.hpp"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace velumo::test {
namespace {

using Load = TextTest;

TEST_F(Load, ShorterTextReplacesALongerOne)
{
    load_form(8, 2);
    ASSERT_EQ(format("0\n1\n2\n3\n4\n5\n6\n7\n8\n9\n10", 5000), 10u);
    ctx().text_recs[1].cursor_index = 5;
    EXPECT_EQ(vel_load_window_text(&ctx(), kTextObject, "short"), 0u);
    EXPECT_STREQ(ctx().text_recs[1].text, "short");
    EXPECT_EQ(text_line(0), "short");
    for (uint32_t n = 1; n < VEL_MAX_LINES; ++n)
        EXPECT_EQ(text_line(n), "") << n;
    EXPECT_EQ(object(kTextObject).number_of_lines, 0u);
    EXPECT_EQ(ctx().text_recs[1].cursor_index, 5u);

    // The old lines are cleared up to the old count inclusive: slot 40 of a
    // text that reached it is the next buffer's first line.
    std::string text;
    for (int k = 0; k < 41; ++k)
        text += "ab ";
    ASSERT_EQ(format(text, uwidth("ab ")), 40u);
    ASSERT_EQ(line(2, 0), "ab ");
    vel_load_window_text(&ctx(), kTextObject, "x");
    EXPECT_EQ(line(2, 0), "");

    // A text longer than the record is cut at 999 characters.
    ctx().text_recs[2].reserved = 0x12345678;
    vel_load_window_text(&ctx(), kTextObject, std::string(1200, 'x').c_str());
    EXPECT_EQ(std::strlen(ctx().text_recs[1].text), 999u);
    EXPECT_EQ(ctx().text_recs[2].reserved, 0x12345678u);
}

TEST_F(Load, ButtonsAreCentredAfterTheText)
{
    load_form();
    vel_object &yes = object(kFirstSpareObject);
    vel_object &no = object(kFirstSpareObject + 1);
    int w = 0, h = 0;
    TTF_SizeText(ctx().font, "No", &w, &h);
    for (vel_object *b : {&yes, &no}) {
        b->type = VEL_TYPE_LABEL;
        b->width = 100;
        b->height = static_cast<uint32_t>(h);
    }
    set_string(yes.label, "Yes");
    set_string(no.label, "No\nmore");
    no.height += 10;
    EXPECT_EQ(vel_load_window_text_buttons(&ctx(), kTextObject, "Really?", kFirstSpareObject,
                                           kFirstSpareObject + 1),
              2u);
    EXPECT_EQ(text_line(0), "Really?");
    EXPECT_EQ(yes.margin_left, (100u - uwidth("Yes")) / 2);
    EXPECT_EQ(yes.margin_top, 0u);
    EXPECT_STREQ(no.label, "No");
    EXPECT_EQ(no.margin_top, 5u);
}

TEST_F(Load, ResetPutsTheCursorToTheStartOfTheTextArea)
{
    load_form();
    vel_object &o = object(kTextObject);
    set_text(1, "abc");
    set_string(o.label, "hello");
    for (uint32_t mode : {0u, 1u, 2u}) {
        ctx().text_recs[1].cursor_index = 3;
        o.text_length = 42;
        o.cursor_line = 4;
        o.cursor_column = 2;
        o.cursor_x = o.cursor_y = 999;
        vel_reset_textobject(&ctx(), mode, kTextObject);
        const uint32_t lengths[] = {5, 3, 42};
        EXPECT_EQ(o.text_length, lengths[mode]) << mode;
        EXPECT_EQ(ctx().text_recs[1].cursor_index, mode == 1 ? 0u : 3u) << mode;
        EXPECT_EQ(o.cursor_line + o.cursor_column, 0u) << mode;
        EXPECT_EQ(o.cursor_x, 105u) << mode;
        EXPECT_EQ(o.cursor_y, 55u) << mode;
    }
    o.label[0] = '\0';
    vel_reset_textobject(&ctx(), 0, kTextObject);
    EXPECT_EQ(o.text_length, 0u);
}

class Padding : public TextTest {
protected:
    vel_object &field(const std::string &label)
    {
        vel_object &o = object(kFirstSpareObject);
        set_string(o.label, label);
        o.text_length = 99;
        return o;
    }
    uint32_t pad(const char *string, uint32_t length, char fill)
    {
        return vel_fill_form_with_dummies(&ctx(), string, kFirstSpareObject, length, fill);
    }
};

TEST_F(Padding, LabelIsRightAlignedBehindFillCharacters)
{
    load_form();
    vel_object &o = field("ab");
    EXPECT_EQ(pad(o.label, 5, '0'), 5u);
    EXPECT_STREQ(o.label, "000ab");
    EXPECT_EQ(o.text_length, 5u);
    field("x");
    EXPECT_EQ(pad(o.label, 67, '.'), 67u);
    EXPECT_EQ(std::string(o.label), std::string(66, '.') + "x");
    // The length comes from the string, the characters from the label.
    field("xyz12");
    EXPECT_EQ(pad("abc", 5, '*'), 5u);
    EXPECT_STREQ(o.label, "**xyz");
    field("");
    EXPECT_EQ(pad(o.label, 4, '*'), 4u);
    EXPECT_STREQ(o.label, "****");
}

TEST_F(Padding, LabelThatFillsTheFieldOrFieldWiderThanTheLabel)
{
    load_form();
    vel_object &o = field("abc");
    EXPECT_EQ(pad(o.label, 3, '0'), 3u);
    EXPECT_EQ(pad(o.label, 2, '0'), 3u);
    EXPECT_EQ(pad(o.label, 68, '0'), 0u);
    EXPECT_STREQ(o.label, "abc");
    EXPECT_EQ(o.text_length, 99u);
}

class Stream : public ::testing::Test {
protected:
    using Buffer = std::unique_ptr<char, decltype(&std::free)>;
    Buffer read(const std::string &name, const std::string &content)
    {
        const std::string path = dir_.path(name);
        std::ofstream(path, std::ios::binary) << content;
        return Buffer(vel_read_external_stream(path.c_str()), &std::free);
    }
    static std::ptrdiff_t open_descriptors()
    {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator());
    }
    TempDir dir_;
};

TEST_F(Stream, WholeFileIsReadAndTerminated)
{
    const std::ptrdiff_t descriptors = open_descriptors();
    Buffer with_nul = read("a", std::string("one\ntwo\0", 8));
    ASSERT_TRUE(with_nul);
    EXPECT_EQ(std::string(with_nul.get(), 9), std::string("one\ntwo\0\0", 9));
    Buffer without = read("b", "three four");
    ASSERT_TRUE(without);
    EXPECT_STREQ(without.get(), "three four");
    Buffer empty = read("c", "");
    ASSERT_TRUE(empty);
    EXPECT_STREQ(empty.get(), "");
    EXPECT_EQ(open_descriptors(), descriptors);
}

TEST_F(Stream, FilesThatCannotBeOpenedForWritingGiveNull)
{
    EXPECT_EQ(vel_read_external_stream(dir_.path("missing").c_str()), nullptr);
    // A directory cannot be opened for writing, whoever asks.
    EXPECT_EQ(vel_read_external_stream(dir_.root().c_str()), nullptr);
}

TEST_F(Stream, ReadOnlyFileGivesNull)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const std::string path = dir_.path("read-only");
    std::ofstream(path) << "text";
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    ASSERT_EQ(chmod(dir_.root().c_str(), 0755), 0);
    EXPECT_EXIT(
        {
            become_unprivileged();
            std::_Exit(vel_read_external_stream(path.c_str()) == nullptr ? 3 : 4);
        },
        ::testing::ExitedWithCode(3), "");
}

} // namespace
} // namespace velumo::test
