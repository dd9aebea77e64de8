// The floor of a redraw: the fills, blits and pixel stores that leave the
// library's picture on the screen, recorded once and replayed straight on SDL.
#pragma once

#include "velumo.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace velumo::bench {

class DisplayList {
public:
    // Records what `draw` does to ctx's screen, starting from `background`;
    // every text line must be rendered during the call (clear the cache).
    DisplayList(vel_context &ctx, vel_rgb background, const std::function<void()> &draw);
    ~DisplayList();
    DisplayList(const DisplayList &) = delete;
    DisplayList &operator=(const DisplayList &) = delete;

    // The perfect cache: every line rendered beforehand.
    void replay(SDL_Surface *screen) const;
    // The naive path: every line rendered again before its blit.
    void replay_rendering(SDL_Surface *screen) const;
    // Whether replay gives exactly the library's picture.
    bool matches() const { return matches_; }
    std::size_t fills() const { return fills_.size(); }
    std::size_t blits() const { return blits_.size(); }
    std::size_t stores() const { return stores_.size(); }

    struct Fill {
        SDL_Rect rect;
        uint32_t colour;
        bool whole;
    };
    struct Line {
        TTF_Font *font = nullptr;
        std::vector<char> text;
        SDL_Color colour{};
    };
    struct Blit {
        SDL_Surface *surface;
        SDL_Rect source, dest;
        bool has_source;
        Line line; // font null: a picture
    };
    struct Store {
        std::size_t offset;
        uint32_t value;
    };
    struct Op {
        bool is_fill;
        std::size_t index;
    };

    // Used by the wrappers while recording.
    void add_fill(const Fill &fill);
    void add_blit(Blit blit);
    void note_line(SDL_Surface *surface, Line line);

private:
    std::vector<Fill> fills_;
    std::vector<Blit> blits_;
    std::vector<Op> order_;
    std::vector<std::pair<SDL_Surface *, Line>> lines_;
    std::vector<Store> stores_;
    bool matches_ = false;
};

} // namespace velumo::bench
