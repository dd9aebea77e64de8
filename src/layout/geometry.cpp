// Object geometry: the screen cut of top-level objects, usable sizes inside
// masters, the root of a master chain and the exclusive clip limits.
#include "layout/geometry.hpp"

#include "model/tables.hpp"

#include <algorithm>
#include <vector>

namespace velumo::detail {
namespace {

// The cut width and height of the root and whether each one is cut.
struct RootCut {
    uint32_t width;
    uint32_t height;
    bool cut_width;
    bool cut_height;
};

RootCut root_cut(vel_context *ctx, uint32_t root)
{
    const vel_object &r = object(ctx, root);
    RootCut cut{cut_width(ctx, root), cut_height(ctx, root), false, false};
    cut.cut_width = r.width > cut.width;
    cut.cut_height = r.height > cut.height;
    return cut;
}

// The master is the root: its own rectangle (or its inner area) at the
// position it has on the screen, the cut side without its margin.
Limits limits_inside_root(vel_context *ctx, const vel_object &o, uint32_t root)
{
    const vel_object &m = object(ctx, root);
    const RootCut cut = root_cut(ctx, root);
    uint32_t left = 0;
    uint32_t top = 0;
    uint32_t right = 0;
    uint32_t bottom = 0;
    if (o.clip_mode == VEL_CLIP_MARGINS) {
        left = m.x + m.margin_left - 1;
        top = m.y + m.margin_top - 1;
        right = m.x + cut.width - m.margin_right;
        bottom = m.y + cut.height - m.margin_bottom;
    } else if (o.clip_mode == VEL_CLIP_FRAME) {
        left = m.x - 1;
        top = m.y - 1;
        right = m.x + cut.width;
        bottom = m.y + cut.height;
    }
    if (cut.cut_width) right = m.x + cut.width;
    if (cut.cut_height) bottom = m.y + cut.height;
    return {as_signed(left), as_signed(right), as_signed(top), as_signed(bottom)};
}

// The inner right (or bottom) edge of a parent.  A cut root ends where the
// screen cut ends, unless its inner edge lies further left.
int32_t parent_inner_end(uint32_t pos, uint32_t size, uint32_t margin, bool root_cut,
                         uint32_t cut_size)
{
    if (!root_cut) return as_signed(pos + size - 1 - margin + 1);
    const int32_t cut_end = as_signed(cut_size + pos - 1);
    const int32_t inner_end = as_signed(pos + size - margin);
    return cut_end <= inner_end ? cut_end + 1 : inner_end;
}

// Deeper chains: every master from the direct one up to the root narrows the
// limits.  Each level's frame is taken one pixel up and left of its record.
Limits limits_in_chain(vel_context *ctx, const vel_object &o, uint32_t root)
{
    const RootCut cut = root_cut(ctx, root);
    Limits limits;
    Limits candidate;
    uint32_t cur = master_of(ctx, o);
    // A chain longer than the table runs in a cycle: the walk ends there.
    for (uint32_t steps = object_capacity(ctx); steps != 0; --steps) {
        const vel_object &c = object(ctx, cur);
        const uint32_t parent = master_of(ctx, c);
        const vel_object &p = object(ctx, parent);
        const uint32_t bx = c.x - 1;
        const uint32_t by = c.y - 1;
        const uint32_t bx2 = bx + c.width - 1;
        const uint32_t by2 = by + c.height - 1;
        if (o.clip_mode == VEL_CLIP_MARGINS) {
            candidate = {as_signed(bx + c.margin_left - 1), as_signed(bx2 - c.margin_right + 1),
                         as_signed(by + c.margin_top - 1), as_signed(by2 - c.margin_bottom + 1)};
        } else if (o.clip_mode == VEL_CLIP_FRAME) {
            candidate = {as_signed(bx - 1), as_signed(bx2 + 1), as_signed(by - 1),
                         as_signed(by2 + 1)};
        }
        const bool parent_is_root = parent == root;
        const int32_t pr = parent_inner_end(p.x, p.width, p.margin_right,
                                            parent_is_root && cut.cut_width, cut.width);
        const int32_t pb = parent_inner_end(p.y, p.height, p.margin_bottom,
                                            parent_is_root && cut.cut_height, cut.height);
        const int32_t pl = as_signed(p.x + p.margin_left - 1);
        const int32_t pt = as_signed(p.y + p.margin_top - 1);

        const int32_t left = std::max(candidate.left, pl);
        if (left > limits.left) limits.left = left;
        const int32_t right = std::min(candidate.right, pr);
        if (right < limits.right || limits.right == 0) limits.right = right;
        const int32_t top = std::max(candidate.top, pt);
        if (top > limits.top) limits.top = top;
        const int32_t bottom = std::min(candidate.bottom, pb);
        if (bottom < limits.bottom || limits.bottom == 0) limits.bottom = bottom;

        if (parent_is_root) break;
        cur = parent;
    }
    return limits;
}

} // namespace

Limits inner_limits(const vel_object &o, uint32_t right, uint32_t bottom)
{
    return {as_signed(o.x + o.margin_left - 1), as_signed(right - o.margin_right + 1),
            as_signed(o.y + o.margin_top - 1), as_signed(bottom - o.margin_bottom + 1)};
}

Limits dependent_limits(vel_context *ctx, uint32_t obj)
{
    const vel_object &o = object(ctx, obj);
    const uint32_t root = root_master(ctx, obj);
    if (master_of(ctx, o) == root) return limits_inside_root(ctx, o, root);
    return limits_in_chain(ctx, o, root);
}

Limits text_limits(vel_context *ctx, uint32_t obj)
{
    const vel_object &o = object(ctx, obj);
    const bool top_level = master_of(ctx, o) == 0;
    const uint32_t outer_right = o.x + (top_level ? cut_width(ctx, obj) : o.width) - 1;
    const uint32_t outer_bottom = o.y + (top_level ? cut_height(ctx, obj) : o.height) - 1;
    const Limits own = inner_limits(o, outer_right, outer_bottom);
    if (top_level) return own;

    const Limits master = dependent_limits(ctx, obj);
    return {own.left > master.left ? own.left : master.left,
            own.right < master.right ? own.right : master.right,
            own.top > master.top ? own.top : master.top,
            own.bottom < master.bottom ? own.bottom : master.bottom};
}

uint32_t cut_width(vel_context *ctx, uint32_t obj)
{
    const vel_object &o = object(ctx, obj);
    if (ctx->screen_width < o.x + o.width - 1) return ctx->screen_width - o.x - 2;
    return o.width;
}

uint32_t cut_height(vel_context *ctx, uint32_t obj)
{
    const vel_object &o = object(ctx, obj);
    if (ctx->screen_height < o.y + o.height - 1) return ctx->screen_height - o.y - 5;
    return o.height;
}

uint32_t root_master(vel_context *ctx, uint32_t obj)
{
    const auto up = [ctx](uint32_t n) { return master_of(ctx, object(ctx, n)); };
    if (up(obj) == 0) return 0;
    // Two walkers, one twice as fast: on a cycle in the form data they meet
    // on it and that object counts as the root, so no walk runs forever.
    uint32_t slow = obj;
    uint32_t fast = obj;
    for (;;) {
        slow = up(slow);
        if (up(slow) == 0) return slow;
        for (int step = 0; step < 2; ++step) {
            fast = up(fast);
            if (up(fast) == 0) return fast;
        }
        if (slow == fast) return slow;
    }
}

} // namespace velumo::detail

