// Chained text flow: members, moving on when 40 lines are full, the flow's own
// member against the shared chain position, the end of the chain, the
// embedded NUL of split words and the debug lines.
#include "text_fixture.hpp"

#include <cstdlib>
#include <fstream>
#include <random>

namespace velumo::test {
namespace {

constexpr uint32_t kWide = 5000;

class Chain : public TextTest {
protected:
    static constexpr uint32_t kMaster = kFirstSpareObject; // 9
    static constexpr uint32_t kFirstMember = kMaster + 1;  // 10, 11, 12 ...
    static constexpr uint32_t kFirstMemberText = 2;        // their text records 2, 3, 4 ...
    static constexpr uint32_t kUntouched = 77;

    // A master with `members` members, each `line_width` wide.  With
    // `record_behind` one more text record follows the members' records;
    // without it the last member's buffer is the last of the block.
    void make_chain(uint32_t members, uint32_t line_width, bool record_behind = true)
    {
        load_form(8, kFirstMemberText + members - (record_behind ? 0 : 1));
        vel_object &m = object(kMaster);
        m.type = VEL_TYPE_CHAIN;
        m.x = 300;
        m.y = 50;
        m.width = 300;
        m.height = 400;
        for (uint32_t k = 0; k < members; ++k) {
            vel_object &o = object(member(k));
            o.type = VEL_TYPE_CHAIN;
            o.text_index = kFirstMemberText + k;
            o.master = kMaster;
            o.x = 310;
            o.y = 60 + 110 * k;
            o.width = 200;
            o.height = 100;
            o.margin_left = o.margin_right = o.margin_top = o.margin_bottom = 5;
            o.line_width = line_width;
            o.number_of_lines = kUntouched;
            m.dep_objs[k] = member(k);
        }
    }
    static uint32_t member(uint32_t k) { return kFirstMember + k; }
    vel_object &member_object(uint32_t k) { return object(member(k)); }
    uint32_t member_text(uint32_t k) { return kFirstMemberText + k; }
    std::string member_line(uint32_t k, uint32_t n) { return line(member_text(k), n); }

    uint32_t flow(const std::string &stream)
    {
        stream_ = stream;
        object(kMaster).stream = stream_.data();
        return vel_format_stream_to_linked_objects(&ctx(), kMaster);
    }

