// Start-up and shutdown: reads the form and text files into the context,
// opens the objects' pictures and fonts, and releases everything at the end.
#include "internal.hpp"

#include <SDL_image.h>

#include <bit>
#include <cstdio>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>

static_assert(std::endian::native == std::endian::little,
              "form files are little-endian and are read record by record");

namespace {

struct FileCloser {
    void operator()(std::FILE *f) const { std::fclose(f); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// Form and text files are opened for reading and writing, so a file that
// may not be written counts as missing.
File open_read_write(const char *path)
{
    return File(path ? std::fopen(path, "r+b") : nullptr);
}

long file_size(std::FILE *f)
{
    if (std::fseek(f, 0, SEEK_END) != 0) return 0;
    long size = std::ftell(f);
    std::fseek(f, 0, SEEK_SET);
    return size < 0 ? 0 : size;
}

// Copies a string field up to and including its NUL.  A field without a NUL
// is cut at 67 characters and reported once.
void copy_string_field(char (&dst)[VEL_STRING_BYTES], const char (&src)[VEL_STRING_BYTES],
                       uint32_t object_number, const char *field)
{
    const void *nul = std::memchr(src, '\0', VEL_STRING_BYTES);
    if (nul) {
        std::memcpy(dst, src, static_cast<const char *>(nul) - src + 1);
        return;
    }
    std::memcpy(dst, src, VEL_STRING_BYTES - 1);
    dst[VEL_STRING_BYTES - 1] = '\0';
    std::printf("velumo: object %u: %s has no terminating NUL, cut at 67 characters\n",
                object_number, field);
}

void copy_record_into_object(const vel_object_file_rec &r, vel_object &o, uint32_t number)
{
    o.x = r.x;
    o.y = r.y;
    o.width = r.width;
    o.height = r.height;
    o.fill_r = r.fill_r;
    o.fill_g = r.fill_g;
    o.fill_b = r.fill_b;
    copy_string_field(o.label, r.label, number, "label");
    o.font_choice = r.font_choice;
    o.font_size = r.font_size;
    copy_string_field(o.font_path, r.font_path, number, "font_path");
    o.text_index = r.text_index;
    o.text_r = r.text_r;
    o.text_g = r.text_g;
    o.text_b = r.text_b;
    o.margin_left = r.margin_left;
    o.margin_right = r.margin_right;
    o.margin_top = r.margin_top;
    o.margin_bottom = r.margin_bottom;
    o.centred = r.centred;
    o.line_width = r.line_width;
    o.line_spacing = r.line_spacing;
    // Dependents start visible whatever their record says: the scene drawing
    // owns their flag.  Menus keep theirs; empty records never hide.
    if (r.type != VEL_TYPE_EMPTY && (r.master == 0 || r.type == VEL_TYPE_MENU)) o.hidden = r.hidden;
    o.type = r.type;
    o.window_kind = r.window_kind;
    o.editable = r.editable;
    o.text_length = r.text_length;
    o.max_chars = r.max_chars;
    o.border_style = r.border_style;
    o.border_inset = r.border_inset;
    o.border_r = r.border_r;
    o.border_g = r.border_g;
    o.border_b = r.border_b;
    o.master = r.master;
    if (r.dep_objs[0] != 0) {
        for (int i = 0; i < VEL_MAX_DEPENDENTS; ++i)
            if (r.dep_objs[i] != 0) o.dep_objs[i] = r.dep_objs[i];
    }
    o.scroll_max_x = r.scroll_max_x;
    o.scroll_max_y = r.scroll_max_y;
    copy_string_field(o.image_path, r.image_path, number, "image_path");
    o.clip_mode = r.clip_mode;
}

// Loads the form file into ctx->objects; false when it cannot be opened.
bool load_objects(vel_context *ctx, uint32_t extra_objs, const char *form_path)
{
    File file = open_read_write(form_path);
    if (!file) {
        std::puts("Can't open file.");
        return false;
    }
    const uint32_t count =
        static_cast<uint32_t>(file_size(file.get()) / sizeof(vel_object_file_rec));
    ctx->object_count = count;

    ctx->file_recs =
        static_cast<vel_object_file_rec *>(std::calloc(count + 1u, sizeof(vel_object_file_rec)));
    ctx->objects = static_cast<vel_object *>(
        std::calloc(static_cast<std::size_t>(extra_objs) + count + 1u, sizeof(vel_object)));
    // Only whole records are read: bytes short of a record never reach an object.
    std::size_t got =
        std::fread(ctx->file_recs + 1, sizeof(vel_object_file_rec), count, file.get());
    file.reset();

    for (uint32_t k = 1; k <= count && k <= got; ++k)
        copy_record_into_object(ctx->file_recs[k], ctx->objects[k], k);

    std::free(ctx->file_recs);
    ctx->file_recs = nullptr;
    return true;
}

bool texts_needed(const vel_context *ctx)
{
    for (uint32_t k = 1; k <= ctx->object_count; ++k)
        if (ctx->objects[k].text_index != 0) return true;
    return false;
}

// Loads the text file; false when it cannot be opened.  The line buffers get
// one spare, zeroed buffer behind the block: formatting may step from line
// 39 of the last buffer into "line 40", which lands there.
bool load_texts(vel_context *ctx, uint32_t extra_texts, const char *text_path)
{
    File file = open_read_write(text_path);
    if (!file) {
        std::puts("Can't open file !\n");
        return false;
    }
    const uint32_t count = static_cast<uint32_t>(file_size(file.get()) / sizeof(vel_text_rec));
    const std::size_t records = static_cast<std::size_t>(extra_texts) + count + 1u;
    ctx->text_count = count;
    ctx->text_recs = static_cast<vel_text_rec *>(std::calloc(records, sizeof(vel_text_rec)));
    ctx->text_bufs = static_cast<char *>(std::calloc(records + 1u, VEL_LINE_BUFFER_BYTES));
    std::size_t got = std::fread(ctx->text_recs + 1, sizeof(vel_text_rec), count, file.get());

    for (uint32_t t = 1; t <= count && t <= got; ++t) {
        char *text = ctx->text_recs[t].text;
        if (!std::memchr(text, '\0', VEL_TEXT_BYTES)) {
            text[VEL_TEXT_BYTES - 1] = '\0';
            std::printf("velumo: text %u: text has no terminating NUL, cut at 999 characters\n", t);
        }
    }
    return true;
}

} // namespace

extern "C" {

int32_t vel_load_form(vel_context *ctx, uint32_t extra_objs, uint32_t extra_texts,
                      const char *form_path, const char *text_path)
{
    if (!load_objects(ctx, extra_objs, form_path)) return -1;
    if (texts_needed(ctx) && !load_texts(ctx, extra_texts, text_path)) {
        std::free(ctx->objects);
        ctx->objects = nullptr;
        ctx->object_count = 0;
        return -1;
    }
    vel_load_object_images(ctx, 1);
    vel_load_object_fonts(ctx, 1);
    if (ctx->frame_mode == 0)
        ctx->mark_colour = ctx->mark_colour_a;
    else if (ctx->frame_mode == 1)
        ctx->mark_colour = ctx->mark_colour_b;
    return 1;
}

void vel_start_velumo(vel_context *ctx, uint32_t extra_objs, uint32_t extra_texts,
                      const char *form_path, const char *text_path)
{
    if (vel_load_form(ctx, extra_objs, extra_texts, form_path, text_path) != 1) std::exit(0);
}

int32_t vel_load_object_images(vel_context *ctx, uint32_t first)
{
    int32_t result = 0;
    for (uint32_t k = first == 0 ? 1 : first; k <= ctx->object_count; ++k) {
        vel_object &o = ctx->objects[k];
        if (o.type != VEL_TYPE_PICTURE_FILE) continue;
        SDL_Surface *picture = IMG_Load(o.image_path);
        if (!picture) {
            result = -1;
            continue;
        }
        o.image = picture;
        o.width = static_cast<uint32_t>(picture->w);
        o.height = static_cast<uint32_t>(picture->h);
        o.type = VEL_TYPE_PICTURE;
        result = 1;
    }
    return result;
}

int32_t vel_load_object_fonts(vel_context *ctx, uint32_t first)
{
    int32_t result = 0;
    for (uint32_t k = first == 0 ? 1 : first; k <= ctx->object_count; ++k) {
        vel_object &o = ctx->objects[k];
        if (o.font_choice != 1) continue;
        if (o.own_font) TTF_CloseFont(o.own_font);
        o.own_font = TTF_OpenFont(o.font_path, static_cast<int>(o.font_size));
        if (!o.own_font) {
            std::printf("TTF_OpenFont: %s\n", SDL_GetError());
            result = -1;
        } else {
            result = 1;
        }
    }
    return result;
}

void vel_close(vel_context *ctx)
{
    if (ctx->font) TTF_CloseFont(ctx->font);
    ctx->font = nullptr;
    SDL_FreeSurface(ctx->text_surface);
    ctx->text_surface = nullptr;
    SDL_FreeSurface(ctx->screen);
    ctx->screen = nullptr;

    if (ctx->objects) {
        for (uint32_t k = 1; k <= ctx->object_count; ++k) {
            vel_object &o = ctx->objects[k];
            if (o.font_choice == 1 && o.own_font) {
                TTF_CloseFont(o.own_font);
                o.own_font = nullptr;
            }
            if (o.type == VEL_TYPE_PICTURE && o.image) {
                SDL_FreeSurface(o.image);
                o.image = nullptr;
            }
        }
    }
    if (ctx->texts_loaded == 1) {
        std::free(ctx->text_recs);
        ctx->text_recs = nullptr;
        std::free(ctx->text_bufs);
        ctx->text_bufs = nullptr;
    }
    std::free(ctx->objects);
    ctx->objects = nullptr;

    TTF_Quit();
    SDL_Quit();
}

} // extern "C"

// The file records are read as they lie on disk: size and offsets are fixed.
static_assert(sizeof(vel_object_file_rec) == 776);
static_assert(offsetof(vel_object_file_rec, label) == 28);
static_assert(offsetof(vel_object_file_rec, font_choice) == 96);
static_assert(offsetof(vel_object_file_rec, font_path) == 104);
static_assert(offsetof(vel_object_file_rec, text_index) == 172);
static_assert(offsetof(vel_object_file_rec, margin_left) == 188);
static_assert(offsetof(vel_object_file_rec, centred) == 204);
static_assert(offsetof(vel_object_file_rec, hidden) == 224);
static_assert(offsetof(vel_object_file_rec, type) == 228);
static_assert(offsetof(vel_object_file_rec, text_length) == 248);
static_assert(offsetof(vel_object_file_rec, max_chars) == 260);
static_assert(offsetof(vel_object_file_rec, border_style) == 264);
static_assert(offsetof(vel_object_file_rec, master) == 284);
static_assert(offsetof(vel_object_file_rec, dep_objs) == 288);
static_assert(offsetof(vel_object_file_rec, scroll_max_x) == 696);
static_assert(offsetof(vel_object_file_rec, image_path) == 704);
static_assert(offsetof(vel_object_file_rec, clip_mode) == 772);
static_assert(sizeof(vel_text_rec) == 1008);
static_assert(offsetof(vel_text_rec, text) == 8);
