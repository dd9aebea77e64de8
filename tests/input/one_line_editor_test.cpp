// The editor on one-line entry fields: limits of 64 and max_chars, insert
// and overwrite, the cursor keys, sideways scrolling and the redraw.
#include "input_fixture.hpp"

namespace velumo::test {
namespace {

class OneLine : public InputTest {
protected:
    void SetUp() override
    {
        InputTest::SetUp();
        load_form();
        ctx().cursor_object = kField;
    }
    vel_object &field() { return object(kField); }
    void set_label(const std::string &text, uint32_t column)
    {
        set_string(field().label, text);
        field().cursor_column = column;
    }
    // The pixel x of the text start with no scrolling.
    int32_t origin() { return text_area(kField).left + 1; }
    int32_t cursor_x() { return static_cast<int32_t>(field().cursor_x); }
    int32_t scroll_x() { return static_cast<int32_t>(field().scroll_x); }
};

TEST_F(OneLine, TypingStopsAtMaxChars)
{
    field().max_chars = 10;
    type("abcdefghijk");
    EXPECT_STREQ(field().label, "abcdefghij");
    EXPECT_EQ(field().text_length, 10u);
    EXPECT_EQ(field().cursor_column, 10u);
    EXPECT_EQ(ctx().final_key, 0u) << "a dropped key is cleared too";
}

TEST_F(OneLine, TypingStopsAtSixtyFourWhateverMaxChars)
{
    field().max_chars = 100;
    type(std::string(70, 'i'));
    EXPECT_EQ(std::string(field().label), std::string(64, 'i'));
    EXPECT_EQ(field().cursor_column, 64u);
}

TEST_F(OneLine, MaxCharsZeroBlocksInsertButNotOverwrite)
{
    field().max_chars = 0;
    type("abc");
    EXPECT_STREQ(field().label, "");
    ctx().insert_mode = 1;
    type(std::string(70, 'i'));
    EXPECT_EQ(std::string(field().label), std::string(64, 'i'));
}

TEST_F(OneLine, InsertMovesTheRestOn)
{
    set_label("abc", 1);
    type("x");
    EXPECT_STREQ(field().label, "axbc");
    EXPECT_EQ(field().cursor_column, 2u);
    EXPECT_EQ(field().text_length, 4u);
    EXPECT_EQ(cursor_x(), origin() + width_of("ax"));
}

TEST_F(OneLine, OverwriteReplacesAndAppendsAgainOnTheLastCharacter)
{
    ctx().insert_mode = 1;
    set_label("abc", 0);
    type("x");
    EXPECT_STREQ(field().label, "xbc");
    EXPECT_EQ(field().cursor_column, 1u);
    set_label("abc", 2);
    type("x");
    EXPECT_STREQ(field().label, "abxx");
    EXPECT_EQ(field().cursor_column, 4u);
    EXPECT_EQ(field().text_length, 4u);
    set_label("abc", 3);
    type("y");
    EXPECT_STREQ(field().label, "abcy") << "at the end it appends once";
}

TEST_F(OneLine, OverwriteObeysMaxChars)
{
    ctx().insert_mode = 1;
    field().max_chars = 3;
    set_label("abc", 3);
    type("x");
    EXPECT_STREQ(field().label, "abc");
    set_label("abc", 2);
    type("x");
    EXPECT_STREQ(field().label, "abxx") << "the column, not the length, is limited";
}

TEST_F(OneLine, TypingPutsTheCursorBehindTheText)
{
    type("Wolf");
    EXPECT_EQ(cursor_x(), origin() + width_of("Wolf"));
    EXPECT_EQ(field().cursor_y, 0u) << "typing on the same line leaves the y alone";
}

TEST_F(OneLine, TypingScrollsSidewaysToKeepTheCursorInside)
{
    field().width = 60;
    const Area area = text_area(kField);
    std::string typed;
    for (int i = 0; i < 12; ++i) {
        type("m");
        typed += 'm';
        EXPECT_LT(cursor_x(), area.right);
        EXPECT_GT(cursor_x(), area.left);
        // The cursor stays right behind the last character.
        EXPECT_EQ(area.left + scroll_x() + 1 + width_of(typed), cursor_x()) << i;
    }
    EXPECT_LT(scroll_x(), 0);
}

TEST_F(OneLine, BackspaceRemovesTheCharacterBeforeTheCursor)
{
    set_label("abc", 2);
    apply(SDLK_BACKSPACE, 0);
    EXPECT_STREQ(field().label, "ac");
    EXPECT_EQ(field().cursor_column, 1u);
    EXPECT_EQ(field().text_length, 2u);
    EXPECT_EQ(cursor_x(), origin() + width_of("a"));
    EXPECT_EQ(field().cursor_y, static_cast<uint32_t>(text_area(kField).top + 1));
    set_label("abc", 0);
    apply(SDLK_BACKSPACE, 0);
    EXPECT_STREQ(field().label, "abc");
    set_label("abc", 4);
    apply(SDLK_BACKSPACE, 0);
    EXPECT_STREQ(field().label, "abc") << "a column behind the text";
}

TEST_F(OneLine, BackspaceInAScrolledFieldScrollsBackNotPastTheStart)
{
    field().width = 60;
    type("mmmmmmmm");
    const int32_t scrolled = scroll_x();
    ASSERT_LT(scrolled, 0);
    const int32_t cursor = cursor_x();
    apply(SDLK_BACKSPACE, 0);
    const int32_t x = text_area(kField).left + scrolled + 1 + width_of("mmmmmmm");
    EXPECT_EQ(scroll_x(), std::min(0, scrolled + cursor - x));
    EXPECT_EQ(cursor_x(), cursor) << "the cursor stays where it was drawn";
    for (int i = 0; i < 7; ++i)
        apply(SDLK_BACKSPACE, 0);
    EXPECT_STREQ(field().label, "");
    EXPECT_EQ(scroll_x(), 0);
}

TEST_F(OneLine, DeleteRemovesTheCharacterAtTheCursor)
{
    set_label("abc", 1);
    apply(SDLK_DELETE, 0);
    EXPECT_STREQ(field().label, "ac");
    EXPECT_EQ(field().cursor_column, 1u);
    EXPECT_EQ(field().text_length, 2u);
    EXPECT_EQ(cursor_x(), origin() + width_of("a"));
    set_label("abc", 3);
    apply(SDLK_DELETE, 0);
    EXPECT_STREQ(field().label, "abc");
}

TEST_F(OneLine, LeftAndRightMoveOneCharacter)
{
    set_label("abc", 0);
    apply(SDLK_RIGHT, 0);
    EXPECT_EQ(field().cursor_column, 1u);
    EXPECT_EQ(cursor_x(), origin() + width_of("a"));
    field().cursor_column = 3;
    apply(SDLK_RIGHT, 0);
    EXPECT_EQ(field().cursor_column, 3u) << "the end of the field";
    apply(SDLK_LEFT, 0);
    EXPECT_EQ(field().cursor_column, 2u);
    EXPECT_EQ(cursor_x(), origin() + width_of("ab"));
    field().cursor_column = 1;
    apply(SDLK_LEFT, 0);
    EXPECT_EQ(field().cursor_column, 0u);
    EXPECT_EQ(cursor_x(), origin());
    apply(SDLK_LEFT, 0);
    EXPECT_EQ(field().cursor_column, 0u);
}

TEST_F(OneLine, RightNeverScrolls)
{
    set_label("abc", 0);
    field().scroll_x = 400;
    field().cursor_x = 77;
    apply(SDLK_RIGHT, 0);
    EXPECT_EQ(field().cursor_column, 1u);
    EXPECT_EQ(field().cursor_x, 77u);
    EXPECT_EQ(field().scroll_x, 400u);
}

TEST_F(OneLine, LeftAtTheAreaEdgeScrollsInstead)
{
    set_label("abc", 1);
    field().scroll_x = static_cast<uint32_t>(-20);
    field().cursor_x = 70;
    apply(SDLK_LEFT, 0);
    const int32_t x = text_area(kField).left - 20 + 1;
    EXPECT_EQ(scroll_x(), -20 + (70 - x));
    EXPECT_EQ(field().cursor_x, 70u);
}

TEST_F(OneLine, InsertTogglesTheMode)
{
    apply(SDLK_INSERT, 0);
    EXPECT_EQ(ctx().insert_mode, 1u);
    apply(SDLK_INSERT, 0);
    EXPECT_EQ(ctx().insert_mode, 0u);
}

TEST_F(OneLine, UpDownAndEnterDoNothingButAreCleared)
{
    set_label("abc", 1);
    for (uint32_t key : {SDLK_UP, SDLK_DOWN, SDLK_KP_ENTER}) {
        apply(key, 0);
        EXPECT_STREQ(field().label, "abc");
        EXPECT_EQ(field().cursor_column, 1u);
        EXPECT_EQ(ctx().final_key, 0u);
    }
}

TEST_F(OneLine, CodesAboveTwoHundredFiftyFiveAreNotTyped)
{
    apply(321, 1);
    apply(0xFFFFFFA7u, 1);
    EXPECT_STREQ(field().label, "");
    apply('a', 0);
    EXPECT_STREQ(field().label, "") << "not printable";
}

TEST_F(OneLine, NonEditableCursorObjectKeepsTheKey)
{
    field().type = VEL_TYPE_LABEL;
    set_label("abc", 1);
    apply('x', 1);
    EXPECT_STREQ(field().label, "abc");
    EXPECT_EQ(ctx().final_key, static_cast<uint32_t>('x'));
    EXPECT_EQ(ctx().key_printable, 1u);
    ctx().cursor_object = 0;
    vel_get_text(&ctx());
    EXPECT_EQ(ctx().final_key, static_cast<uint32_t>('x'));
}

TEST_F(OneLine, WithoutAFontWidthsAreZero)
{
    field().font_choice = 2;
    type("abc");
    EXPECT_STREQ(field().label, "abc");
    EXPECT_EQ(cursor_x(), origin());
}

TEST_F(OneLine, TheActiveWindowIsRedrawnWithTheCursor)
{
    field().fill_r = field().fill_g = field().fill_b = 255;
    field().text_r = 255;
    field().cursor_y = static_cast<uint32_t>(text_area(kField).top + 1);
    type("ab");
    const vel_rgb red{255, 0, 0};
    EXPECT_EQ(at(cursor_x(), static_cast<int>(field().cursor_y) + 3), red);
}

TEST_F(OneLine, NumericFieldTakesDigitKeysOnly)
{
    field().type = VEL_TYPE_NUMERIC_ENTRY;
    queue_key(SDLK_1);
    queue_key(SDLK_a);
    queue_key(SDLK_2);
    queue_key(SDLK_KP3); // keypad digits give no code at all
    queue_key(SDLK_1, KMOD_LSHIFT);
    queue_key(SDLK_BACKSPACE);
    queue_key(SDLK_9);
    run_loop();
    EXPECT_STREQ(field().label, "129");
}

TEST_F(OneLine, AnUnterminatedLabelIsCutInsideItsField)
{
    std::fill(std::begin(field().label), std::end(field().label), 'x');
    field().cursor_column = 66;
    ctx().insert_mode = 1;
    type("yyyy");
    EXPECT_EQ(field().label[VEL_STRING_BYTES - 1], '\0');
    EXPECT_EQ(field().text_length, 67u);
    EXPECT_EQ(field().label[66], 'x') << "column 66 is beyond 64";
}

} // namespace
} // namespace velumo::test
