// The sample form shared by the demo and the tests: a form description
// file and a text file written from records, so no binary is hand-made.
#include "sample_form.hpp"

#include "velumo.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <vector>

namespace velumo::sample {
namespace {

template <std::size_t N> void set_string(char (&field)[N], const char *value)
{
    std::memset(field, 0, N);
    std::strncpy(field, value, N - 1);
}

void set_colour(uint32_t &r, uint32_t &g, uint32_t &b, uint32_t red, uint32_t green, uint32_t blue)
{
    r = red;
    g = green;
    b = blue;
}

vel_object_file_rec frame_button()
{
    vel_object_file_rec r{};
    r.width = 16;
    r.height = 16;
    r.type = VEL_TYPE_LABEL;
    r.hidden = 1;
    set_colour(r.fill_r, r.fill_g, r.fill_b, 200, 200, 220);
    r.border_style = 1;
    set_colour(r.border_r, r.border_g, r.border_b, 40, 40, 60);
    return r;
}

vel_object_file_rec window(uint32_t x, uint32_t y, uint32_t w, uint32_t h, uint32_t text)
{
    vel_object_file_rec r{};
    r.x = x;
    r.y = y;
    r.width = w;
    r.height = h;
    r.type = VEL_TYPE_WINDOW;
    r.text_index = text;
    r.margin_left = r.margin_right = r.margin_top = r.margin_bottom = 6;
    set_colour(r.fill_r, r.fill_g, r.fill_b, 235, 235, 240);
    set_colour(r.text_r, r.text_g, r.text_b, 0, 0, 0);
    r.border_style = 4;
    r.border_inset = 3;
    set_colour(r.border_r, r.border_g, r.border_b, 90, 90, 100);
    return r;
}

vel_object_file_rec dependent(uint32_t master, uint32_t type, uint32_t x, uint32_t y, uint32_t w,
                              uint32_t h, const char *label)
{
    vel_object_file_rec r{};
    r.x = x;
    r.y = y;
    r.width = w;
    r.height = h;
    r.type = type;
    r.master = master;
    set_string(r.label, label);
    r.text_length = static_cast<uint32_t>(std::strlen(label));
    r.margin_left = r.margin_top = 3;
    r.margin_right = r.margin_bottom = 3;
    set_colour(r.fill_r, r.fill_g, r.fill_b, 255, 255, 255);
    set_colour(r.text_r, r.text_g, r.text_b, 0, 0, 0);
    r.border_style = 1;
    set_colour(r.border_r, r.border_g, r.border_b, 0, 0, 0);
    return r;
}

} // namespace

void write_sample_form(const std::string &form_path, const std::string &text_path)
{
    std::vector<vel_object_file_rec> objects(kAgeField);
    for (unsigned k = 0; k < 7; ++k)
        objects[k] = frame_button();

    objects[kMainWindow - 1] = window(40, 60, 360, 240, 1);
    objects[kMainWindow - 1].dep_objs[0] = kWelcomeText;
    objects[kMainWindow - 1].dep_objs[1] = kOkButton;
    objects[kMainWindow - 1].dep_objs[2] = kNameField;

    objects[kWelcomeText - 1] = dependent(kMainWindow, VEL_TYPE_TEXT, 50, 100, 340, 100, "");
    objects[kWelcomeText - 1].text_index = 2;
    objects[kWelcomeText - 1].editable = 1;
    objects[kOkButton - 1] = dependent(kMainWindow, VEL_TYPE_LABEL, 300, 260, 80, 28, "OK");
    objects[kNameField - 1] = dependent(kMainWindow, VEL_TYPE_ENTRY, 50, 220, 200, 24, "Name");
    objects[kNameField - 1].editable = 1;
    objects[kNameField - 1].max_chars = 40;

    objects[kSecondWindow - 1] = window(420, 120, 200, 160, 3);
    objects[kSecondWindow - 1].window_kind = VEL_WINDOW_REDUCED_FRAME;
    objects[kSecondWindow - 1].dep_objs[0] = kAgeField;
    objects[kAgeField - 1] =
        dependent(kSecondWindow, VEL_TYPE_NUMERIC_ENTRY, 430, 200, 80, 24, "42");
    objects[kAgeField - 1].editable = 1;
    objects[kAgeField - 1].max_chars = 3;

    std::ofstream form(form_path, std::ios::binary);
    form.write(reinterpret_cast<const char *>(objects.data()),
               static_cast<std::streamsize>(objects.size() * sizeof(vel_object_file_rec)));

    std::vector<vel_text_rec> texts(3);
    set_string(texts[0].text, "Welcome to velumo");
    set_string(texts[1].text, "Forms are files: windows, buttons, fields and texts are records.\n"
                              "Type here to edit this text.");
    set_string(texts[2].text, "Age");
    std::ofstream text(text_path, std::ios::binary);
    text.write(reinterpret_cast<const char *>(texts.data()),
               static_cast<std::streamsize>(texts.size() * sizeof(vel_text_rec)));
}

} // namespace velumo::sample
