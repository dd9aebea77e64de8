// The cache of rendered text lines: kept in the context, bounded in bytes,
// least recently used lines out first, cleared with the fonts it drew with.
#pragma once

#include "velumo.h"

#include <cstddef>
#include <string_view>

namespace velumo::detail {

struct CachedLine;

// One line of text in one font and colour, measured on construction and
// rendered on demand, through the context's cache unless that keeps nothing.
// The text must stay unchanged while the line is in use, and one line is
// done with before the next is made.
class TextLine {
public:
    TextLine(vel_context *ctx, TTF_Font *font, std::string_view text, SDL_Color colour);

    // The width TTF_SizeText gives the text (0 when it fails).
    int width() const { return width_; }
    // The rendered line, with a reference that the caller frees; null when
    // SDL_ttf cannot render it.
    SDL_Surface *render();

private:
    vel_context *ctx_;
    TTF_Font *font_;
    std::string_view text_;
    SDL_Color colour_;
    CachedLine *cached_ = nullptr; // null: the cache does not keep this line
    int width_ = 0;
};

// The width TTF_SizeText gives the text in the font (0 when it fails),
// remembered in the context's cache for the next formatting.
int measured_width(vel_context *ctx, TTF_Font *font, const char *text);

// Frees the cache and every line it holds; the context's pointer becomes null.
void clear_text_cache(vel_context *ctx);

// What the cache holds now, lines and bookkeeping, in bytes; 0 without a cache.
std::size_t text_cache_bytes(const vel_context *ctx);

} // namespace velumo::detail
