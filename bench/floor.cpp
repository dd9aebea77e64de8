// The floor's recording through link-time wrappers of SDL_FillRect,
// SDL_UpperBlit and TTF_RenderText_Blended, and its replay.
#include "floor.hpp"

#include <cstring>

extern "C" {
int __real_SDL_FillRect(SDL_Surface *dst, SDL_Rect *rect, Uint32 colour);
int __real_SDL_UpperBlit(SDL_Surface *src, SDL_Rect *srcrect, SDL_Surface *dst, SDL_Rect *dstrect);
SDL_Surface *__real_TTF_RenderText_Blended(TTF_Font *font, const char *text, SDL_Color fg);
}

namespace velumo::bench {
namespace {

// The recording under way, if any: the benchmark runs on one thread.
DisplayList *recording = nullptr;
SDL_Surface *recorded_screen = nullptr;

std::vector<uint8_t> pixels_of(const SDL_Surface *s)
{
    const auto *p = static_cast<const uint8_t *>(s->pixels);
    return {p, p + static_cast<std::size_t>(s->pitch) * static_cast<std::size_t>(s->h)};
}

void fill_background(SDL_Surface *screen, vel_rgb background)
{
    __real_SDL_FillRect(screen, nullptr,
                        SDL_MapRGB(screen->format, background.r, background.g, background.b));
}

} // namespace

DisplayList::DisplayList(vel_context &ctx, vel_rgb background, const std::function<void()> &draw)
{
    SDL_Surface *screen = ctx.screen;
    fill_background(screen, background);
    recording = this;
    recorded_screen = screen;
    draw();
    recording = nullptr;
    const std::vector<uint8_t> drawn = pixels_of(screen);

    fill_background(screen, background);
    replay(screen);
    // What fills and blits leave unexplained are the lines drawn pixel by pixel.
    const std::vector<uint8_t> replayed = pixels_of(screen);
    for (std::size_t at = 0; at + 4 <= drawn.size(); at += 4) {
        if (std::memcmp(&drawn[at], &replayed[at], 4) == 0) continue;
        uint32_t value = 0;
        std::memcpy(&value, &drawn[at], 4);
        stores_.push_back({at, value});
    }
    fill_background(screen, background);
    replay(screen);
    matches_ = screen->format->BytesPerPixel == 4 && pixels_of(screen) == drawn;
}

DisplayList::~DisplayList()
{
    for (Blit &blit : blits_)
        SDL_FreeSurface(blit.surface);
}

void DisplayList::add_fill(const Fill &fill)
{
    order_.push_back({true, fills_.size()});
    fills_.push_back(fill);
}

void DisplayList::add_blit(Blit blit)
{
    ++blit.surface->refcount;
    for (const auto &[surface, line] : lines_)
        if (surface == blit.surface) blit.line = line;
    order_.push_back({false, blits_.size()});
    blits_.push_back(std::move(blit));
}

void DisplayList::note_line(SDL_Surface *surface, Line line)
{
    lines_.emplace_back(surface, std::move(line));
}

void DisplayList::replay(SDL_Surface *screen) const
{
    for (const Op &op : order_) {
        if (op.is_fill) {
            const Fill &f = fills_[op.index];
            SDL_Rect rect = f.rect;
            __real_SDL_FillRect(screen, f.whole ? nullptr : &rect, f.colour);
        } else {
            const Blit &b = blits_[op.index];
            SDL_Rect source = b.source;
            SDL_Rect dest = b.dest;
            __real_SDL_UpperBlit(b.surface, b.has_source ? &source : nullptr, screen, &dest);
        }
    }
    auto *pixels = static_cast<uint8_t *>(screen->pixels);
    for (const Store &store : stores_)
        std::memcpy(pixels + store.offset, &store.value, 4);
}

void DisplayList::replay_rendering(SDL_Surface *screen) const
{
    for (const Op &op : order_) {
        if (op.is_fill) {
            const Fill &f = fills_[op.index];
            SDL_Rect rect = f.rect;
            __real_SDL_FillRect(screen, f.whole ? nullptr : &rect, f.colour);
            continue;
        }
        const Blit &b = blits_[op.index];
        SDL_Rect source = b.source;
        SDL_Rect dest = b.dest;
        if (b.line.font == nullptr) {
            __real_SDL_UpperBlit(b.surface, b.has_source ? &source : nullptr, screen, &dest);
            continue;
        }
        SDL_Surface *line =
            __real_TTF_RenderText_Blended(b.line.font, b.line.text.data(), b.line.colour);
        __real_SDL_UpperBlit(line, b.has_source ? &source : nullptr, screen, &dest);
        SDL_FreeSurface(line);
    }
    auto *pixels = static_cast<uint8_t *>(screen->pixels);
    for (const Store &store : stores_)
        std::memcpy(pixels + store.offset, &store.value, 4);
}

} // namespace velumo::bench

using velumo::bench::DisplayList;
using velumo::bench::recorded_screen;
using velumo::bench::recording;

extern "C" {

int __wrap_SDL_FillRect(SDL_Surface *dst, SDL_Rect *rect, Uint32 colour)
{
    if (recording != nullptr && dst == recorded_screen)
        recording->add_fill({rect ? *rect : SDL_Rect{}, colour, rect == nullptr});
    return __real_SDL_FillRect(dst, rect, colour);
}

int __wrap_SDL_UpperBlit(SDL_Surface *src, SDL_Rect *srcrect, SDL_Surface *dst, SDL_Rect *dstrect)
{
    if (recording != nullptr && dst == recorded_screen && dstrect != nullptr)
        recording->add_blit(
            {src, srcrect ? *srcrect : SDL_Rect{}, *dstrect, srcrect != nullptr, {}});
    return __real_SDL_UpperBlit(src, srcrect, dst, dstrect);
}

SDL_Surface *__wrap_TTF_RenderText_Blended(TTF_Font *font, const char *text, SDL_Color fg)
{
    SDL_Surface *surface = __real_TTF_RenderText_Blended(font, text, fg);
    if (recording != nullptr && surface != nullptr)
        recording->note_line(surface, {font, {text, text + std::strlen(text) + 1}, fg});
    return surface;
}

} // extern "C"
