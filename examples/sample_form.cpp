// The sample form shared by the demo and the tests: a form description
// file, a text file and a picture, all written from code.
#include "sample_form.hpp"

#include "velumo.h"

#include <cstring>
#include <fstream>
#include <vector>

namespace velumo::sample {
namespace {

template <std::size_t N> void set_string(char (&field)[N], const std::string &value)
{
    std::memset(field, 0, N);
    value.copy(field, N - 1);
}

struct Rgb {
    uint32_t r, g, b;
};

void set_fill(vel_object_file_rec &o, Rgb c)
{
    o.fill_r = c.r;
    o.fill_g = c.g;
    o.fill_b = c.b;
}

void set_border(vel_object_file_rec &o, uint32_t style, uint32_t inset, Rgb c)
{
    o.border_style = style;
    o.border_inset = inset;
    o.border_r = c.r;
    o.border_g = c.g;
    o.border_b = c.b;
}

void set_margins(vel_object_file_rec &o, uint32_t margin)
{
    o.margin_left = o.margin_right = o.margin_top = o.margin_bottom = margin;
}

constexpr Rgb kFrameButton{200, 200, 220};
constexpr Rgb kWindowFill{235, 235, 240};
constexpr Rgb kFieldFill{255, 255, 255};
constexpr Rgb kDark{40, 40, 60};

class Form {
public:
    Form() : objects_(kObjectCount) {}

    vel_object_file_rec &at(unsigned n) { return objects_[n - 1]; }

    void frame_button(unsigned n)
    {
        vel_object_file_rec &o = at(n);
        o.width = o.height = 16;
        o.type = VEL_TYPE_LABEL;
        o.hidden = 1;
        set_fill(o, kFrameButton);
        // A margin of 1 puts the frame on the button's outermost pixels, so
        // erasing the button erases its frame too.
        set_margins(o, 1);
        set_border(o, 1, 0, kDark);
    }

    void window(unsigned n, uint32_t x, uint32_t y, uint32_t w, uint32_t h, uint32_t text,
                std::vector<unsigned> dependents)
    {
        vel_object_file_rec &o = place(n, VEL_TYPE_WINDOW, 0, x, y, w, h);
        o.text_index = text;
        // Windows start closed and are opened by activation.
        o.hidden = 1;
        set_margins(o, 6);
        set_fill(o, kWindowFill);
        set_border(o, 4, 3, {90, 90, 100});
        for (std::size_t i = 0; i < dependents.size(); ++i)
            o.dep_objs[i] = dependents[i];
    }

    vel_object_file_rec &dependent(unsigned n, uint32_t type, unsigned master, uint32_t x,
                                   uint32_t y, uint32_t w, uint32_t h, const std::string &label)
    {
        vel_object_file_rec &o = place(n, type, master, x, y, w, h);
        set_string(o.label, label);
        o.text_length = static_cast<uint32_t>(label.size());
        set_margins(o, 3);
        set_fill(o, kFieldFill);
        set_border(o, 1, 0, {0, 0, 0});
        return o;
    }

    void write(const std::string &path) const
    {
        std::ofstream out(path, std::ios::binary);
        out.write(reinterpret_cast<const char *>(objects_.data()),
                  static_cast<std::streamsize>(objects_.size() * sizeof(vel_object_file_rec)));
    }

private:
    vel_object_file_rec &place(unsigned n, uint32_t type, unsigned master, uint32_t x, uint32_t y,
                               uint32_t w, uint32_t h)
    {
        vel_object_file_rec &o = at(n);
        o.type = type;
        o.master = master;
        o.x = x;
        o.y = y;
        o.width = w;
        o.height = h;
        return o;
    }

    std::vector<vel_object_file_rec> objects_;
};

void write_texts(const std::string &path)
{
    std::vector<vel_text_rec> texts(6);
    set_string(texts[0].text, "Welcome to velumo");
    set_string(texts[1].text, "Forms are files: windows, buttons, fields and texts are records.\n"
                              "Type here to edit this text.");
    set_string(texts[2].text, "Settings");
    set_string(texts[5].text, "A third window, partly covered.");
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char *>(texts.data()),
              static_cast<std::streamsize>(texts.size() * sizeof(vel_text_rec)));
}

// A 48 x 32 picture of four coloured quarters.
void write_picture(const std::string &path)
{
    SDL_Surface *picture =
        SDL_CreateRGBSurface(SDL_SWSURFACE, 48, 32, 32, 0xFF0000, 0xFF00, 0xFF, 0);
    const Uint32 colours[4] = {0xD04040, 0x40A040, 0x4060D0, 0xE0C040};
    for (int q = 0; q < 4; ++q) {
        SDL_Rect quarter{static_cast<Sint16>((q % 2) * 24), static_cast<Sint16>((q / 2) * 16), 24,
                         16};
        SDL_FillRect(picture, &quarter, colours[q]);
    }
    SDL_SaveBMP(picture, path.c_str());
    SDL_FreeSurface(picture);
}

} // namespace

