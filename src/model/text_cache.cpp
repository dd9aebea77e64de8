// The cache of rendered text lines: the lookup by everything that decides a
// line's pixels, the byte account and the eviction of the oldest lines.
#include "model/text_cache.hpp"

#include <functional>
#include <list>
#include <string>
#include <unordered_map>

namespace velumo::detail {

namespace {

// The font's state that changes its rendering.  The pointer names the open
// font; the height guards against a font reopened at another size under the
// same address.
struct FontState {
    TTF_Font *font = nullptr;
    int height = 0;
    int style = 0;
    int outline = 0;
    int hinting = 0;
    int kerning = 0;
    bool operator==(const FontState &) const = default;
};

FontState state_of(TTF_Font *font)
{
    return {font,
            TTF_FontHeight(font),
            TTF_GetFontStyle(font),
            TTF_GetFontOutline(font),
            TTF_GetFontHinting(font),
            TTF_GetFontKerning(font)};
}

struct LineKey {
    FontState font;
    uint8_t r = 0, g = 0, b = 0;
    std::string_view text;
    bool operator==(const LineKey &) const = default;
};

struct LineKeyHash {
    std::size_t operator()(const LineKey &key) const
    {
        std::size_t hash = std::hash<std::string_view>{}(key.text);
        const auto mix = [&hash](std::size_t value) {
            hash ^= value + 0x9e3779b97f4a7c15u + (hash << 6) + (hash >> 2);
        };
        mix(std::hash<const void *>{}(key.font.font));
        mix(static_cast<std::size_t>(key.font.height) << 16 ^
            static_cast<std::size_t>(key.font.style) << 8 ^
            static_cast<std::size_t>(key.font.outline) << 4 ^
            static_cast<std::size_t>(key.font.hinting) << 2 ^
            static_cast<std::size_t>(key.font.kerning));
        mix(static_cast<std::size_t>(key.r) << 16 | static_cast<std::size_t>(key.g) << 8 | key.b);
        return hash;
    }
};

// An allowance for a line's list node, index entry and record, on top of
// its text and pixels.
constexpr std::size_t line_bookkeeping_bytes = 192;

std::size_t surface_bytes(const SDL_Surface *surface)
{
    return static_cast<std::size_t>(surface->pitch) * static_cast<std::size_t>(surface->h) +
           sizeof(SDL_Surface) + sizeof(SDL_PixelFormat);
}

std::size_t limit_of(const vel_context *ctx)
{
    if (ctx->text_cache_limit == 0) return VEL_TEXT_CACHE_DEFAULT_LIMIT;
    return ctx->text_cache_limit;
}

// The bound is shared: three quarters for rendered lines, one quarter for
// the widths that formatting measures (text only, no pixels).
std::size_t lines_limit(const vel_context *ctx)
{
    return limit_of(ctx) - limit_of(ctx) / 4;
}

std::size_t widths_limit(const vel_context *ctx)
{
    return limit_of(ctx) / 4;
}

} // namespace

struct CachedLine {
    std::string text;
    LineKey key; // its text views `text` above
    int width = 0;
    SDL_Surface *surface = nullptr;
    std::size_t bytes = 0;
};

namespace {

class LineCache {
public:
    LineCache() = default;
    LineCache(const LineCache &) = delete;
    LineCache &operator=(const LineCache &) = delete;
    ~LineCache()
    {
        for (CachedLine &line : lines)
            SDL_FreeSurface(line.surface);
    }

    // The line's record moved to the front, or null when it is not kept.
    CachedLine *find(const LineKey &key)
    {
        const auto found = index.find(key);
        if (found == index.end()) return nullptr;
        lines.splice(lines.begin(), lines, found->second);
        return &*found->second;
    }

    // A new record at the front, or null when it cannot fit in `limit`.
    CachedLine *add(const LineKey &key, int width, std::size_t limit)
    {
        const std::size_t needed = line_bookkeeping_bytes + key.text.size();
        if (!make_room(needed, limit, nullptr)) return nullptr;
        CachedLine &line = lines.emplace_front();
        line.text = key.text;
        line.key = key;
        line.key.text = line.text;
        line.width = width;
        line.bytes = needed;
        bytes += needed;
        index.emplace(line.key, lines.begin());
        return &line;
    }

