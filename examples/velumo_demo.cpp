// The demo application: writes the sample form, loads it with velumo and
// prints what it loaded.  velumo_demo [form text] loads other files instead.
#include "sample_form.hpp"
#include "velumo.h"

#include <cstdio>
#include <memory>
#include <string>

namespace {

const char *type_name(uint32_t type)
{
    static constexpr const char *names[] = {"empty",        "window", "label",         "text",
                                            "picture file", "entry",  "numeric entry", "menu",
                                            "chain",        "picture"};
    return type < std::size(names) ? names[type] : "unknown";
}

} // namespace

int main(int argc, char **argv)
{
    std::string form_path = "velumo_sample_form.vel";
    std::string text_path = "velumo_sample_texts.vel";
    if (argc == 3) {
        form_path = argv[1];
        text_path = argv[2];
    } else {
        velumo::sample::write_sample_form(form_path, text_path);
    }

    if (SDL_Init(0) != 0 || TTF_Init() != 0) {
        std::fprintf(stderr, "velumo_demo: cannot start SDL: %s\n", SDL_GetError());
        return 1;
    }
    auto ctx = std::make_unique<vel_context>();
    ctx->texts_loaded = 1;
    if (vel_load_form(ctx.get(), 0, 0, form_path.c_str(), text_path.c_str()) != 1) return 1;

    std::printf("%s: %u objects, %u texts\n", form_path.c_str(), ctx->object_count,
                ctx->text_count);
    for (uint32_t k = 1; k <= ctx->object_count; ++k) {
        const vel_object &o = ctx->objects[k];
        std::printf("%3u %-13s at (%u, %u) %u x %u master %u", k, type_name(o.type), o.x, o.y,
                    o.width, o.height, o.master);
        if (o.label[0] != '\0') std::printf(" label \"%s\"", o.label);
        if (o.text_index != 0) std::printf(" text \"%.40s\"", ctx->text_recs[o.text_index].text);
        std::printf("\n");
    }
    vel_close(ctx.get());
    return 0;
}
