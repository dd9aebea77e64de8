// The events target: the sample form driven by a fuzzed script of SDL events
// for the selection loop and of direct calls to the editor, frames and menu.
#include "events_script.hpp"
#include "harness.hpp"
#include "sample_form.hpp"
#include "session.hpp"

#include <cstdlib>
#include <cstring>
#include <iterator>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace velumo::fuzz;
namespace sample = velumo::sample;

constexpr uint32_t kSpareObjects = 4;
constexpr uint32_t kSpareTexts = 2;
constexpr uint32_t kLoopEndingButton = 7;

// SDL's key symbols end below 512: larger values do not fit the SDLKey
// enumeration (converting them is undefined), and SDL never delivers them.
constexpr uint16_t kKeySymbolMask = 0x1FF;

SDL_Event key_event(bool down, uint16_t sym, uint16_t mod)
{
    SDL_Event e{};
    e.key.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    e.key.state = down ? SDL_PRESSED : SDL_RELEASED;
    e.key.keysym.sym = static_cast<SDLKey>(sym & kKeySymbolMask);
    e.key.keysym.mod = static_cast<SDLMod>(mod);
    return e;
}

SDL_Event button_event(bool down, uint8_t button, uint16_t x, uint16_t y)
{
    SDL_Event e{};
    e.button.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
    e.button.state = down ? SDL_PRESSED : SDL_RELEASED;
    e.button.button = button;
    e.button.x = x;
    e.button.y = y;
    return e;
}

SDL_Event motion_event(uint16_t x, uint16_t y)
{
    SDL_Event e{};
    e.motion.type = SDL_MOUSEMOTION;
    e.motion.x = x;
    e.motion.y = y;
    return e;
}

// Runs a script against the loaded sample form.
class Player {
public:
    explicit Player(vel_context &ctx) : ctx_(ctx) {}

    // Plays records until the script ends; false at its end.
    bool play_one(ScriptReader &in)
    {
        const auto op_byte = in.u8();
        if (!op_byte) return false;
        const auto op = static_cast<Operation>(*op_byte % kOperationCount);
        switch (op) {
        case Operation::KeyDown:
        case Operation::KeyUp: {
            const auto sym = in.u16(), mod = in.u16();
            if (!sym || !mod) return false;
            queue(key_event(op == Operation::KeyDown, *sym, *mod));
            return true;
        }
        case Operation::ButtonDown:
        case Operation::ButtonUp: {
            const auto button = in.u8();
            const auto x = in.u16(), y = in.u16();
            if (!button || !x || !y) return false;
            queue(button_event(op == Operation::ButtonDown, *button, *x, *y));
            return true;
        }
        case Operation::Motion: {
            const auto x = in.u16(), y = in.u16();
            if (!x || !y) return false;
            queue(motion_event(*x, *y));
            return true;
        }
        case Operation::Edit: {
            const auto object = in.u8();
            const auto key = in.u16();
            const auto printable = in.u8();
            if (!object || !key || !printable) return false;
            edit(*object % kObjectRange, *key, *printable);
            return true;
        }
        case Operation::Select: {
            const auto object = in.u8();
            if (!object) return false;
            run_loop(0);
            ctx_.window_to_activate = *object % kObjectRange;
            vel_select_window(&ctx_);
            return true;
        }
        case Operation::Frame: {
            const auto button = in.u8(), flags = in.u8();
            const auto x = in.u16(), y = in.u16();
            if (!button || !flags || !x || !y) return false;
            frame_action(*button % 8, *flags, *x, *y);
            return true;
        }
        case Operation::Menu: {
            const auto mode = in.u8();
            const auto x = in.u16(), y = in.u16();
            if (!mode || !x || !y) return false;
            menu(*mode, *x, *y);
            return true;
        }
        case Operation::Loop: {
            const auto stops = in.u8();
            if (!stops) return false;
            run_loop(*stops, true);
            return true;
        }
        }
        return false;
    }

    // Hands queued events to the selection loop, ended by a click on frame
    // button 7.  Without a hittable button 7 (no active window) the loop
    // could never end: the events are dropped instead.
    void run_loop(uint8_t stops, bool even_without_events = false)
    {
        if (pending_.empty() && !even_without_events) return;
        std::vector<SDL_Event> events;
        events.swap(pending_);
        drain_events();
        const vel_object &button = ctx_.objects[kLoopEndingButton];
        if (button.hidden != 0 || button.width < 3 || button.height < 3) return;
        const uint32_t x = button.x + button.width / 2;
        const uint32_t y = button.y + button.height / 2;
        if (x > 0xFFFF || y > 0xFFFF || vel_test_all_objects(&ctx_, x, y) != kLoopEndingButton)
            return;
        for (SDL_Event &e : events)
            SDL_PushEvent(&e);
        SDL_Event ending = button_event(false, SDL_BUTTON_LEFT, static_cast<uint16_t>(x),
                                        static_cast<uint16_t>(y));
        if (SDL_PushEvent(&ending) != 0) {
            drain_events();
            return;
        }
        const StopPair pair = kStopPairs[stops % std::size(kStopPairs)];
        vel_get_mouse_selection(&ctx_, pair.a, pair.b);
        drain_events();
    }

private:
    void queue(const SDL_Event &e)
    {
        pending_.push_back(e);
        if (pending_.size() == kMaxQueuedEvents) run_loop(0);
    }

