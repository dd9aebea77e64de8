// The pause every event loop takes when no event is pending, so that a loop
// waiting for the user sleeps instead of occupying a whole core.
#pragma once

#include <SDL.h>

#include <algorithm>
#include <cstdint>

namespace velumo::detail {

// The pause after a quiet poll doubles up to the longest while nothing
// happens, so an idle loop wakes about a hundred times a second, and falls
// back to the first at the next event, so typing and dragging stay prompt.
// The longest pause bounds how late a new event is seen.
inline constexpr uint32_t idle_first_pause_ms = 1;
inline constexpr uint32_t idle_longest_pause_ms = 8;

// One waiting loop's pause; each loop call keeps its own.
class IdlePause {
public:
    // Fetches the next pending event into `event`.  When none is pending the
    // record keeps the event it held (loops handle that one again, as
    // before) and the caller is paused first; the order of events is
    // unchanged.
    void poll(SDL_Event &event)
    {
        if (SDL_PollEvent(&event) != 0) {
            pause_ms_ = idle_first_pause_ms;
            return;
        }
        SDL_Delay(pause_ms_);
        pause_ms_ = std::min(2 * pause_ms_, idle_longest_pause_ms);
    }

private:
    uint32_t pause_ms_ = idle_first_pause_ms;
};

} // namespace velumo::detail
