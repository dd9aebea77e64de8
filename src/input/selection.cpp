// The selection loops: poll events, hand keys to translation and the editor,
// and hit-test left-button releases until one lands on a stop object.
#include "input/idle.hpp"
#include "input/input.hpp"
#include "model/tables.hpp"

namespace {

bool is_left_release(const SDL_MouseButtonEvent &button)
{
    return button.button == SDL_BUTTON_LEFT && button.state == SDL_RELEASED;
}

// An event that stays unconsumed is dispatched again on every pass without
// a new event; each handler below is harmless to repeat.
void dispatch(vel_context *ctx, uint32_t &result)
{
    SDL_Event &event = ctx->event;
    switch (event.type) {
    case SDL_KEYUP:
        vel_getfinalkeyinformation(ctx);
        vel_get_text(ctx);
        break;
    case SDL_MOUSEBUTTONUP:
        if (is_left_release(event.button)) {
            result = vel_test_all_objects(ctx, event.button.x, event.button.y);
            event.type = 0;
        }
        break;
    case SDL_KEYDOWN: vel_getfirstkeyinformation(ctx); break;
    default: break;
    }
}

} // namespace

namespace velumo::detail {

uint32_t run_selection(vel_context *ctx, int32_t stop_a, int32_t stop_b)
{
    uint32_t result = 0;
    IdlePause pause;
    while (result != static_cast<uint32_t>(stop_a) && result != static_cast<uint32_t>(stop_b) &&
           result != VEL_BUTTON_CLOSE) {
        pause.poll(ctx->event);
        dispatch(ctx, result);
    }
    return result;
}

} // namespace velumo::detail

extern "C" {

uint32_t vel_get_mouse_selection(vel_context *ctx, int32_t stop_a, int32_t stop_b)
{
    return velumo::detail::run_selection(ctx, stop_a, stop_b);
}

uint32_t vel_get_mono_mouse_selection(vel_context *ctx, int32_t stop)
{
    return velumo::detail::run_selection(ctx, stop, stop);
}

} // extern "C"
