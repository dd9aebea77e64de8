// Clipping of a one-dimensional run against exclusive limits: the four
// placements (inside, cut at the start, cut at the end, cut on both sides).
#pragma once

#include <cstdint>

namespace velumo::detail {

// Where a run from `start` to `end` (both included) lies against the
// exclusive limits lo and hi, and which part of it may be drawn.
struct RunFit {
    bool start_in; // lo < start < hi
    bool end_in;   // lo < end < hi
    bool spans;    // start <= lo and end >= hi
    int32_t first; // start when it is inside, else lo + 1
    int32_t last;  // end when it is inside, else hi - 1

    // The run shows at least one usable pixel: one end inside, or both
    // beyond the limits on either side.
    constexpr bool overlaps() const { return start_in || end_in || spans; }
};

constexpr RunFit fit_run(int32_t start, int32_t end, int32_t lo, int32_t hi)
{
    RunFit fit{};
    fit.start_in = lo < start && start < hi;
    fit.end_in = lo < end && end < hi;
    fit.spans = start <= lo && end >= hi;
    // lo + 1 and hi - 1 wrap like the unsigned coordinates they come from.
    fit.first = fit.start_in ? start : static_cast<int32_t>(static_cast<uint32_t>(lo) + 1);
    fit.last = fit.end_in ? end : static_cast<int32_t>(static_cast<uint32_t>(hi) - 1);
    return fit;
}

enum class ClipCase { none, inside, cut_start, cut_end, cut_both };

// The visible part of a run of `full` source pixels along one axis.
struct Clip {
    ClipCase kind = ClipCase::none;
    int32_t dest = 0;    // first screen coordinate drawn
    uint32_t source = 0; // offset of that coordinate within the source
    uint32_t length = 0; // pixels drawn
    bool matched() const { return kind != ClipCase::none; }
};

// The four placements are tested in the order inside, cut at the start,
// cut at the end, cut on both sides; a run wholly outside matches none and
// draws nothing.  When the start is cut, the source skips what lies at or
// before lo: full - (end - lo) pixels.  A run cut on both sides shows
// hi - lo - 1 pixels, none when that is below 1.
constexpr Clip clip_run(int32_t start, int32_t end, uint32_t full, int32_t lo, int32_t hi)
{
    const RunFit fit = fit_run(start, end, lo, hi);
    Clip clip;
    if (fit.start_in && fit.end_in) {
        clip.kind = ClipCase::inside;
    } else if (fit.end_in && start <= lo) {
        clip.kind = ClipCase::cut_start;
    } else if (fit.start_in && end >= hi) {
        clip.kind = ClipCase::cut_end;
    } else if (fit.spans) {
        clip.kind = ClipCase::cut_both;
    } else {
        return clip;
    }
    clip.dest = fit.first;
    if (clip.kind == ClipCase::inside) {
        clip.length = full;
        return clip;
    }
    const uint32_t visible = static_cast<uint32_t>(fit.last) - static_cast<uint32_t>(fit.first) + 1;
    clip.length = static_cast<int32_t>(visible) < 1 ? 0 : visible;
    if (!fit.start_in)
        clip.source = full - (static_cast<uint32_t>(end) - static_cast<uint32_t>(lo));
    return clip;
}

} // namespace velumo::detail
