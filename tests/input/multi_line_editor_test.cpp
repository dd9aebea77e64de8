// The editor on multi-line texts: the two cursor forms, Enter, the cursor
// keys with their scrolling, deleting, typing at the limits of 999
// characters, 99 columns and 40 lines, and text memory staying in place.
#include "input_fixture.hpp"

#include <cstring>
#include <utility>

namespace velumo::test {
namespace {

class MultiLine : public InputTest {
protected:
    void SetUp() override
    {
        InputTest::SetUp();
        load_form();
        ctx().cursor_object = kText;
    }
    vel_object &area() { return object(kText); }
    // Formats `text` and puts the cursor at (line, column).
    void start(const std::string &text, uint32_t line, uint32_t column)
    {
        set_text(text);
        area().cursor_line = line;
        area().cursor_column = column;
        vel_get_position_in_stream(&ctx());
    }
    void expect_cursor(uint32_t line, uint32_t column, uint32_t index)
    {
        EXPECT_EQ(area().cursor_line, line);
        EXPECT_EQ(area().cursor_column, column);
        EXPECT_EQ(cursor_index(), index);
    }
    int32_t origin_x() { return text_area(kText).left + static_cast<int32_t>(area().scroll_x) + 1; }
    int32_t origin_y() { return text_area(kText).top + static_cast<int32_t>(area().scroll_y) + 1; }
    int32_t cursor_x() { return static_cast<int32_t>(area().cursor_x); }
    int32_t cursor_y() { return static_cast<int32_t>(area().cursor_y); }
    // Writes formatted lines by hand, without the formatter.
    void set_lines(const std::string &text, std::initializer_list<const char *> lines)
    {
        set_string(ctx().text_recs[kTextIndex].text, text);
        uint32_t n = 0;
        for (const char *l : lines) {
            char *dst = ctx().text_bufs + kTextIndex * VEL_LINE_BUFFER_BYTES + n * VEL_LINE_BYTES;
            std::strcpy(dst, l);
            ++n;
        }
        area().number_of_lines = n - 1;
    }
    std::string words_of_length(uint32_t length)
    {
        std::string text;
        while (text.size() < length)
            text += text.size() % 10 == 9 ? ' ' : 'x';
        return text;
    }
};

TEST_F(MultiLine, LineAndColumnToIndex)
{
    set_lines("abcdef", {"abc", "def"}); // a wrap made by the formatter
    const auto index_of = [&](uint32_t line, uint32_t column) {
        cursor_index() = 77;
        area().cursor_line = line;
        area().cursor_column = column;
        vel_get_position_in_stream(&ctx());
        return cursor_index();
    };
    EXPECT_EQ(index_of(0, 0), 0u);
    EXPECT_EQ(index_of(0, 3), 3u);
    EXPECT_EQ(index_of(1, 0), 3u) << "a wrap takes no text position";
    EXPECT_EQ(index_of(1, 2), 5u);
    EXPECT_EQ(index_of(5, 0), 77u) << "beyond the last line: unchanged";
    set_lines("abc\ndef", {"abc", "def"});
    EXPECT_EQ(index_of(1, 0), 4u) << "a paragraph break takes one";
    EXPECT_EQ(index_of(1, 3), 7u);
    set_lines("a\n\nb", {"a", "", "b"});
    EXPECT_EQ(index_of(1, 0), 2u);
    EXPECT_EQ(index_of(2, 1), 4u);
}

TEST_F(MultiLine, IndexToLineAndColumn)
{
    const auto place_of = [&](uint32_t index) {
        area().cursor_line = 77;
        area().cursor_column = 77;
        cursor_index() = index;
        vel_get_column_row(&ctx());
        return std::make_pair(area().cursor_line, area().cursor_column);
    };
    using P = std::pair<uint32_t, uint32_t>;
    set_lines("abcdef", {"abc", "def"});
    EXPECT_EQ(place_of(0), P(0, 0));
    EXPECT_EQ(place_of(3), P(0, 3)) << "the end of a wrapped line stays there";
    EXPECT_EQ(place_of(5), P(1, 2));
    EXPECT_EQ(place_of(6), P(1, 3));
    EXPECT_EQ(place_of(50), P(77, 77)) << "never reached: unchanged";
    set_lines("abc\ndef", {"abc", "def"});
    EXPECT_EQ(place_of(3), P(0, 3));
    EXPECT_EQ(place_of(4), P(1, 0)) << "just after a paragraph break";
    set_lines("a\n\nb", {"a", "", "b"});
    EXPECT_EQ(place_of(2), P(1, 0));
    EXPECT_EQ(place_of(3), P(2, 0));
}

TEST_F(MultiLine, EnterBreaksTheParagraphAtTheCursor)
{
    start("abc\ndefgh\nij", 0, 1);
    apply(SDLK_KP_ENTER, 0);
    EXPECT_EQ(record_text(), "a\nbc\ndefgh\nij");
    EXPECT_EQ(area().text_length, 13u);
    expect_cursor(1, 0, 2);
    EXPECT_EQ(line(1), "bc");
    EXPECT_EQ(area().number_of_lines, 3u);
    EXPECT_EQ(cursor_x(), origin_x());
    EXPECT_EQ(cursor_y(), origin_y() + font_height());
}

TEST_F(MultiLine, EnterAtTheEndOfTheText)
{
    start("abc", 0, 3);
    apply(SDLK_KP_ENTER, 0);
    EXPECT_EQ(record_text(), "abc\n");
    expect_cursor(1, 0, 4);
}

TEST_F(MultiLine, EnterStopsAtNineHundredNinetyNineCharactersAndLineThirtyNine)
{
    const std::string full = words_of_length(999);
    start(full, 0, 1);
    apply(SDLK_KP_ENTER, 0);
    EXPECT_EQ(record_text(), full);
    EXPECT_EQ(ctx().final_key, 0u);

    const std::string forty_lines(39, '\n');
    start(forty_lines, 39, 0);
    ASSERT_EQ(area().number_of_lines, 39u);
    apply(SDLK_KP_ENTER, 0);
    EXPECT_EQ(record_text(), forty_lines) << "on line 39";
    start(forty_lines, 0, 0);
    apply(SDLK_KP_ENTER, 0);
    EXPECT_EQ(record_text(), forty_lines) << "39 is the last line in use";
    start(std::string(38, '\n'), 0, 0);
    apply(SDLK_KP_ENTER, 0);
    EXPECT_EQ(record_text(), forty_lines) << "one line less still takes it";
}

TEST_F(MultiLine, EnterBelowTheAreaScrollsUp)
{
    area().height = 30; // room for one line only
    start("abc", 0, 3);
    area().cursor_y = 5;
    apply(SDLK_KP_ENTER, 0);
    EXPECT_EQ(static_cast<int32_t>(area().scroll_y), -font_height());
    EXPECT_EQ(area().cursor_y, 5u);
}

TEST_F(MultiLine, UpKeepsTheColumnWithinTheShorterLine)
{
    start("abc\ndefghijk", 1, 7);
    apply(SDLK_UP, 0);
    expect_cursor(0, 2, 2);
    // Characters 0..column are measured: one character right of column 2.
    EXPECT_EQ(cursor_x(), origin_x() + width_of("abc"));
    EXPECT_EQ(cursor_y(), origin_y());
    apply(SDLK_UP, 0);
    expect_cursor(0, 2, 2);
}

TEST_F(MultiLine, UpOntoColumnZeroUsesTheObjectsMargin)
{
    start("\ndefgh", 1, 3);
    area().scroll_x = static_cast<uint32_t>(-10);
    apply(SDLK_UP, 0);
    expect_cursor(0, 0, 0);
    EXPECT_EQ(area().cursor_x, area().x + area().margin_left);
}

TEST_F(MultiLine, UpAboveTheAreaScrollsDown)
{
    start("abc\ndef", 1, 1);
    area().scroll_y = static_cast<uint32_t>(-font_height());
    area().cursor_y = 5;
    apply(SDLK_UP, 0);
    EXPECT_EQ(area().scroll_y, 0u);
    EXPECT_EQ(area().cursor_y, 5u);
}

TEST_F(MultiLine, DownMovesToTheNextLineInUse)
{
    start("abc\ndefgh\nij", 0, 2);
    area().line_spacing = 4;
    apply(SDLK_DOWN, 0);
    expect_cursor(1, 2, 6);
    EXPECT_EQ(cursor_x(), origin_x() + width_of("def"));
    EXPECT_EQ(cursor_y(), origin_y() + font_height() + 4);
    area().cursor_column = 4;
    apply(SDLK_DOWN, 0);
    expect_cursor(2, 1, 11);
    apply(SDLK_DOWN, 0);
    expect_cursor(2, 1, 11);
}

TEST_F(MultiLine, DownStopsAtLineThirtyNine)
{
    start(std::string(45, '\n'), 39, 0);
    ASSERT_EQ(area().number_of_lines, 39u);
    apply(SDLK_DOWN, 0);
    EXPECT_EQ(area().cursor_line, 39u);
}

TEST_F(MultiLine, DownBelowTheAreaScrollsUp)
{
    area().height = 30;
    start("abc\ndef", 0, 0);
    area().cursor_y = 5;
    apply(SDLK_DOWN, 0);
    EXPECT_EQ(area().cursor_line, 1u);
    EXPECT_EQ(static_cast<int32_t>(area().scroll_y), -font_height());
    EXPECT_EQ(area().cursor_y, 5u);
}

TEST_F(MultiLine, RightWalksOnAndIntoTheNextLine)
{
    start("abc\ndefgh", 0, 0);
    apply(SDLK_RIGHT, 0);
    expect_cursor(0, 1, 1);
    EXPECT_EQ(cursor_x(), origin_x() + width_of("a"));
    area().cursor_column = 2;
    cursor_index() = 2;
    apply(SDLK_RIGHT, 0);
    expect_cursor(0, 3, 3); // from the last character to behind it
    apply(SDLK_RIGHT, 0);
    expect_cursor(1, 0, 4);
    EXPECT_EQ(area().cursor_x, area().x + area().margin_left);
    EXPECT_EQ(cursor_y(), origin_y() + font_height());
    area().cursor_column = 5;
    cursor_index() = 9;
    apply(SDLK_RIGHT, 0);
    expect_cursor(1, 5, 9); // the end of the last line
}

TEST_F(MultiLine, RightDoesNothingOnAnEmptyLine)
{
    start("\n\nabc", 1, 0);
    apply(SDLK_RIGHT, 0);
    expect_cursor(1, 0, 1);
}

TEST_F(MultiLine, RightFromTheLastCharacterNeedsAnIndexBelowNineHundredNinetyNine)
{
    start("ab", 0, 1);
    cursor_index() = 999;
    apply(SDLK_RIGHT, 0);
    EXPECT_EQ(area().cursor_column, 1u);
    cursor_index() = 998;
    apply(SDLK_RIGHT, 0);
    expect_cursor(0, 2, 999);
}

TEST_F(MultiLine, RightPastTheRightEdgeNeitherDrawsNorScrolls)
{
    start("abc", 0, 0);
    area().scroll_x = 600;
    area().cursor_x = 99;
    apply(SDLK_RIGHT, 0);
    expect_cursor(0, 1, 1);
    EXPECT_EQ(area().cursor_x, 99u);
    EXPECT_EQ(area().scroll_x, 600u);
}

TEST_F(MultiLine, LeftStaysOnItsLine)
{
    start("abc\ndefgh", 1, 3);
    apply(SDLK_LEFT, 0);
    expect_cursor(1, 2, 6);
    EXPECT_EQ(cursor_x(), origin_x() + width_of("de"));
    area().cursor_column = 0;
    cursor_index() = 4;
    apply(SDLK_LEFT, 0);
    expect_cursor(1, 0, 4);
}

TEST_F(MultiLine, BackspaceAtColumnZeroJoinsTheLines)
{
    start("abc\ndef\nghi", 2, 0);
    apply(SDLK_BACKSPACE, 0);
    EXPECT_EQ(record_text(), "abc\ndefghi");
    EXPECT_EQ(area().text_length, 10u);
    expect_cursor(1, 3, 7);
    EXPECT_EQ(line(1), "defghi");
    EXPECT_EQ(cursor_x(), origin_x() + width_of("def"));
    EXPECT_EQ(cursor_y(), origin_y() + font_height());
}

TEST_F(MultiLine, BackspaceAtTheStartDoesNothing)
{
    start("abc", 0, 0);
    apply(SDLK_BACKSPACE, 0);
    EXPECT_EQ(record_text(), "abc");
    expect_cursor(0, 0, 0);
}

TEST_F(MultiLine, DeleteRemovesTheCharacterAtTheCursor)
{
    start("abc\ndef", 0, 3);
    apply(SDLK_DELETE, 0);
    EXPECT_EQ(record_text(), "abcdef");
    expect_cursor(0, 3, 3);
    EXPECT_EQ(cursor_x(), origin_x() + width_of("abc"));
    start("abc\ndef", 1, 3);
    apply(SDLK_DELETE, 0);
    EXPECT_EQ(record_text(), "abc\ndef") << "the end of the text";
}

TEST_F(MultiLine, TypingInsertsAtTheCursor)
{
    start("abc\ndef", 1, 1);
    type("xy");
    EXPECT_EQ(record_text(), "abc\ndxyef");
    EXPECT_EQ(area().text_length, 9u);
    expect_cursor(1, 3, 7);
    EXPECT_EQ(cursor_x(), origin_x() + width_of("dxy"));
}

TEST_F(MultiLine, OverwriteReplacesAtTheCursor)
{
    ctx().insert_mode = 1;
    start("abc\ndef", 1, 1);
    type("x");
    EXPECT_EQ(record_text(), "abc\ndxf");
    expect_cursor(1, 2, 6);
    start("ab", 0, 2);
    type("x");
    EXPECT_EQ(record_text(), "abx") << "at the end it appends";
    EXPECT_EQ(area().text_length, 3u);
}

TEST_F(MultiLine, OverwriteAtTheEndPutsTheTerminatorAtTheColumn)
{
    ctx().insert_mode = 1;
    start("ab\ncd", 1, 2);
    type("x");
    // Column 3 of line 1 is text position 3: the text ends after "ab\n".
    EXPECT_EQ(record_text(), "ab\n");
    EXPECT_EQ(area().text_length, 6u);
    expect_cursor(1, 3, 6);
}

TEST_F(MultiLine, OverwriteObeysMaxCharsAsAColumnLimit)
{
    ctx().insert_mode = 1;
    area().max_chars = 3;
    start("abcdef", 0, 3);
    type("x");
    EXPECT_EQ(record_text(), "abcdef");
    area().cursor_column = 2;
    cursor_index() = 2;
    type("x");
    EXPECT_EQ(record_text(), "abxdef");
    area().max_chars = 0;
    area().cursor_column = 5;
    cursor_index() = 5;
    type("y");
    EXPECT_EQ(record_text(), "abxdey") << "max_chars 0 sets no limit";
}

TEST_F(MultiLine, TypingStopsAtNineHundredNinetyNineCharacters)
{
    const std::string full = words_of_length(999);
    start(full, 0, 1);
    type("a");
    EXPECT_EQ(record_text(), full);
    ctx().insert_mode = 1;
    type("a");
    EXPECT_EQ(record_text().substr(0, 3), "xax") << "overwriting still works";
    EXPECT_EQ(record_text().size(), 999u);
}

TEST_F(MultiLine, OverwriteNeverReachesTheRecordsLastByte)
{
    ctx().insert_mode = 1;
    const std::string full = words_of_length(999);
    start(full, 0, 0);
    cursor_index() = 999;
    type("z");
    EXPECT_EQ(record_text(), full);
    EXPECT_EQ(ctx().text_recs[kTextIndex].text[VEL_TEXT_BYTES - 1], '\0');
}

TEST_F(MultiLine, TypingOnLineThirtyNine)
{
    start(std::string(39, '\n') + "ab", 39, 2);
    type("c");
    EXPECT_EQ(record_text(), std::string(39, '\n') + "abc");
    expect_cursor(39, 3, 42);
}

TEST_F(MultiLine, TypingThatWrapsMovesTheCursorDown)
{
    area().line_width = static_cast<uint32_t>(width_of("aaaa") + 1);
    start("aaaa", 0, 4);
    type(" ");
    EXPECT_EQ(line(1), " ");
    expect_cursor(1, 1, 5);
    EXPECT_EQ(cursor_y(), origin_y() + font_height());
    EXPECT_EQ(cursor_x(), origin_x() + width_of(" "));
}

TEST_F(MultiLine, AFullLineSendsTheCursorToTheNextLine)
{
    area().line_width = 100000;
    const std::string text = std::string(70, 'i') + " " + std::string(27, 'i');
    start(text, 0, 98);
    type(" ");
    EXPECT_EQ(line(0).size(), 99u);
    EXPECT_EQ(cursor_index(), 99u);
    EXPECT_EQ(area().cursor_line, 1u);
    EXPECT_EQ(area().cursor_column, 0u);
    EXPECT_EQ(cursor_y(), origin_y() + font_height());
    EXPECT_EQ(cursor_x(), origin_x());
}

TEST_F(MultiLine, AFullLineThirtyNineKeepsTheCursor)
{
    area().line_width = 100000;
    const std::string text =
        std::string(39, '\n') + std::string(70, 'i') + " " + std::string(27, 'i');
    start(text, 39, 98);
    area().cursor_y = 5;
    type(" ");
    EXPECT_EQ(area().cursor_line, 39u);
    EXPECT_EQ(area().cursor_column, 99u);
    EXPECT_EQ(line(39).size(), 99u);
    EXPECT_EQ(static_cast<int32_t>(area().scroll_y), -font_height()) << "line 39 lies below";
    EXPECT_EQ(area().cursor_y, 5u);
    type("i");
    EXPECT_EQ(area().cursor_column, 99u) << "no room behind column 98 in insert mode";
}

TEST_F(MultiLine, RealKeysEditTheText)
{
    ctx().cursor_object = kText;
    queue_key(SDLK_a);
    queue_key(SDLK_b);
    queue_key(SDLK_RETURN);
    queue_key(SDLK_c, KMOD_RSHIFT);
    queue_key(SDLK_UP);
    queue_key(SDLK_LEFT);
    queue_key(SDLK_DELETE);
    queue_key(SDLK_INSERT);
    queue_key(SDLK_z);
    run_loop();
    EXPECT_EQ(record_text(), "z\nC");
    EXPECT_EQ(ctx().insert_mode, 1u);
}

TEST_F(MultiLine, CursorOutsideTheTextNeverWritesOutsideTheRecord)
{
    start("abc", 0, 0);
    const vel_text_rec next = ctx().text_recs[kTextIndex + 1];
    for (uint32_t index : {1000u, 5000u, 0xFFFFFFF0u}) {
        cursor_index() = index;
        apply(SDLK_KP_ENTER, 0);
        cursor_index() = index;
        type("x");
        ctx().insert_mode = 1 - ctx().insert_mode;
        cursor_index() = index;
        type("x");
        cursor_index() = index;
        apply(SDLK_BACKSPACE, 0);
        cursor_index() = index;
        apply(SDLK_DELETE, 0);
    }
    EXPECT_EQ(std::memcmp(&next, &ctx().text_recs[kTextIndex + 1], sizeof next), 0);
    EXPECT_EQ(ctx().text_recs[kTextIndex].text[VEL_TEXT_BYTES - 1], '\0');
}

TEST_F(MultiLine, WildCursorPositionsOnlyRead)
{
    start("abc\ndef", 0, 0);
    area().number_of_lines = 100000;
    for (uint32_t key : {SDLK_UP, SDLK_DOWN, SDLK_RIGHT, SDLK_LEFT, SDLK_BACKSPACE}) {
        area().cursor_line = 1000;
        area().cursor_column = 5000;
        apply(key, 0);
    }
    area().cursor_line = 2;
    area().cursor_column = 0;
    vel_get_position_in_stream(&ctx());
    EXPECT_EQ(ctx().final_key, 0u);
}

TEST_F(MultiLine, AnUnterminatedRecordIsCutInsideIt)
{
    std::fill(std::begin(ctx().text_recs[kTextIndex].text),
              std::end(ctx().text_recs[kTextIndex].text), 'x');
    apply(SDLK_RIGHT, 0);
    EXPECT_EQ(area().text_length, 999u);
    EXPECT_EQ(ctx().text_recs[kTextIndex].text[VEL_TEXT_BYTES - 1], '\0');
}

} // namespace
} // namespace velumo::test