    // Drops the oldest lines while more than `limit` is held: the
    // application may have lowered it.
    void trim(std::size_t limit) { make_room(0, limit, nullptr); }

    // Keeps `surface` with the line when it fits in `limit` beside it.
    void keep(CachedLine &line, SDL_Surface *surface, std::size_t limit)
    {
        const std::size_t needed = surface_bytes(surface);
        if (!make_room(needed, limit, &line)) return;
        ++surface->refcount;
        line.surface = surface;
        line.bytes += needed;
        bytes += needed;
    }

    std::list<CachedLine> lines; // most recently used first
    std::unordered_map<LineKey, std::list<CachedLine>::iterator, LineKeyHash> index;
    std::size_t bytes = 0;

private:
    // Drops the least recently used lines, never `keep`, until `needed`
    // more bytes fit under `limit`.
    bool make_room(std::size_t needed, std::size_t limit, const CachedLine *keep)
    {
        if (needed > limit) return false;
        while (bytes + needed > limit && !lines.empty() && &lines.back() != keep) {
            CachedLine &oldest = lines.back();
            bytes -= oldest.bytes;
            SDL_FreeSurface(oldest.surface);
            index.erase(oldest.key);
            lines.pop_back();
        }
        return bytes + needed <= limit;
    }
};

} // namespace

} // namespace velumo::detail

// The context's cache, opaque to applications.
struct vel_text_cache {
    velumo::detail::LineCache lines;
    velumo::detail::LineCache widths; // measured only: colourless, without surfaces
};

namespace velumo::detail {

TextLine::TextLine(vel_context *ctx, TTF_Font *font, std::string_view text, SDL_Color colour)
    : ctx_(ctx), font_(font), text_(text), colour_(colour)
{
    const std::size_t limit = lines_limit(ctx);
    if (limit < line_bookkeeping_bytes) {
        TTF_SizeText(font, std::string(text).c_str(), &width_, nullptr);
        return;
    }
    if (ctx->text_cache == nullptr) ctx->text_cache = new vel_text_cache;
    LineCache &cache = ctx->text_cache->lines;
    cache.trim(limit);
    const LineKey key{state_of(font), colour.r, colour.g, colour.b, text};
    cached_ = cache.find(key);
    if (cached_ == nullptr) {
        TTF_SizeText(font, std::string(text).c_str(), &width_, nullptr);
        cached_ = cache.add(key, width_, limit);
    } else {
        width_ = cached_->width;
    }
}

SDL_Surface *TextLine::render()
{
    if (cached_ != nullptr && cached_->surface != nullptr) {
        ++cached_->surface->refcount;
        return cached_->surface;
    }
    SDL_Surface *surface = TTF_RenderText_Blended(font_, std::string(text_).c_str(), colour_);
    if (cached_ != nullptr && surface != nullptr)
        ctx_->text_cache->lines.keep(*cached_, surface, lines_limit(ctx_));
    return surface;
}

int measured_width(vel_context *ctx, TTF_Font *font, const char *text)
{
    int width = 0;
    const std::size_t limit = widths_limit(ctx);
    if (limit < line_bookkeeping_bytes) {
        TTF_SizeText(font, text, &width, nullptr);
        return width;
    }
    if (ctx->text_cache == nullptr) ctx->text_cache = new vel_text_cache;
    LineCache &cache = ctx->text_cache->widths;
    cache.trim(limit);
    const LineKey key{state_of(font), 0, 0, 0, text};
    if (const CachedLine *known = cache.find(key)) return known->width;
    TTF_SizeText(font, text, &width, nullptr);
    cache.add(key, width, limit);
    return width;
}

void clear_text_cache(vel_context *ctx)
{
    delete ctx->text_cache;
    ctx->text_cache = nullptr;
}

std::size_t text_cache_bytes(const vel_context *ctx)
{
    return ctx->text_cache == nullptr
               ? 0
               : ctx->text_cache->lines.bytes + ctx->text_cache->widths.bytes;
}

} // namespace velumo::detail

void vel_clear_text_cache(vel_context *ctx)
{
    velumo::detail::clear_text_cache(ctx);
}
