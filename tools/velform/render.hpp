// velform render: a form loaded and drawn by the library on SDL's dummy
// video driver, the way an application shows it, saved as a PNG picture.
#pragma once

#include "velumo.h"

#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace velform {

inline constexpr const char *kDefaultFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

inline constexpr vel_rgb kBackground{250, 250, 250};

// The display fields of a context that shows forms as `velform render`
// does, for a screen of width x height; the caller sets screen and font.
void prepare_context(vel_context &ctx, int width, int height);

struct RenderOptions {
    std::filesystem::path form; // FORM.toml (compiled first) or FORM.vfm
    std::optional<std::filesystem::path> texts;
    std::vector<std::string> open; // windows to open in order, by name or number
    std::filesystem::path output;
    int width = 640;
    int height = 480;
    int depth = 32;
    std::filesystem::path font = kDefaultFont;
    int font_size = 13;
};

int render_command(const RenderOptions &options, std::ostream &messages);

} // namespace velform