    void edit(uint32_t object, uint16_t key, uint8_t printable)
    {
        run_loop(0);
        ctx_.cursor_object = object;
        ctx_.final_key = key;
        ctx_.key_printable = printable;
        vel_get_text(&ctx_);
    }

    void frame_action(uint32_t button, uint8_t flags, uint16_t x, uint16_t y)
    {
        run_loop(0);
        ctx_.frame_mode = (flags >> 1) & 3u;
        ctx_.window_to_activate = button;
        if ((flags & 1u) == 0) {
            vel_exa_left_pressed(&ctx_);
            return;
        }
        // Moving waits for the next left press: it is queued first.
        SDL_Event press = button_event(true, SDL_BUTTON_LEFT, x, y);
        if (button == 1) SDL_PushEvent(&press);
        vel_exa_left_released(&ctx_);
        drain_events();
    }

    // The menu loop reads the pointer: it is warped to (x, y) and a left
    // release queued there, which ends the loop if the pointer stays on it.
    void menu(uint8_t mode, uint16_t x, uint16_t y)
    {
        run_loop(0);
        SDL_WarpMouse(x, y);
        SDL_Event release = button_event(false, SDL_BUTTON_LEFT, x, y);
        SDL_PushEvent(&release);
        vel_move_out_menu(&ctx_, sample::kMenu, mode);
        drain_events();
    }

    vel_context &ctx_;
    std::vector<SDL_Event> pending_;
};

// The sample form as an application has it after start-up: loaded, its
// chain flowed, drawn, its main window active.  Made once per display; each
// input starts from copies of its context, tables and screen, which costs far
// less than loading, formatting and drawing anew.  The fonts and pictures
// stay the snapshot's: no operation opens or closes them.
class StartedForm {
public:
    StartedForm() : generation_(display_generation())
    {
        const std::string &dir = work_dir();
        const std::string form_path = dir + "/" + sample::kFormFile;
        const std::string text_path = dir + "/" + sample::kTextFile;
        vel_context &ctx = session_.ctx();
        if (vel_load_form(&ctx, kSpareObjects, kSpareTexts, form_path.c_str(), text_path.c_str()) !=
            1)
            throw std::runtime_error("velumo fuzz: the sample form does not load");
        ctx.objects[sample::kChainHead].stream = stream_.data();
        vel_draw_all_objects(&ctx, 1, 0);
        ctx.window_to_activate = sample::kMainWindow;
        vel_select_window(&ctx);
        const SDL_Surface *screen = ctx.screen;
        const auto *pixels = static_cast<const uint8_t *>(screen->pixels);
        pixels_.assign(pixels, pixels + static_cast<std::size_t>(screen->pitch) * screen->h);
    }

    bool stale() const { return generation_ != display_generation(); }
    const vel_context &ctx() const { return session_.ctx(); }
    const std::vector<uint8_t> &pixels() const { return pixels_; }

private:
    uint32_t generation_;
    Session session_;
    std::string stream_ = sample::kChainStream;
    std::vector<uint8_t> pixels_;
};

const StartedForm &started_form()
{
    static std::unique_ptr<StartedForm> form;
    if (!form || form->stale()) {
        form.reset();
        form = std::make_unique<StartedForm>();
    }
    return *form;
}

template <class T> T *copy_of(const T *records, std::size_t count)
{
    auto *copy = static_cast<T *>(std::malloc(count * sizeof(T)));
    if (!copy) throw std::bad_alloc();
    std::memcpy(copy, records, count * sizeof(T));
    return copy;
}

// One input's copy of the started form: its own context, tables, chain
// stream and screen contents; the tables and the text surface go with it.
class StartedCopy {
public:
    explicit StartedCopy(const StartedForm &form) : ctx_(std::make_unique<vel_context>())
    {
        const vel_context &original = form.ctx();
        *ctx_ = original;
        vel_context &c = *ctx_;
        c.text_surface = nullptr;
        c.text_cache = nullptr;
        c.objects = copy_of(original.objects, original.objects[0].reserved);
        const std::size_t texts = original.text_recs[0].reserved;
        c.text_recs = copy_of(original.text_recs, texts);
        c.text_bufs = copy_of(original.text_bufs, (texts + 1) * VEL_LINE_BUFFER_BYTES);
        c.objects[sample::kChainHead].stream = stream_.data();
        std::memcpy(c.screen->pixels, form.pixels().data(), form.pixels().size());
        reset_input_state();
    }
    ~StartedCopy()
    {
        SDL_FreeSurface(ctx_->text_surface);
        vel_clear_text_cache(ctx_.get());
        std::free(ctx_->objects);
        std::free(ctx_->text_recs);
        std::free(ctx_->text_bufs);
    }
    StartedCopy(const StartedCopy &) = delete;
    StartedCopy &operator=(const StartedCopy &) = delete;

    vel_context &ctx() { return *ctx_; }

private:
    std::unique_ptr<vel_context> ctx_;
    std::string stream_ = sample::kChainStream;
};

} // namespace

int velumo_fuzz_events(const uint8_t *data, size_t size)
{
    StartedCopy started(started_form());
    Player player(started.ctx());
    ScriptReader script(data, size);
    for (std::size_t record = 0; record < kMaxRecords && player.play_one(script); ++record) {
    }
    player.run_loop(0);
    return 0;
}
