// Shared set-up of the rendering tests: a form of blank records filled in
// memory, colour helpers and reference renderings of text lines.
#pragma once

#include "velumo_test.hpp"

#include <cstring>
#include <memory>
#include <string>

namespace velumo::test {

inline constexpr vel_rgb kBlack{0, 0, 0};
inline constexpr vel_rgb kWhite{255, 255, 255};
inline constexpr vel_rgb kGrey{128, 128, 128};
inline constexpr vel_rgb kRed{255, 0, 0};
inline constexpr vel_rgb kGreen{0, 255, 0};
inline constexpr vel_rgb kBlue{0, 0, 255};

struct SurfaceFree {
    void operator()(SDL_Surface *s) const { SDL_FreeSurface(s); }
};
using Surface = std::unique_ptr<SDL_Surface, SurfaceFree>;

class RenderTest : public ScreenTest {
protected:
    static constexpr uint32_t kObjects = 30;
    static constexpr uint32_t kTexts = 4;

    // Loads kObjects blank records and kTexts texts, so that every object
    // number and every line buffer below kTexts can be set up in memory.
    void SetUp() override
    {
        ScreenTest::SetUp();
        FormBuilder form;
        form.object(kObjects).text_index = 1;
        TextBuilder texts;
        for (uint32_t t = 1; t <= kTexts; ++t)
            texts.set(t, "text");
        load(form, &texts);
        object(kObjects).text_index = 0;
        fill_screen(kWhite);
    }

    vel_object &place(uint32_t n, uint32_t type, uint32_t x, uint32_t y, uint32_t w, uint32_t h,
                      uint32_t master = 0, vel_rgb fill = kGrey)
    {
        vel_object &o = object(n);
        o.type = type;
        o.x = x;
        o.y = y;
        o.width = w;
        o.height = h;
        o.master = master;
        o.fill_r = fill.r;
        o.fill_g = fill.g;
        o.fill_b = fill.b;
        return o;
    }

    static void set_margins(vel_object &o, uint32_t m)
    {
        o.margin_left = o.margin_right = o.margin_top = o.margin_bottom = m;
    }

    void set_line(uint32_t text_index, uint32_t line, const char *text)
    {
        char *dst = ctx().text_bufs + text_index * VEL_LINE_BUFFER_BYTES + line * VEL_LINE_BYTES;
        std::strncpy(dst, text, VEL_LINE_BYTES - 1);
    }

    // The colour a pixel of this colour reads back as on the current screen.
    vel_rgb mapped(vel_rgb c)
    {
        vel_rgb out{};
        SDL_GetRGB(SDL_MapRGB(ctx().screen->format, c.r, c.g, c.b), ctx().screen->format, &out.r,
                   &out.g, &out.b);
        return out;
    }

    Surface surface_like_screen(int w, int h)
    {
        const SDL_PixelFormat *f = ctx().screen->format;
        return Surface(SDL_CreateRGBSurface(SDL_SWSURFACE, w, h, f->BitsPerPixel, f->Rmask,
                                            f->Gmask, f->Bmask, f->Amask));
    }

    int text_width(const char *text)
    {
        int w = 0;
        TTF_SizeText(ctx().font, text, &w, nullptr);
        return w;
    }

    // The text rendered in the default font onto the body colour, as the
    // screen shows an unclipped line.
    Surface reference_line(const char *text, vel_rgb ink, vel_rgb body)
    {
        Surface line(TTF_RenderText_Blended(ctx().font, text, SDL_Color{ink.r, ink.g, ink.b, 0}));
        Surface ref = surface_like_screen(line->w, line->h);
        SDL_FillRect(ref.get(), nullptr, SDL_MapRGB(ref->format, body.r, body.g, body.b));
        SDL_BlitSurface(line.get(), nullptr, ref.get(), nullptr);
        return ref;
    }

    // Counts the pixels of a rectangle (inclusive corners) that differ from c.
    int count_not(int x0, int y0, int x1, int y1, vel_rgb c)
    {
        int n = 0;
        for (int y = y0; y <= y1; ++y)
            for (int x = x0; x <= x1; ++x)
                if (!(at(x, y) == c)) ++n;
        return n;
    }

    // Whether exactly the rectangle (inclusive corners) has colour c, and the
    // one-pixel ring around it has not.
    ::testing::AssertionResult box_is(int x0, int y0, int x1, int y1, vel_rgb c)
    {
        if (const int wrong = count_not(x0, y0, x1, y1, c); wrong != 0)
            return ::testing::AssertionFailure() << wrong << " pixels inside are not " << c;
        for (int x = x0 - 1; x <= x1 + 1; ++x)
            for (int y : {y0 - 1, y1 + 1})
                if (at(x, y) == c)
                    return ::testing::AssertionFailure() << "ring at " << x << "," << y;
        for (int y = y0; y <= y1; ++y)
            for (int x : {x0 - 1, x1 + 1})
                if (at(x, y) == c)
                    return ::testing::AssertionFailure() << "ring at " << x << "," << y;
        return ::testing::AssertionSuccess();
    }
};

} // namespace velumo::test