using velumo::detail::master_of;
using velumo::detail::object;

namespace {

// The objects whose sizes a dependent's usable size is built from: obj, then
// `up` of each in turn while that has a master of its own, at most `steps`
// in all (a longer chain is a cycle).  The size is worked out from the last
// one down, so a deep chain needs no deep recursion.
template <class Up> std::vector<uint32_t> chain_from(uint32_t obj, uint32_t steps, Up up)
{
    std::vector<uint32_t> chain{obj};
    for (uint32_t next = up(obj); next != 0 && chain.size() < steps; next = up(next))
        chain.push_back(next);
    return chain;
}

// One level: an object whose master offers `master_size` keeps its size when
// it ends inside the master's margin, else is cut there.
uint32_t fit_in_master(uint32_t pos, uint32_t size, uint32_t master_pos, uint32_t master_size,
                       uint32_t master_margin)
{
    const uint32_t limit = master_pos + master_size - 1 - master_margin;
    if (static_cast<int32_t>(pos + size - 1) >= static_cast<int32_t>(limit))
        return limit - (pos + 1);
    return size;
}

// The usable width of a dependent: its master's width is the master's own
// dependent width up the chain, the top-level cut width at the root.  A
// chain longer than the table is a cycle; its walk ends after `steps`
// masters, taking the last one as the root.
uint32_t dependent_width(vel_context *ctx, uint32_t obj, uint32_t steps)
{
    const auto master = [ctx](uint32_t n) { return master_of(ctx, object(ctx, n)); };
    const auto up = [&](uint32_t n) { return master(master(n)) != 0 ? master(n) : 0; };
    const std::vector<uint32_t> chain = chain_from(obj, steps, up);
    uint32_t width = velumo::detail::cut_width(ctx, master(chain.back()));
    for (auto n = chain.rbegin(); n != chain.rend(); ++n) {
        const vel_object &o = object(ctx, *n);
        const vel_object &m = object(ctx, master(*n));
        width = fit_in_master(o.x, o.width, m.x, width, m.margin_right);
    }
    return width;
}

// The height looks one level further up than the width: the master's
// height comes from the master's own master.
uint32_t dependent_height(vel_context *ctx, uint32_t obj, uint32_t steps)
{
    const auto master = [ctx](uint32_t n) { return master_of(ctx, object(ctx, n)); };
    const std::vector<uint32_t> chain =
        chain_from(obj, steps, [&](uint32_t n) { return master(master(n)); });
    uint32_t height = velumo::detail::cut_height(ctx, master(chain.back()));
    for (auto n = chain.rbegin(); n != chain.rend(); ++n) {
        const vel_object &o = object(ctx, *n);
        const vel_object &m = object(ctx, master(*n));
        height = fit_in_master(o.y, o.height, m.y, height, m.margin_bottom);
    }
    return height;
}

void store_limits(const velumo::detail::Limits &l, uint32_t *left, uint32_t *right, uint32_t *top,
                  uint32_t *bottom)
{
    *left = static_cast<uint32_t>(l.left);
    *right = static_cast<uint32_t>(l.right);
    *top = static_cast<uint32_t>(l.top);
    *bottom = static_cast<uint32_t>(l.bottom);
}

} // namespace

