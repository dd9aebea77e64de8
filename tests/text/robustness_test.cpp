// Text numbers outside the text records, contexts without text tables, and
// chains whose entries lie outside the tables: treated as "none".
#include "text_fixture.hpp"

#include <string>

namespace velumo::test {
namespace {

using TextGuards = TextTest;

TEST_F(TextGuards, ATextIndexOutsideTheRecordsMeansNoText)
{
    load_form(8, 2); // text records 0..2
    set_text(1, "hello world");
    object(kTextObject).number_of_lines = 5;
    object(kTextObject).text_index = 3;
    EXPECT_EQ(vel_format_object_text(&ctx(), kTextObject), 0u);
    EXPECT_EQ(object(kTextObject).number_of_lines, 5u);

    // Painting shows the body only.
    vel_object &o = object(kTextObject);
    o.fill_r = o.fill_g = o.fill_b = 255;
    o.text_r = 255;
    fill_screen({0, 0, 255});
    vel_evoke_object(&ctx(), kTextObject);
    for (int x = 101; x < 299; x += 3)
        for (int y = 51; y < 149; y += 3)
            ASSERT_EQ(at(x, y), (vel_rgb{255, 255, 255})) << x << "," << y;

    // Loading and resetting reach the unused record 0, as text_index 0 does.
    EXPECT_EQ(vel_load_window_text(&ctx(), kTextObject, "new"), 0u);
    EXPECT_STREQ(ctx().text_recs[0].text, "new");
    EXPECT_STREQ(ctx().text_recs[1].text, "hello world");
    ctx().text_recs[0].cursor_index = 2;
    vel_reset_textobject(&ctx(), 1, kTextObject);
    EXPECT_EQ(o.text_length, 3u);
    EXPECT_EQ(ctx().text_recs[0].cursor_index, 0u);
}

// Line, column and word length come from the caller: placements that could
// write past line slot 79 of the last buffer (the block's end) are refused.
TEST_F(TextGuards, PlacementsOutsideTheLineSlotsAreRefused)
{
    load_form(8, 1); // text record 1's buffer is the last one of the block
    object(kTextObject).line_width = 10000;
    object(9).type = VEL_TYPE_CHAIN;
    object(9).dep_objs[0] = kTextObject;
    const char word[] = "word";
    struct Case {
        const char *name;
        uint32_t line, column, length;
        int32_t into_line, big;
    };
    const Case cases[] = {
        {"line 80", 80, 0, 4, -1, -1},
        {"column 100", 0, 100, 4, -1, -1},
        {"line 79 column 99", 79, 99, 4, -1, -1},
        {"two lines ahead of 78", 78, 0, 4, -1, 1},
        {"inside", 10, 0, 4, 0, 1},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        uint32_t line = c.line, column = c.column, length = c.length, position = 0, text = 1;
        EXPECT_EQ(vel_copy_word_into_line(&ctx(), kTextObject, word, &line, &column, &length, 0),
                  c.into_line);
        line = c.line, column = c.column, length = c.length;
        EXPECT_EQ(vel_copy_word_big(&ctx(), 9, &position, &text, word, &line, &column, &length, 0),
                  c.big);
    }
    uint32_t line = 80, column = 0, length = 4;
    EXPECT_EQ(vel_check_line_volume(&ctx(), kTextObject, word, &line, &column, &length), 3u);
}

TEST_F(TextGuards, WithoutTextTablesNothingReachesTextMemory)
{
    FormBuilder form;
    vel_object_file_rec &r = form.object(kTextObject);
    r.type = VEL_TYPE_TEXT;
    r.width = r.height = 100;
    load(form, nullptr, 4);
    ASSERT_EQ(ctx().text_recs, nullptr);
    vel_object &o = object(kTextObject);
    o.text_index = 1;
    o.editable = 1;
    o.text_length = 7;

    EXPECT_EQ(vel_format_object_text(&ctx(), kTextObject), 0u);
    EXPECT_EQ(vel_load_window_text(&ctx(), kTextObject, "text"), 0u);
    vel_reset_textobject(&ctx(), 1, kTextObject);
    EXPECT_EQ(o.text_length, 0u);
    uint32_t line = 0, column = 0, length = 4;
    EXPECT_EQ(vel_copy_word_into_line(&ctx(), kTextObject, "word", &line, &column, &length, 1), 0);
    EXPECT_EQ(line, 0u);

    // A chain of one member on text 1.
    vel_object &head = object(9);
    head.type = VEL_TYPE_CHAIN;
    head.dep_objs[0] = 10;
    object(10).type = VEL_TYPE_CHAIN;
    object(10).text_index = 1;
    std::string stream = "some words";
    head.stream = stream.data();
    EXPECT_EQ(vel_format_stream_to_linked_objects(&ctx(), 9), 0u);
    uint32_t position = 0, text = 1;
    EXPECT_EQ(vel_copy_word_big(&ctx(), 9, &position, &text, "word", &line, &column, &length, 0),
              -1);
    head.stream = nullptr;

    ctx().cursor_object = kTextObject;
    ctx().final_key = 'a';
    ctx().key_printable = 1;
    vel_get_text(&ctx());
    vel_get_position_in_stream(&ctx());
    vel_get_column_row(&ctx());
}

class ChainGuards : public TextTest {
protected:
    // Head 9 with member 10 on text 2, then `next` as the second entry.
    uint32_t flow(uint32_t next, uint32_t next_text)
    {
        vel_object &head = object(9);
        head.type = VEL_TYPE_CHAIN;
        head.dep_objs[0] = 10;
        head.dep_objs[1] = next;
        vel_object &m = object(10);
        m.type = VEL_TYPE_CHAIN;
        m.master = 9;
        m.text_index = 2;
        m.width = 200;
        m.line_width = 150;
        if (next != 0 && next < 17) {
            object(next).type = VEL_TYPE_CHAIN;
            object(next).text_index = next_text;
        }
        stream_.clear();
        for (int i = 0; i < 400; ++i)
            stream_ += "many words flow on ";
        head.stream = stream_.data();
        const uint32_t reached = vel_format_stream_to_linked_objects(&ctx(), 9);
        head.stream = nullptr;
        return reached;
    }
    std::string stream_;
};

TEST_F(ChainGuards, EntriesOutsideTheTablesEndTheChainLikeZero)
{
    load_form(8, 3); // objects up to 16, text records up to 3
    flow(0, 0);      // lines are not cleared: the first run leaves its own traces
    const uint32_t reference = flow(0, 0);
    const std::string last_line = line(2, 39);
    EXPECT_EQ(flow(60000, 0), reference);
    EXPECT_EQ(line(2, 39), last_line);
    // A member without text ends the chain too, after taking over the text index.
    const uint32_t without_text = flow(11, 0);
    const std::string line_without_text = line(2, 39);
    EXPECT_EQ(flow(11, 7000), without_text);
    EXPECT_EQ(line(2, 39), line_without_text);
}

} // namespace
} // namespace velumo::test
