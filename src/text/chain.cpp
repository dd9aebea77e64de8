// Flows a chain master's external stream through its chain members, moving
// on to the next member's line 0 whenever a member's 40 lines are full.
#include "text/formatting.hpp"
#include "text/line_breaking.hpp"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

using namespace velumo::detail;

// The chain position, member and text index a placement works with.
struct ChainCursor {
    vel_context *ctx;
    uint32_t master;
    uint32_t *chain_position;
    uint32_t *member;
    uint32_t *text_index;
    uint32_t *line;
    uint32_t *column;

    char *here() const { return line_at(ctx, *text_index, *line); }
    const vel_object &measured_by() const { return object(ctx, *member); }

    // 0 moved, 1 the chain has ended.
    int32_t move_on() const
    {
        return vel_go_to_next_chainmember(ctx, master, chain_position, member, text_index, line,
                                          column);
    }

    void next_line() const
    {
        ++*line;
        *column = 0;
        here()[0] = '\0';
    }

    // The line break behind a placed word: the next line, or from line 39 on
    // the next member.  1 after a move, -1 when the chain has ended.
    int32_t break_line(int32_t result) const
    {
        if (*line < last_line) {
            next_line();
            return result;
        }
        return move_on() == 0 ? 1 : -1;
    }
};

// Places a word wider than a whole line character by character, moving on to
// further members where needed.  The word's terminating NUL is copied as one
// more character, so whatever later joins this line stands behind an embedded
// NUL and is neither measured nor painted.
int32_t split_word_big(const ChainCursor &at, const char *word, uint32_t *word_length,
                       uint32_t break_after)
{
    bool stop = false;
    for (uint32_t copied = 0; *at.column < last_column && copied <= *word_length && !stop;) {
        if (try_char(at.ctx, at.measured_by(), at.here(), *at.column, word[copied])) {
            ++*at.column;
            ++copied;
        } else if (*at.line >= last_line) {
            stop = at.move_on() != 0;
        } else {
            ++*at.line;
            *at.column = 0;
        }
        if (*at.column >= last_column) {
            if (*at.line < last_line) {
                at.next_line();
            } else {
                const uint32_t left = *at.member;
                if (at.move_on() != 0) {
                    object(at.ctx, left).number_of_lines = *at.line;
                    stop = true;
                }
            }
        }
    }
    at.here()[*at.column] = '\0';
    *word_length = 0;
    if (break_after != 1 && *at.column < last_column) return stop ? -1 : 0;

    at.here()[*at.column] = '\0';
    int32_t result = 0;
    if (*at.line < last_line) {
        at.next_line();
    } else {
        std::puts("1142 next chain \n ");
        const uint32_t left = *at.member;
        const int32_t moved = at.move_on();
        std::printf(" next chain: %d \n \n", moved);
        if (moved == 0) {
            result = 1;
        } else {
            // The chain has ended: the last member keeps the line reached and
            // is the one reported (the member variable now names the entry
            // that ended the chain, which may be no member at all).
            vel_object &last = object(at.ctx, left);
            last.number_of_lines = *at.line;
            std::printf("1153 object %d number_of_lines %d \n \n", static_cast<int>(left),
                        static_cast<int>(last.number_of_lines));
            result = -1;
        }
    }
    return stop ? -1 : result;
}

// The flow's side of the shared walk.  It keeps its own current member, which
// only its own moves change: after a move made inside vel_copy_word_big it
// still measures spaces against, and records the line count into, the member
// it last moved to itself.  The chain position is shared, so its next move
// lands behind the member actually in use.
class ChainFlow {
public:
    ChainFlow(vel_context *ctx, uint32_t master, uint32_t first_member, WalkState &s)
        : ctx_(ctx), master_(master), member_(first_member), s_(s)
    {
    }

    bool more() const { return !s_.finished; }
    const vel_object &measured_by() const { return object(ctx_, member_); }

    void end_of_text()
    {
        if (!s_.word.empty()) place_word(0);
        s_.current_line(ctx_)[s_.column] = '\0';
        object(ctx_, member_).number_of_lines = s_.line;
        s_.finished = true;
    }

    // An empty line feed has no bound on the line index of its own: from line
    // 39 it goes on into the slots behind, up to the last reachable one.
    void line_feed()
    {
        if (!s_.in_spaces && !s_.word.empty()) {
            last_placement_ = place_word(1);
        } else if (s_.word.empty()) {
            s_.line = std::min(s_.line + 1, last_reachable_line);
            s_.column = 0;
            s_.current_line(ctx_)[0] = '\0';
        }
        if (last_placement_ == -1) s_.finished = true;
    }

    void word_before_space()
    {
        last_placement_ = place_word(0);
        if (last_placement_ == -1) s_.finished = true;
    }

    // Past line 39, reached only by a line feed on line 39, a space is dropped.
    bool drops_space() const { return s_.line > last_line; }

