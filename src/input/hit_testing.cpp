// Hit testing: which object lies under a screen point, from the frame buttons
// through the active window and its dependents to the other windows and the desktop.
#include "input/input.hpp"
#include "layout/geometry.hpp"
#include "model/tables.hpp"

namespace {

using velumo::detail::DependentWalk;
using velumo::detail::loaded_object_count;
using velumo::detail::master_of;
using velumo::detail::object;

// Points arrive unsigned from the events and are compared signed.
bool contains(vel_context *ctx, uint32_t n, uint32_t x, uint32_t y)
{
    return velumo::detail::contains_point(ctx, n, static_cast<int32_t>(x), static_cast<int32_t>(y));
}

// Dependents drawn as a frame around their master (the fitted styles without
// a shadow) let clicks through, and so do hidden objects and objects
// without an area.  A fitted shadow is hit.
bool hit_testable_dependent(const vel_object &d)
{
    return velumo::detail::is_visible(d) && d.border_style != VEL_BORDER_FITTED &&
           d.border_style != VEL_BORDER_FITTED_FRAME;
}

// The innermost dependent of obj under the point, or 0.  The first hit in
// list order wins (earlier entries lie on top); its own dependents are tried
// next, in the same walk.
uint32_t test_dependents(vel_context *ctx, DependentWalk &walk, uint32_t obj, uint32_t x,
                         uint32_t y)
{
    uint32_t hit = 0;
    velumo::detail::for_each_dependent(ctx, walk, obj, [&](uint32_t d) {
        if (!hit_testable_dependent(object(ctx, d)) || !contains(ctx, d, x, y)) return true;
        const uint32_t inner = test_dependents(ctx, walk, d, x, y);
        hit = inner != 0 ? inner : d;
        return false;
    });
    return hit;
}

// The innermost dependent of n under the point, or n itself.
uint32_t innermost(vel_context *ctx, uint32_t n, uint32_t x, uint32_t y)
{
    const uint32_t dependent = vel_test_dep_objs(ctx, n, x, y);
    return dependent != 0 ? dependent : n;
}

uint32_t test_frame_buttons(vel_context *ctx, uint32_t x, uint32_t y)
{
    for (uint32_t n = 1; n <= VEL_FRAME_BUTTONS && n <= loaded_object_count(ctx); ++n)
        if (object(ctx, n).hidden == 0 && contains(ctx, n, x, y)) return n;
    return 0;
}

// Background windows are tried from the highest number down, so a later
// window wins where two overlap; the window stack is not consulted.  Only
// the window itself is returned: a first click on it never reaches its
// dependents.
uint32_t test_background_windows(vel_context *ctx, uint32_t x, uint32_t y)
{
    for (uint32_t n = loaded_object_count(ctx); n > VEL_FRAME_BUTTONS; --n) {
        const vel_object &o = object(ctx, n);
        if (o.hidden == 0 && o.type == VEL_TYPE_WINDOW && contains(ctx, n, x, y)) return n;
    }
    return 0;
}

// Free-standing objects are tried upward, the other way round from windows.
uint32_t test_desktop_objects(vel_context *ctx, uint32_t x, uint32_t y)
{
    const uint32_t count = loaded_object_count(ctx);
    for (uint32_t n = VEL_FRAME_BUTTONS + 1; n <= count; ++n) {
        const vel_object &o = object(ctx, n);
        if (o.hidden == 0 && o.type != VEL_TYPE_WINDOW && master_of(ctx, o) == 0 &&
            contains(ctx, n, x, y))
            return innermost(ctx, n, x, y);
    }
    return 0;
}

} // namespace

namespace velumo::detail {

bool contains_point(vel_context *ctx, uint32_t obj, int32_t x, int32_t y)
{
    const vel_object &o = object(ctx, obj);
    if (master_of(ctx, o) != 0) {
        const Limits limits = dependent_limits(ctx, obj);
        const bool visible =
            limits.left < x && x < limits.right && limits.top < y && y < limits.bottom;
        if (!visible) return false;
    }
    return as_signed(o.x) < x && x < as_signed(o.x + o.width) && as_signed(o.y) < y &&
           y < as_signed(o.y + o.height);
}

} // namespace velumo::detail

extern "C" {

uint32_t vel_in_object(vel_context *ctx, uint32_t obj, int32_t x, int32_t y)
{
    return velumo::detail::contains_point(ctx, obj, x, y) ? 1 : 0;
}

uint32_t vel_test_dep_objs(vel_context *ctx, uint32_t obj, uint32_t x, uint32_t y)
{
    DependentWalk walk(ctx);
    return test_dependents(ctx, walk, obj, x, y);
}

uint32_t vel_test_all_objects(vel_context *ctx, uint32_t x, uint32_t y)
{
    if (const uint32_t button = test_frame_buttons(ctx, x, y)) return button;
    // The active window is tried whatever its hidden flag says.
    const uint32_t active = velumo::detail::active_window(ctx);
    if (contains(ctx, active, x, y)) return innermost(ctx, active, x, y);
    if (const uint32_t window = test_background_windows(ctx, x, y)) return window;
    return test_desktop_objects(ctx, x, y);
}

} // extern "C"
