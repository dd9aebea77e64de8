// Object text formatting: separators, kept spaces, the word cap, split words
// and their repetition, the 40-line table and slot 40, and button captions.
#include "text_fixture.hpp"

#include <algorithm>

namespace velumo::test {
namespace {

using Format = TextTest;

constexpr uint32_t kWide = 5000;

TEST_F(Format, OnlyWindowsAndTextObjectsWithATextAreFormatted)
{
    load_form();
    fill_buffer(1, 'X');
    object(kTextObject).type = VEL_TYPE_LABEL;
    EXPECT_EQ(format("hello", 0), 0u);
    object(kTextObject).type = VEL_TYPE_TEXT;
    object(kTextObject).text_index = 0;
    EXPECT_EQ(vel_format_object_text(&ctx(), kTextObject), 0u);
    EXPECT_EQ(raw(1, 0, 3), "XXX");
    EXPECT_EQ(object(kTextObject).line_width, 0u);

    // An empty text clears all lines and keeps the old line count.
    object(kTextObject).text_index = 1;
    object(kTextObject).number_of_lines = 7;
    EXPECT_EQ(format("", kWide), 0u);
    for (uint32_t n = 0; n < VEL_MAX_LINES; ++n)
        EXPECT_EQ(line(1, n), "") << n;
    EXPECT_EQ(object(kTextObject).number_of_lines, 7u);
}

TEST_F(Format, LineWidthComesFromTheTextAreaOnce)
{
    load_form();
    object(kTextObject).type = VEL_TYPE_WINDOW;
    EXPECT_EQ(format("a", 0), 0u);
    EXPECT_EQ(text_line(0), "a");
    // Text area 104 .. 295, exclusive: 190 usable pixels.
    EXPECT_EQ(object(kTextObject).line_width, 190u);
    object(kTextObject).width = 100;
    vel_format_object_text(&ctx(), kTextObject);
    EXPECT_EQ(object(kTextObject).line_width, 190u);

    // Placing a word on its own falls back to width minus the side margins.
    object(kTextObject).line_width = 0;
    uint32_t ln = 0, col = 0, len = 1;
    vel_copy_word_into_line(&ctx(), kTextObject, "a", &ln, &col, &len, 0);
    EXPECT_EQ(object(kTextObject).line_width, 90u);
}

TEST_F(Format, SeparatorsSpacesAndLineFeeds)
{
    load_form();
    fill_buffer(1, 'X');
    EXPECT_EQ(format("ab  c\td\re\n\nb", kWide), 2u);
    EXPECT_EQ(text_line(0), "ab  c\td\re");
    EXPECT_EQ(text_line(1), "");
    EXPECT_EQ(text_line(2), "b");
    EXPECT_EQ(object(kTextObject).number_of_lines, 2u);
    for (uint32_t n = 3; n < VEL_MAX_LINES; ++n)
        EXPECT_EQ(line(1, n), "") << n;
}

TEST_F(Format, SpaceThatMakesTheLineTooWideStartsTheNextLine)
{
    load_form();
    const uint32_t lw = std::max(uwidth("aa ") + uwidth("bb"), uwidth("aa bb"));
    ASSERT_GT(width("aa bb "), static_cast<int>(lw));
    EXPECT_EQ(format("aa bb cc", lw), 1u);
    EXPECT_EQ(text_line(0), "aa bb");
    EXPECT_EQ(text_line(1), " cc");
}

TEST_F(Format, LineEndsAtColumn99)
{
    load_form();
    std::string text;
    for (int k = 0; k < 34; ++k)
        text += "aa ";
    EXPECT_EQ(format(text, kWide), 1u);
    EXPECT_EQ(text_line(0).size(), 99u);
    EXPECT_EQ(text_line(1), "aa ");
}

TEST_F(Format, RunsOfWordCharactersAreCutAt70)
{
    load_form();
    const std::string piece(70, 'x');
    // Room for "a " and 70 characters, not for the 71st: as one word of 71
    // the run would go to line 1 whole.
    const uint32_t lw = uwidth("a ") + uwidth(piece);
    ASSERT_GT(width("a " + piece) + width("x"), static_cast<int>(lw));
    EXPECT_EQ(format("a " + piece + "x", lw), 1u);
    EXPECT_EQ(text_line(0), "a " + piece);
    EXPECT_EQ(text_line(1), "x");
}

TEST_F(Format, UmlautsOfTheThreeLowerCaseBytesOnly)
{
    load_form();
    const std::string dos = "\x84\x94\x81\x8E\x99\x9A\xE1";
    EXPECT_EQ(format(dos, kWide), 0u);
    EXPECT_EQ(text_line(0), dos);
    ctx().umlaut_conversion = 1;
    EXPECT_EQ(format(dos, kWide), 0u);
    EXPECT_EQ(text_line(0), "\xE4\xF6\xFC\x8E\x99\x9A\xE1");
    EXPECT_EQ(ctx().text_recs[1].text, dos);
}

TEST_F(Format, SplitWordIsPlacedAgainWithTheNextWord)
{
    load_form();
    const uint32_t lw = uwidth("aaaa");
    ASSERT_GT(width("aaaaa"), static_cast<int>(lw));
    ASSERT_LE(width(" aaa"), static_cast<int>(lw));
    ASSERT_GT(width(" aaaa"), static_cast<int>(lw));
    ASSERT_LE(width("ab"), static_cast<int>(lw));
    // "aaaaaaaa" is split over lines 0 and 1 and stays in the word buffer;
    // "b" joins it and the nine characters are split again behind the space
    // that starts line 2.
    EXPECT_EQ(format("aaaaaaaa b", lw), 4u);
    const char *expected[] = {"aaaa", "aaaa", " aaa", "aaaa", "ab"};
    for (uint32_t n = 0; n < 5; ++n)
        EXPECT_EQ(text_line(n), expected[n]) << n;
}

TEST_F(Format, CharacterWiderThanTheObjectLeavesEmptyLines)
{
    load_form();
    EXPECT_EQ(format("x", 1), 39u);
    for (uint32_t n = 0; n < VEL_MAX_LINES; ++n)
        EXPECT_EQ(text_line(n), "") << n;
    uint32_t ln = 0, col = 0, len = 1;
    EXPECT_EQ(vel_copy_word_into_line(&ctx(), kTextObject, "x", &ln, &col, &len, 0), -1);
    EXPECT_EQ(ln, 39u);
    EXPECT_EQ(len, 1u);
}

TEST_F(Format, TextBeyondFortyLinesIsCut)
{
    load_form(8, 2);
    fill_buffer(2, 'X');
    std::string text;
    for (int k = 0; k < 45; ++k)
        text += "w" + std::to_string(k) + "\n";
    EXPECT_EQ(format(text, kWide), 39u);
    EXPECT_EQ(text_line(39), "w39");
    EXPECT_EQ(object(kTextObject).number_of_lines, 39u);
    EXPECT_EQ(raw(2, 0, 2), "XX");
}

TEST_F(Format, WordMovedOnFromLine39LandsInSlot40)
{
    // Text record 1 is the last of the block: its slot 40 is line 0 of the
    // spare buffer behind it.
    load_form();
    std::string text;
    for (int k = 0; k < 41; ++k)
        text += "ab ";
    const uint32_t lw = uwidth("ab ");
    ASSERT_GT(width("ab ") + width("ab"), static_cast<int>(lw));
    EXPECT_EQ(format(text, lw), 40u);
    EXPECT_EQ(text_line(39), "ab ");
    EXPECT_EQ(text_line(40), "ab ");
    EXPECT_EQ(line(2, 0), "ab ");
    EXPECT_EQ(object(kTextObject).number_of_lines, 40u);
}

TEST_F(Format, FittingTest)
{
    load_form();
    std::strcpy(line_ptr(1, 3), "abc ");
    object(kTextObject).line_width = uwidth("abc ") + uwidth("de");
    uint32_t ln = 3, col = 4, len = 2;
    auto fit = [&](const char *word) {
        len = static_cast<uint32_t>(std::strlen(word));
        return vel_check_line_volume(&ctx(), kTextObject, word, &ln, &col, &len);
    };
    EXPECT_EQ(fit("de"), 1u);
    EXPECT_EQ(fit("def"), 2u);
    object(kTextObject).line_width = uwidth("def") - 1;
    EXPECT_EQ(fit("def"), 3u);

    // Character room: 98 - column, unsigned, so column 99 counts as room.
    object(kTextObject).line_width = kWide;
    ln = 0;
    col = 98;
    EXPECT_EQ(fit("abcde"), 2u);
    col = 93;
    EXPECT_EQ(fit("abcde"), 1u);
    col = 99;
    EXPECT_EQ(fit("abcde"), 1u);
    col = 0;
    EXPECT_EQ(fit(std::string(99, 'i').c_str()), 3u);

    // Margins wider than the object leave a "negative" line width: the free
    // width is negative in 32 bits, so no word fits on the current line.
    object(kTextObject).line_width = static_cast<uint32_t>(-10);
    line_ptr(1, 0)[0] = '\0';
    EXPECT_EQ(fit("ab"), 2u);
}

TEST_F(Format, ObjectWithoutAFontMeasuresNothing)
{
    load_form();
    object(kTextObject).font_choice = 1; // no own font opened
    EXPECT_EQ(format("some words here", 1), 0u);
    EXPECT_EQ(text_line(0), "some words here");
}

class Caption : public TextTest {
protected:
    vel_object &button(const std::string &label, int spare_x, int spare_y)
    {
        vel_object &b = object(kFirstSpareObject);
        b.type = VEL_TYPE_LABEL;
        set_string(b.label, label);
        int w = 0, h = 0;
        TTF_SizeText(ctx().font, label.c_str(), &w, &h);
        b.width = static_cast<uint32_t>(w + spare_x);
        b.height = static_cast<uint32_t>(h + spare_y);
        b.margin_left = b.margin_top = 77;
        return b;
    }
    uint32_t small() { return vel_format_small_obj(&ctx(), kFirstSpareObject); }
};

TEST_F(Caption, ButtonIsCentredWhereThreePixelsAreSpare)
{
    load_form();
    vel_object &b = button("Cancel", 10, 0);
    EXPECT_EQ(small(), 1u);
    EXPECT_EQ(b.margin_left, 5u);
    EXPECT_EQ(b.margin_top, 77u);
    button("Cancel", 3, 11);
    EXPECT_EQ(small(), 2u);
    EXPECT_EQ(b.margin_left, 1u);
    EXPECT_EQ(b.margin_top, 5u);
    button("OK", 2, 2);
    EXPECT_EQ(small(), 0u);
    button("OK", -10, 6);
    EXPECT_EQ(small(), 2u);
    EXPECT_EQ(b.margin_left, 77u);
    EXPECT_EQ(b.margin_top, 3u);

    button("Yes\nNo", 0, 0).width = uwidth("Yes") + 4;
    EXPECT_EQ(small(), 1u);
    EXPECT_STREQ(b.label, "Yes");
    EXPECT_EQ(b.margin_left, 2u);
}

TEST_F(Caption, OtherTypesAndEmptyLabels)
{
    load_form();
    vel_object &b = button("abc", 50, 50);
    for (uint32_t type : {5u, 6u}) {
        b.type = type;
        EXPECT_EQ(small(), 3u) << type;
    }
    for (uint32_t type : {0u, 1u, 3u, 7u, 8u}) {
        b.type = type;
        EXPECT_EQ(small(), 0u) << type;
    }
    b.type = VEL_TYPE_LABEL;
    b.label[0] = '\0';
    EXPECT_EQ(small(), 0u);
    EXPECT_EQ(b.margin_left, 77u);
}

} // namespace
} // namespace velumo::test