    void space_past_last_line()
    {
        if (!move_on()) return;
        s_.word.clear();
        start_line_with_space(ctx_, s_);
    }

    int32_t place_full_word() { return place_word(0); }

    void line_full()
    {
        s_.current_line(ctx_)[last_column] = '\0';
        if (s_.line < last_line) {
            ++s_.line;
            s_.column = 0;
        } else if (move_on()) {
            s_.word.clear();
        }
    }

private:
    int32_t place_word(uint32_t break_after)
    {
        return vel_copy_word_big(ctx_, master_, &chain_position_, &s_.text_index, s_.word.chars,
                                 &s_.line, &s_.column, &s_.word.length, break_after);
    }

    // Moves with the flow's own member; a chain that has ended finishes the flow.
    bool move_on()
    {
        const bool moved = vel_go_to_next_chainmember(ctx_, master_, &chain_position_, &member_,
                                                      &s_.text_index, &s_.line, &s_.column) == 0;
        if (!moved) s_.finished = true;
        return moved;
    }

    vel_context *ctx_;
    uint32_t master_;
    uint32_t member_;
    uint32_t chain_position_ = 0;
    int32_t last_placement_ = 0;
    WalkState &s_;
};

} // namespace

extern "C" {

int32_t vel_go_to_next_chainmember(vel_context *ctx, uint32_t master, uint32_t *chain_position,
                                   uint32_t *member, uint32_t *text_index, uint32_t *line,
                                   uint32_t *column)
{
    object(ctx, *member).number_of_lines = *line;
    ++*chain_position;
    if (*chain_position >= VEL_MAX_DEPENDENTS) return 1;
    // Each variable is overwritten before it is tested.  Numbers outside the
    // tables count as 0 and end the chain.
    *member = object_number(ctx, object(ctx, master).dep_objs[*chain_position]);
    if (*member == 0) return 1;
    const vel_object &next = object(ctx, *member);
    if (next.type != VEL_TYPE_CHAIN) return 1;
    *text_index = text_number(ctx, next.text_index);
    if (*text_index == 0) return 1;
    *line = 0;
    *column = 0;
    line_at(ctx, *text_index, 0)[0] = '\0';
    return 0;
}

int32_t vel_copy_word_big(vel_context *ctx, uint32_t master, uint32_t *chain_position,
                          uint32_t *text_index, const char *word, uint32_t *line, uint32_t *column,
                          uint32_t *word_length, uint32_t break_after)
{
    // Below line 39 a placement moves on one line at most; from 39 on it
    // moves to the next member instead.
    if (*chain_position >= VEL_MAX_DEPENDENTS || !has_text_tables(ctx) ||
        !placement_in_range(*line, *column, *word_length, 0))
        return -1;
    *text_index = text_number(ctx, *text_index);
    uint32_t member = object_number(ctx, object(ctx, master).dep_objs[*chain_position]);
    set_line_width_from_margins(object(ctx, member));

    const ChainCursor at{ctx, master, chain_position, &member, text_index, line, column};
    const uint32_t fit = vel_check_line_volume(ctx, member, word, line, column, word_length);
    if (fit == 3) return split_word_big(at, word, word_length, break_after);

    int32_t result = fit == 1 ? 1 : 0;
    if (fit == 2) {
        at.here()[*column] = '\0';
        if (*line < last_line) {
            ++*line;
            *column = 0;
        } else {
            // The word stays unplaced and keeps its length.
            if (at.move_on() != 0) return -1;
            result = 1;
        }
    }
    *column = copy_word_at(at.here(), *column, word, *word_length);
    *word_length = 0;
    if (break_after != 1 && *column < last_column) return result;
    if (fit == 1) return at.break_line(0);
    at.here()[*column] = '\0';
    return at.break_line(result);
}

uint32_t vel_format_stream_to_linked_objects(vel_context *ctx, uint32_t master)
{
    return flow_chain(ctx, master);
}

} // extern "C"

namespace velumo::detail {

uint32_t flow_chain(vel_context *ctx, uint32_t master)
{
    const vel_object &head = object(ctx, master);
    if (head.type != VEL_TYPE_CHAIN || head.stream == nullptr) return 0;
    const uint32_t first = object_number(ctx, head.dep_objs[0]);
    if (first == 0) return 0;
    const vel_object &first_member = object(ctx, first);
    const uint32_t first_text = text_number(ctx, first_member.text_index);
    if (first_member.type != VEL_TYPE_CHAIN || first_text == 0) return 0;

    set_line_width_from_text_area(ctx, first);

    const auto length = static_cast<uint32_t>(std::strlen(head.stream));
    if (length == 0) return 0;

    // The members' lines are not cleared: lines behind a member's new count
    // keep what an earlier run left there.
    WalkState s;
    s.text_index = first_text;
    ChainFlow flow(ctx, master, first, s);
    walk_text(ctx, flow, s, head.stream, length);
    return s.line;
}

} // namespace velumo::detail