uint32_t vel_p_cutted_w_independent(vel_context *ctx, uint32_t obj)
{
    return velumo::detail::cut_width(ctx, obj);
}

uint32_t vel_p_cutted_h_independent(vel_context *ctx, uint32_t obj)
{
    return velumo::detail::cut_height(ctx, obj);
}

uint32_t vel_p_cutted_w_dependent(vel_context *ctx, uint32_t obj)
{
    return dependent_width(ctx, obj, velumo::detail::object_capacity(ctx));
}

uint32_t vel_p_cutted_h_dependent(vel_context *ctx, uint32_t obj)
{
    return dependent_height(ctx, obj, velumo::detail::object_capacity(ctx));
}

uint32_t vel_search_master(vel_context *ctx, uint32_t obj)
{
    return velumo::detail::root_master(ctx, obj);
}

void vel_get_borders_for_dep_object(vel_context *ctx, uint32_t obj, uint32_t *left, uint32_t *right,
                                    uint32_t *top, uint32_t *bottom)
{
    store_limits(velumo::detail::dependent_limits(ctx, obj), left, right, top, bottom);
}

void vel_get_borders_for_text(vel_context *ctx, uint32_t obj, uint32_t *left, uint32_t *right,
                              uint32_t *top, uint32_t *bottom)
{
    store_limits(velumo::detail::text_limits(ctx, obj), left, right, top, bottom);
}