const char *const kChainStream =
    "Long texts flow through a chain of text boxes. When the first box is full, the text goes on "
    "in the next one, like columns of a newspaper.\nEach box keeps forty lines of up to "
    "ninety-nine "
    "characters; words wider than a box are split.";

std::string write_sample_form(const std::string &directory)
{
    const std::string prefix = directory.empty() ? std::string() : directory + "/";
    Form form;
    for (unsigned k = 1; k <= 7; ++k)
        form.frame_button(k);

    form.window(kMainWindow, 40, 60, 360, 250, 1,
                {kNotesText, kOkButton, kNameField, kMainPicture});
    vel_object_file_rec &notes =
        form.dependent(kNotesText, VEL_TYPE_TEXT, kMainWindow, 50, 90, 340, 110, "");
    notes.text_index = 2;
    notes.editable = 1;
    notes.dep_objs[0] = kInnerLabel;
    vel_object_file_rec &inner =
        form.dependent(kInnerLabel, VEL_TYPE_LABEL, kNotesText, 60, 150, 200, 40, "Inner");
    inner.dep_objs[0] = kInnerField;
    inner.clip_mode = 1;
    set_fill(inner, {220, 230, 250});
    vel_object_file_rec &inner_field =
        form.dependent(kInnerField, VEL_TYPE_ENTRY, kInnerLabel, 140, 156, 110, 26, "nested");
    inner_field.editable = 1;
    inner_field.max_chars = 20;
    form.dependent(kOkButton, VEL_TYPE_LABEL, kMainWindow, 300, 270, 80, 28, "OK");
    vel_object_file_rec &name =
        form.dependent(kNameField, VEL_TYPE_ENTRY, kMainWindow, 50, 220, 200, 26, "Name");
    name.editable = 1;
    name.max_chars = 40;
    vel_object_file_rec &picture =
        form.dependent(kMainPicture, VEL_TYPE_PICTURE_FILE, kMainWindow, 300, 215, 48, 32, "");
    set_string(picture.image_path, prefix + kPictureFile);
    form.dependent(kMenuTitle, VEL_TYPE_LABEL, 0, 20, 2, 70, 20, "Menu");
    vel_object_file_rec &menu = form.dependent(kMenu, VEL_TYPE_MENU, 0, 20, 22, 120, 60, "");
    menu.hidden = 1;
    menu.dep_objs[0] = kMenuOpen;
    menu.dep_objs[1] = kMenuQuit;
    set_fill(menu, {250, 250, 230});
    form.dependent(kMenuOpen, VEL_TYPE_LABEL, kMenu, 22, 24, 116, 26, "Open");
    form.dependent(kMenuQuit, VEL_TYPE_LABEL, kMenu, 22, 52, 116, 26, "Quit");

    form.window(kSettingsWindow, 420, 120, 200, 160, 3, {kAgeField, kSettingsPicture});
    form.at(kSettingsWindow).window_kind = VEL_WINDOW_REDUCED_FRAME;
    form.at(kSettingsWindow).centred = 1;
    vel_object_file_rec &age =
        form.dependent(kAgeField, VEL_TYPE_NUMERIC_ENTRY, kSettingsWindow, 430, 160, 80, 26, "42");
    age.editable = 1;
    age.max_chars = 3;
    vel_object_file_rec &settings_picture = form.dependent(kSettingsPicture, VEL_TYPE_PICTURE_FILE,
                                                           kSettingsWindow, 520, 200, 48, 32, "");
    set_string(settings_picture.image_path, prefix + kPictureFile);

    form.window(kThirdWindow, 150, 200, 260, 120, 6, {});

    vel_object_file_rec &head =
        form.dependent(kChainHead, VEL_TYPE_CHAIN, 0, 20, 340, 600, 130, "");
    head.dep_objs[0] = kChainFirst;
    head.dep_objs[1] = kChainSecond;
    set_fill(head, kWindowFill);
    for (unsigned member : {kChainFirst, kChainSecond}) {
        const uint32_t x = member == kChainFirst ? 25 : 322;
        vel_object_file_rec &m =
            form.dependent(member, VEL_TYPE_CHAIN, kChainHead, x, 345, 293, 120, "");
        m.text_index = member == kChainFirst ? 4 : 5;
        m.clip_mode = 1;
    }

    const std::string form_path = prefix + kFormFile;
    form.write(form_path);
    write_texts(prefix + kTextFile);
    write_picture(prefix + kPictureFile);
    return form_path;
}

} // namespace velumo::sample
