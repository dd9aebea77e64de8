// Fixture of the text layout suites: a form with a text object and spare
// records, text widths in the test font, and line-buffer read-back.
#pragma once

#include "model/tables.hpp"
#include "velumo_test.hpp"

#include <cstring>
#include <string>

namespace velumo::test {

class TextTest : public ScreenTest {
protected:
    // Object 8: a top-level text object at (100, 50), 200 x 100, margins 5,
    // on text record 1.  Objects 9 and up and the text records 2 and up are
    // zero, ready to be filled in memory.
    static constexpr uint32_t kTextObject = 8;
    static constexpr uint32_t kFirstSpareObject = 9;

    void load_form(uint32_t spare_objects = 8, uint32_t texts = 1)
    {
        FormBuilder form;
        vel_object_file_rec &o = form.object(kTextObject);
        o.type = VEL_TYPE_TEXT;
        o.x = 100;
        o.y = 50;
        o.width = 200;
        o.height = 100;
        o.margin_left = o.margin_right = o.margin_top = o.margin_bottom = 5;
        o.text_index = 1;
        TextBuilder text_file;
        text_file.text(texts);
        load(form, &text_file, spare_objects);
    }

    int width(const std::string &s)
    {
        int w = 0;
        int h = 0;
        TTF_SizeText(ctx().font, s.c_str(), &w, &h);
        return w;
    }
    uint32_t uwidth(const std::string &s) { return static_cast<uint32_t>(width(s)); }

    char *line_ptr(uint32_t text_index, uint32_t n)
    {
        return detail::line_at(&ctx(), text_index, n);
    }
    std::string line(uint32_t text_index, uint32_t n) { return line_ptr(text_index, n); }
    // The line's bytes up to `count`, embedded NULs included.
    std::string raw(uint32_t text_index, uint32_t n, std::size_t count)
    {
        return std::string(line_ptr(text_index, n), count);
    }
    void fill_buffer(uint32_t text_index, char ch)
    {
        std::memset(detail::line_buffer(&ctx(), text_index), ch, VEL_LINE_BUFFER_BYTES);
    }

    void set_text(uint32_t text_index, const std::string &text)
    {
        set_string(ctx().text_recs[text_index].text, text);
    }

    // Formats `text` in the text object with an explicit line width.
    uint32_t format(const std::string &text, uint32_t line_width)
    {
        set_text(object(kTextObject).text_index, text);
        object(kTextObject).line_width = line_width;
        return vel_format_object_text(&ctx(), kTextObject);
    }
    std::string text_line(uint32_t n) { return line(object(kTextObject).text_index, n); }
};

} // namespace velumo::test
