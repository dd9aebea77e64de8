// A small form shared by the input suites: frame button 7, a window with an
// entry field and a text object, and helpers to type keys and end a loop.
#pragma once

#include "velumo_test.hpp"

#include <string>

namespace velumo::test {

class InputTest : public ScreenTest {
protected:
    static constexpr uint32_t kButton7 = 7;
    static constexpr uint32_t kWindow = 8;
    static constexpr uint32_t kField = 9;
    static constexpr uint32_t kText = 10;
    static constexpr uint32_t kTextIndex = 1;

    // Objects 1..kText; the window is active and holds the field and the
    // text object.  Frame button 7 sits at the top right of the screen.
    void load_form(const std::string &text = "", uint32_t extra_objs = 0)
    {
        FormBuilder form;
        vel_object_file_rec &button = form.object(kButton7);
        button.x = 600, button.y = 2, button.width = 30, button.height = 20;
        button.type = VEL_TYPE_LABEL;
        vel_object_file_rec &window = form.object(kWindow);
        window.x = 40, window.y = 40, window.width = 560, window.height = 400;
        window.type = VEL_TYPE_WINDOW;
        window.margin_left = window.margin_right = window.margin_top = window.margin_bottom = 5;
        window.dep_objs[0] = kField;
        window.dep_objs[1] = kText;
        vel_object_file_rec &field = form.object(kField);
        field.x = 60, field.y = 60, field.width = 300, field.height = 24;
        field.type = VEL_TYPE_ENTRY;
        field.editable = 1;
        field.max_chars = 64;
        field.margin_left = field.margin_right = field.margin_top = field.margin_bottom = 2;
        field.master = kWindow;
        vel_object_file_rec &area = form.object(kText);
        area.x = 60, area.y = 100, area.width = 500, area.height = 320;
        area.type = VEL_TYPE_TEXT;
        area.editable = 1;
        area.text_index = kTextIndex;
        area.margin_left = area.margin_right = area.margin_top = area.margin_bottom = 3;
        area.master = kWindow;
        TextBuilder texts;
        texts.set(kTextIndex, text);
        load(form, &texts, extra_objs, 1);
        ctx().active_window = kWindow;
        ctx().window_stack[0] = kWindow;
        ctx().window_count = 1;
    }

    struct Area {
        int32_t left, right, top, bottom;
    };
    Area text_area(uint32_t obj)
    {
        uint32_t l = 0, r = 0, t = 0, b = 0;
        vel_get_borders_for_text(&ctx(), obj, &l, &r, &t, &b);
        return {static_cast<int32_t>(l), static_cast<int32_t>(r), static_cast<int32_t>(t),
                static_cast<int32_t>(b)};
    }

    int width_of(const std::string &s)
    {
        int w = 0, h = 0;
        TTF_SizeText(ctx().font, s.c_str(), &w, &h);
        return w;
    }
    int font_height() { return TTF_FontHeight(ctx().font); }

    std::string record_text() { return ctx().text_recs[kTextIndex].text; }
    uint32_t &cursor_index() { return ctx().text_recs[kTextIndex].cursor_index; }
    std::string line(uint32_t n)
    {
        return ctx().text_bufs + kTextIndex * VEL_LINE_BUFFER_BYTES + n * VEL_LINE_BYTES;
    }
    void set_text(const std::string &text)
    {
        set_string(ctx().text_recs[kTextIndex].text, text);
        vel_format_object_text(&ctx(), kText);
    }

    // Applies one key code to the cursor object as the editor receives it.
    void apply(uint32_t key, uint32_t printable)
    {
        ctx().final_key = key;
        ctx().key_printable = printable;
        vel_get_text(&ctx());
    }
    void type(const std::string &chars)
    {
        for (char ch : chars)
            apply(static_cast<unsigned char>(ch), 1);
    }

    // Queues a press and release of one key.
    static void queue_key(SDLKey sym, SDLMod mod = KMOD_NONE)
    {
        push_key(SDL_KEYDOWN, sym, mod);
        push_key(SDL_KEYUP, sym, mod);
    }
    // Queues the release that ends every selection loop.
    static void queue_end() { push_mouse_button(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, 610, 10); }
    // Runs a selection loop over the queued events, ended by queue_end.
    uint32_t run_loop()
    {
        queue_end();
        return vel_get_mouse_selection(&ctx(), -1, -1);
    }
};

} // namespace velumo::test
