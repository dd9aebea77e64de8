// The pause every event loop takes when no event is pending, so that a loop
// waiting for the user sleeps instead of occupying a whole core.
#pragma once

#include <SDL.h>

#include <cstdint>

namespace velumo::detail {

// Long enough to leave the processor idle, short enough that no event
// waits noticeably before it is handled.
inline constexpr uint32_t idle_pause_ms = 1;

// Fetches the next pending event into `event`.  When none is pending the
// record keeps the event it held (loops handle that one again, as before)
// and the caller is paused briefly first; the order of events is unchanged.
inline void poll_event_or_pause(SDL_Event &event)
{
    if (SDL_PollEvent(&event) == 0) SDL_Delay(idle_pause_ms);
}

} // namespace velumo::detail