    static std::string numbered_lines(int from, int to)
    {
        std::string s;
        for (int k = from; k < to; ++k)
            s += "w" + std::to_string(k) + "\n";
        return s;
    }
    // Lines that fill to column 99: 33 times "aa ".
    static std::string full_lines(int count)
    {
        std::string s;
        for (int k = 0; k < 33 * count; ++k)
            s += "aa ";
        return s;
    }

private:
    std::string stream_;
};

TEST_F(Chain, NothingIsFlowedWithoutAFirstMember)
{
    make_chain(1, kWide);
    fill_buffer(member_text(0), 'X');
    EXPECT_EQ(flow(""), 0u);

    object(kMaster).type = VEL_TYPE_TEXT;
    EXPECT_EQ(flow("text"), 0u);
    object(kMaster).type = VEL_TYPE_CHAIN;
    member_object(0).type = VEL_TYPE_TEXT;
    EXPECT_EQ(flow("text"), 0u);
    member_object(0).type = VEL_TYPE_CHAIN;
    member_object(0).text_index = 0;
    EXPECT_EQ(flow("text"), 0u);
    member_object(0).text_index = member_text(0);
    object(kMaster).dep_objs[0] = 0;
    EXPECT_EQ(flow("text"), 0u);
    object(kMaster).dep_objs[0] = member(0);
    object(kMaster).stream = nullptr;
    EXPECT_EQ(vel_format_stream_to_linked_objects(&ctx(), kMaster), 0u);

    EXPECT_EQ(raw(member_text(0), 0, 2), "XX");
    EXPECT_EQ(member_object(0).number_of_lines, kUntouched);
}

TEST_F(Chain, StreamFromAFileThatFitsTheFirstMember)
{
    make_chain(2, kWide);
    std::strcpy(line_ptr(member_text(0), 5), "old");
    const std::string path = dir_.path("stream.txt");
    std::ofstream(path, std::ios::binary) << "one two\nthree";
    std::unique_ptr<char, decltype(&std::free)> stream(vel_read_external_stream(path.c_str()),
                                                       &std::free);
    ASSERT_TRUE(stream);
    object(kMaster).stream = stream.get();
    EXPECT_EQ(vel_format_stream_to_linked_objects(&ctx(), kMaster), 1u);
    object(kMaster).stream = nullptr;
    EXPECT_EQ(member_line(0, 0), "one two");
    EXPECT_EQ(member_line(0, 1), "three");
    EXPECT_EQ(member_object(0).number_of_lines, 1u);
    EXPECT_EQ(member_object(1).number_of_lines, kUntouched);
    // Lines behind the new count keep what was there.
    EXPECT_EQ(member_line(0, 5), "old");
}

TEST_F(Chain, LineWidthsOfTheMembers)
{
    make_chain(2, 0);
    EXPECT_EQ(flow("a"), 0u);
    // Text area 314 .. 505 inside the master: 190 usable pixels.
    EXPECT_EQ(member_object(0).line_width, 190u);
    EXPECT_EQ(member_object(1).line_width, 0u);

    uint32_t position = 1, text = member_text(1), ln = 0, col = 0, len = 1;
    EXPECT_EQ(vel_copy_word_big(&ctx(), kMaster, &position, &text, "b", &ln, &col, &len, 0), 1);
    EXPECT_EQ(member_object(1).line_width, 190u); // width minus the side margins
    EXPECT_EQ(member_line(1, 0), "b");
    EXPECT_EQ(len, 0u);
}

TEST_F(Chain, FullMemberGoesOnInTheNextOne)
{
    make_chain(2, kWide);
    EXPECT_EQ(flow(full_lines(40) + "end"), 0u);
    EXPECT_EQ(member_line(0, 0), full_lines(1).substr(0, 99));
    EXPECT_EQ(member_line(0, 39).size(), 99u);
    EXPECT_EQ(member_line(1, 0), "end");
    EXPECT_EQ(member_object(0).number_of_lines, 39u);
    EXPECT_EQ(member_object(1).number_of_lines, 0u);
}

TEST_F(Chain, SpaceThatDoesNotFitOnLine39MovesOn)
{
    const std::string word = "ab";
    make_chain(2, 0);
    const uint32_t lw = uwidth(word);
    member_object(0).line_width = member_object(1).line_width = lw;
    // Words land on the odd lines, their spaces start the even ones.
    std::string stream = "\n";
    for (int k = 0; k < 21; ++k)
        stream += word + " ";
    EXPECT_EQ(flow(stream), 2u);
    EXPECT_EQ(member_line(0, 38), " ");
    EXPECT_EQ(member_line(0, 39), word);
    EXPECT_EQ(member_line(1, 0), " ");
    EXPECT_EQ(member_line(1, 1), word);
    EXPECT_EQ(member_object(0).number_of_lines, 39u);
    EXPECT_EQ(member_object(1).number_of_lines, 2u);
}

TEST_F(Chain, FlowsOwnMoveLandsBehindTheMemberInUse)
{
    make_chain(3, kWide);
    // The first move happens inside a placement, the second is the flow's.
    EXPECT_EQ(flow(numbered_lines(0, 40) + full_lines(40) + "x\ny"), 1u);
    EXPECT_EQ(member_line(0, 39), "w39");
    EXPECT_EQ(member_line(1, 0), full_lines(1).substr(0, 99));
    EXPECT_EQ(member_line(1, 39).size(), 99u);
    EXPECT_EQ(member_line(2, 0), "x");
    EXPECT_EQ(member_line(2, 1), "y");
    EXPECT_EQ(member_object(0).number_of_lines, 39u);
    EXPECT_EQ(member_object(1).number_of_lines, kUntouched);
    EXPECT_EQ(member_object(2).number_of_lines, 1u);
}

TEST_F(Chain, EndOfTheChainCutsTheRest)
{
    make_chain(2, kWide);
    fill_buffer(member_text(2), 'X');
    EXPECT_EQ(flow(numbered_lines(0, 85)), 39u);
    EXPECT_EQ(member_line(1, 0), "w40");
    EXPECT_EQ(member_line(1, 39), "w79");
    EXPECT_EQ(member_object(1).number_of_lines, 39u);
    EXPECT_EQ(raw(member_text(2), 0, 2), "XX");
}

TEST_F(Chain, SplitWordHidesWhatFollowsOnItsLine)
{
    make_chain(1, 0);
    const uint32_t lw = uwidth("aaaaaa");
    ASSERT_GT(width("aaaaaaa"), static_cast<int>(lw));
    ASSERT_LE(width("aaaa") + width("i"), static_cast<int>(lw));
    member_object(0).line_width = lw;
    EXPECT_EQ(flow("aaaaaaaaaa i"), 1u);
    EXPECT_EQ(member_line(0, 0), "aaaaaa");
    EXPECT_EQ(raw(member_text(0), 1, 8), std::string("aaaa\0 i\0", 8));
    EXPECT_EQ(member_line(0, 1), "aaaa");
}

using ChainDebug = Chain;

// A word wider than "aaaa", split over lines 38 and 39 and ended by a line feed.
const std::string split_on_line_39 = std::string(38, '\n') + "aaaaaaaa\n";

TEST_F(ChainDebug, LineBreakAfterASplitWordOnTheLastMember)
{
    make_chain(2, uwidth("aaaa"));
    ASSERT_GT(width("aaaaa"), static_cast<int>(uwidth("aaaa")));
    member_object(1).text_index = 0;
    // The report names the last member, whatever entry ended the chain: 0
    // behind it, or a member without a text, which is left alone.
    for (uint32_t ended_by : {0u, member(1)}) {
        object(kMaster).dep_objs[1] = ended_by;
        member_object(0).number_of_lines = object(ended_by).number_of_lines = kUntouched;
        OutputCapture out;
        EXPECT_EQ(flow(split_on_line_39), 39u);
        EXPECT_EQ(out.finish(), "1142 next chain \n \n next chain: 1 \n \n1153 object " +
                                    std::to_string(member(0)) + " number_of_lines 39 \n \n");
        EXPECT_EQ(member_line(0, 38), "aaaa");
        EXPECT_EQ(member_line(0, 39), "aaaa");
        EXPECT_EQ(member_object(0).number_of_lines, 39u);
        EXPECT_EQ(object(ended_by).number_of_lines, kUntouched);
    }
}

TEST_F(ChainDebug, SuccessfulMoveAfterASplitWord)
{
    make_chain(2, uwidth("aaaa"));
    OutputCapture out;
    EXPECT_EQ(flow(split_on_line_39 + "i"), 0u);
    EXPECT_EQ(out.finish(), "1142 next chain \n \n next chain: 0 \n \n");
    EXPECT_EQ(member_line(1, 0), "i");
}

TEST_F(Chain, LineFeedsGoOnBehindLine39UpToTheSpareBuffer)
{
    // The member's buffer is the last of the block.
    make_chain(1, kWide, false);
    EXPECT_EQ(flow(std::string(100, '\n') + "x"), 79u);
    EXPECT_EQ(line(member_text(0) + 1, 39), "x");
    EXPECT_EQ(member_object(0).number_of_lines, 79u);
}

TEST_F(Chain, ASpaceBehindLine39IsDropped)
{
    make_chain(2, kWide);
    std::string stream;
    for (int k = 0; k < 39; ++k)
        stream += "a\n";
    EXPECT_EQ(flow(stream + "\n b"), 40u);
    EXPECT_EQ(line(member_text(0) + 1, 0), "b") << "line slot 40 of the first member";
}

TEST_F(Chain, MovingToTheNextMember)
{
    make_chain(2, kWide);
    std::strcpy(line_ptr(member_text(1), 0), "old");
    uint32_t position = 0, current = member(0), text = member_text(0), ln = 17, col = 5;
    auto move = [&] {
        return vel_go_to_next_chainmember(&ctx(), kMaster, &position, &current, &text, &ln, &col);
    };
    EXPECT_EQ(move(), 0);
    EXPECT_EQ(member_object(0).number_of_lines, 17u);
    EXPECT_EQ(position, 1u);
    EXPECT_EQ(current, member(1));
    EXPECT_EQ(text, member_text(1));
    EXPECT_EQ(ln + col, 0u);
    EXPECT_EQ(member_line(1, 0), "");

    // The member is overwritten before it is tested; the text index only
    // for objects of the chain's type.
    ln = 9;
    EXPECT_EQ(move(), 1);
    EXPECT_EQ(member_object(1).number_of_lines, 9u);
    EXPECT_EQ(position, 2u);
    EXPECT_EQ(current, 0u);
    object(kMaster).dep_objs[3] = kTextObject;
    EXPECT_EQ(move(), 1);
    EXPECT_EQ(current, kTextObject);
    EXPECT_EQ(text, member_text(1));
    position = VEL_MAX_DEPENDENTS - 1;
    EXPECT_EQ(move(), 1);
    EXPECT_EQ(current, kTextObject);

    // A word that needs the next line on line 39 of the last member stays
    // unplaced and keeps its length.
    std::strcpy(line_ptr(member_text(1), 39), "abc");
    member_object(1).line_width = uwidth("abc");
    position = 1;
    ln = 39;
    col = 3;
    uint32_t len = 2;
    EXPECT_EQ(vel_copy_word_big(&ctx(), kMaster, &position, &text, "de", &ln, &col, &len, 0), -1);
    EXPECT_EQ(len, 2u);
    EXPECT_EQ(ln, 39u);
    EXPECT_EQ(member_line(1, 39), "abc");
    position = VEL_MAX_DEPENDENTS;
    EXPECT_EQ(vel_copy_word_big(&ctx(), kMaster, &position, &text, "de", &ln, &col, &len, 0), -1);
}

// Random texts of words, spaces, line feeds and long runs, in narrow and wide
// objects: every write stays inside the line buffers (checked by the
// sanitizer build) and the line indexes stay within their documented range.
std::string random_text(std::mt19937 &random, std::size_t length)
{
    static constexpr const char alphabet[] = "aaaaaWi   \n\n";
    std::uniform_int_distribution<std::size_t> pick(0, sizeof alphabet - 2);
    std::uniform_int_distribution<int> run(0, 30);
    std::string text;
    while (text.size() < length) {
        const char ch = alphabet[pick(random)];
        text.append(ch == 'W' ? static_cast<std::size_t>(run(random)) * 5 : 1,
                    ch == 'W' ? 'm' : ch);
    }
    return text.substr(0, length);
}

using Robustness = Chain;

TEST_F(Robustness, RandomStreamsStayInsideTheBlock)
{
    make_chain(3, kWide, false);
    std::mt19937 random(20240611);
    std::uniform_int_distribution<uint32_t> widths(1, 400);
    for (int round = 0; round < 150; ++round) {
        for (uint32_t k = 0; k < 3; ++k)
            member_object(k).line_width = widths(random);
        OutputCapture quiet;
        const uint32_t last = flow(random_text(random, 6000));
        EXPECT_LE(last, 79u) << round;
    }
}

TEST_F(Robustness, RandomTextsInTheLastBufferStayInsideTheBlock)
{
    load_form();
    std::mt19937 random(7);
    std::uniform_int_distribution<uint32_t> widths(1, 400);
    for (int round = 0; round < 150; ++round) {
        const uint32_t last = format(random_text(random, 999), widths(random));
        EXPECT_LE(last, 40u) << round;
    }
}

} // namespace
} // namespace velumo::test
