// Start-up and shutdown: reads the form and text files into the context,
// opens the objects' pictures and fonts, and releases everything at the end.
#include "model/tables.hpp"
#include "model/text_cache.hpp"

#include <SDL_image.h>

#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

static_assert(std::endian::native == std::endian::little,
              "form files are little-endian and are read record by record");

namespace {

struct FileCloser {
    void operator()(std::FILE *f) const { std::fclose(f); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

// vel_start_velumo opens the files for reading and writing, so a file that
// may not be written counts as missing there; vel_load_form only reads, so
// forms installed read-only load.
enum class Access { read_write, read_only };

enum class LoadStatus { loaded, form_missing, texts_missing, out_of_memory };

// Opens a form or text file; on failure the reason goes to standard error.
File open_file(const char *path, Access access, const char *what)
{
    File file(path ? std::fopen(path, access == Access::read_write ? "r+b" : "rb") : nullptr);
    if (!file)
        std::fprintf(stderr, "velumo: cannot open %s file '%s': %s\n", what, path ? path : "(null)",
                     path ? std::strerror(errno) : "no path given");
    return file;
}

long file_size(std::FILE *f)
{
    if (std::fseek(f, 0, SEEK_END) != 0) return 0;
    long size = std::ftell(f);
    std::fseek(f, 0, SEEK_SET);
    return size < 0 ? 0 : size;
}

// Bytes short of a whole record are never read; say so once.
void warn_partial_records(const char *path, const char *what, long size, std::size_t record)
{
    const auto bytes = static_cast<std::size_t>(size);
    if (bytes < record)
        std::fprintf(stderr, "velumo: warning: %s file '%s' holds no whole %zu-byte record\n", what,
                     path, record);
    else if (bytes % record != 0)
        std::fprintf(stderr,
                     "velumo: warning: %s file '%s' ends in %zu bytes that are no whole %zu-byte "
                     "record; they are ignored\n",
                     what, path, bytes % record, record);
}

// Frees a table of the context and forgets it, so nothing frees it twice.
template <class T> void release(T *&table)
{
    std::free(table);
    table = nullptr;
}

void report_out_of_memory(const char *path, const char *what, std::size_t records)
{
    std::fprintf(stderr, "velumo: out of memory loading %s file '%s' (%zu records)\n", what, path,
                 records);
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

// A master outside the table, or the object itself, makes the object top
// level; the record is reported once.
uint32_t checked_master(const vel_object_file_rec &r, uint32_t number, uint32_t capacity)
{
    if (r.master == number) {
        std::printf("velumo: object %u: master is the object itself, set to 0\n", number);
        return 0;
    }
    if (r.master >= capacity) {
        std::printf("velumo: object %u: master %u is outside the table, set to 0\n", number,
                    r.master);
        return 0;
    }
    return r.master;
}

// Copies the dependents; entries outside the table become 0, reported once
// for the record with the first of them.
void copy_dependents(const vel_object_file_rec &r, vel_object &o, uint32_t number,
                     uint32_t capacity)
{
    if (r.dep_objs[0] == 0) return;
    bool reported = false;
    for (int i = 0; i < VEL_MAX_DEPENDENTS; ++i) {
        const uint32_t d = r.dep_objs[i];
        if (d == 0) continue;
        if (d < capacity) {
            o.dep_objs[i] = d;
        } else if (!reported) {
            std::printf("velumo: object %u: dep_objs entry %u is outside the table, set to 0\n",
                        number, d);
            reported = true;
        }
    }
}

void copy_record_into_object(const vel_object_file_rec &r, vel_object &o, uint32_t number,
                             uint32_t capacity)
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
    o.master = checked_master(r, number, capacity);
    // Dependents start visible whatever their record says: the scene drawing
    // owns their flag.  Menus keep theirs; empty records never hide.
    if (r.type != VEL_TYPE_EMPTY && (o.master == 0 || r.type == VEL_TYPE_MENU)) o.hidden = r.hidden;
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
    copy_dependents(r, o, number, capacity);
    o.scroll_max_x = r.scroll_max_x;
    o.scroll_max_y = r.scroll_max_y;
    copy_string_field(o.image_path, r.image_path, number, "image_path");
    o.clip_mode = r.clip_mode;
}

// Loads the form file into ctx->objects.  On failure nothing stays allocated.
LoadStatus load_objects(vel_context *ctx, uint32_t extra_objs, const char *form_path, Access access)
{
    File file = open_file(form_path, access, "form");
    if (!file) {
        std::puts("Can't open file.");
        return LoadStatus::form_missing;
    }
    const long size = file_size(file.get());
    warn_partial_records(form_path, "form", size, sizeof(vel_object_file_rec));
    const uint32_t count = static_cast<uint32_t>(size / sizeof(vel_object_file_rec));

    const std::size_t records = static_cast<std::size_t>(extra_objs) + count + 1u;
    ctx->file_recs = static_cast<vel_object_file_rec *>(
        std::calloc(static_cast<std::size_t>(count) + 1u, sizeof(vel_object_file_rec)));
    ctx->objects = static_cast<vel_object *>(std::calloc(records, sizeof(vel_object)));
    if (!ctx->file_recs || !ctx->objects) {
        report_out_of_memory(form_path, "form", records);
        release(ctx->file_recs);
        release(ctx->objects);
        return LoadStatus::out_of_memory;
    }
    ctx->object_count = count;
    // Record 0 is never an object: it keeps the table's size for the range
    // checks (a size beyond 32 bits is recorded as the largest number).
    const auto capacity = static_cast<uint32_t>(std::min<std::size_t>(records, UINT32_MAX));
    ctx->objects[0].reserved = capacity;
    // Only whole records are read: bytes short of a record never reach an object.
    std::size_t got =
        std::fread(ctx->file_recs + 1, sizeof(vel_object_file_rec), count, file.get());
    file.reset();

    for (uint32_t k = 1; k <= count && k <= got; ++k)
        copy_record_into_object(ctx->file_recs[k], ctx->objects[k], k, capacity);

    release(ctx->file_recs);
    return LoadStatus::loaded;
}

bool texts_needed(const vel_context *ctx)
{
    for (uint32_t k = 1; k <= ctx->object_count; ++k)
        if (ctx->objects[k].text_index != 0) return true;
    return false;
}

// Loads the text file.  The line buffers get one spare, zeroed buffer behind
// the block: formatting may step from line 39 of the last buffer into "line
// 40", which lands there.  On failure nothing stays allocated.
LoadStatus load_texts(vel_context *ctx, uint32_t extra_texts, const char *text_path, Access access)
{
    File file = open_file(text_path, access, "text");
    if (!file) {
        std::puts("Can't open file !\n");
        return LoadStatus::texts_missing;
    }
    const long size = file_size(file.get());
    warn_partial_records(text_path, "text", size, sizeof(vel_text_rec));
    const uint32_t count = static_cast<uint32_t>(size / sizeof(vel_text_rec));
    const std::size_t records = static_cast<std::size_t>(extra_texts) + count + 1u;
    ctx->text_recs = static_cast<vel_text_rec *>(std::calloc(records, sizeof(vel_text_rec)));
    ctx->text_bufs = static_cast<char *>(std::calloc(records + 1u, VEL_LINE_BUFFER_BYTES));
    if (!ctx->text_recs || !ctx->text_bufs) {
        report_out_of_memory(text_path, "text", records);
        release(ctx->text_recs);
        release(ctx->text_bufs);
        return LoadStatus::out_of_memory;
    }
    ctx->text_count = count;
    // Record 0 holds no text: it keeps the number of text records.
    ctx->text_recs[0].reserved = static_cast<uint32_t>(std::min<std::size_t>(records, UINT32_MAX));
    std::size_t got = std::fread(ctx->text_recs + 1, sizeof(vel_text_rec), count, file.get());

    for (uint32_t t = 1; t <= count && t <= got; ++t) {
        char *text = ctx->text_recs[t].text;
        if (!std::memchr(text, '\0', VEL_TEXT_BYTES)) {
            text[VEL_TEXT_BYTES - 1] = '\0';
            std::printf("velumo: text %u: text has no terminating NUL, cut at 999 characters\n", t);
        }
    }
    return LoadStatus::loaded;
}

// A text_index outside the text records leaves the object without text.
void check_text_indexes(vel_context *ctx)
{
    const uint32_t capacity = velumo::detail::text_capacity(ctx);
    for (uint32_t k = 1; k <= ctx->object_count; ++k) {
        uint32_t &t = ctx->objects[k].text_index;
        if (t == 0 || t < capacity) continue;
        std::printf("velumo: object %u: text_index %u is outside the text records, set to 0\n", k,
                    t);
        t = 0;
    }
}

// Reports each object whose master chain comes back to it.  The chains are
// left as they are: every walk up a chain stops on a cycle.
void report_master_cycles(const vel_context *ctx)
{
    const uint32_t count = ctx->object_count;
    const vel_object *objects = ctx->objects;
    // The number of the walk that reached each object first.
    std::vector<uint32_t> reached_by(count + 1u, 0);
    for (uint32_t k = 1; k <= count; ++k) {
        uint32_t n = k;
        while (n != 0 && n <= count && reached_by[n] == 0) {
            reached_by[n] = k;
            n = objects[n].master;
        }
        // Spare records are empty: a chain through one ends there.
        if (n == 0 || n > count || reached_by[n] != k) continue;
        uint32_t member = n;
        do {
            std::printf("velumo: object %u: master chain runs in a cycle\n", member);
            member = objects[member].master;
        } while (member != n);
    }
}

// Reports each object whose dep_objs list leads back to an object that
// contains it, depth first as the walks go (up to the first 0 entry).  The
// lists are left as they are: the walks skip such entries.
void report_dependent_cycles(const vel_context *ctx)
{
    const uint32_t count = ctx->object_count;
    enum class State : uint8_t { unseen, open, done };
    std::vector<State> state(count + 1u, State::unseen);
    std::vector<bool> reported(count + 1u, false);
    struct Level {
        uint32_t obj;
        int next;
    };
    std::vector<Level> path;
    for (uint32_t k = 1; k <= count; ++k) {
        if (state[k] != State::unseen) continue;
        state[k] = State::open;
        path.push_back({k, 0});
        while (!path.empty()) {
            Level &level = path.back();
            const uint32_t *dependents = ctx->objects[level.obj].dep_objs;
            if (level.next == VEL_MAX_DEPENDENTS || dependents[level.next] == 0) {
                state[level.obj] = State::done;
                path.pop_back();
                continue;
            }
            const uint32_t d = dependents[level.next++];
            if (d > count) continue;
            if (state[d] == State::open && !reported[level.obj]) {
                std::printf("velumo: object %u: dep_objs entry %u closes a cycle\n", level.obj, d);
                reported[level.obj] = true;
            } else if (state[d] == State::unseen) {
                state[d] = State::open;
                path.push_back({d, 0});
            }
        }
    }
}

// TTF_OpenFont with the file opened here: SDL_ttf hands SDL's message about
// a file it cannot open to its error setter as a format, so a path holding
// '%' would make it read (or with "%n" write) through stray arguments.  The
// message printed on failure stays SDL's "Couldn't open <path>".
TTF_Font *open_font(const char *path, int size)
{
    SDL_RWops *file = SDL_RWFromFile(path, "rb");
    return file ? TTF_OpenFontRW(file, 1, size) : nullptr;
}

// Start-up in the order the form needs it; on failure nothing stays allocated.
LoadStatus load_form(vel_context *ctx, uint32_t extra_objs, uint32_t extra_texts,
                     const char *form_path, const char *text_path, Access access)
{
    const LoadStatus objects = load_objects(ctx, extra_objs, form_path, access);
    if (objects != LoadStatus::loaded) return objects;
    if (texts_needed(ctx)) {
        const LoadStatus texts = load_texts(ctx, extra_texts, text_path, access);
        if (texts != LoadStatus::loaded) {
            release(ctx->objects);
            ctx->object_count = 0;
            return texts;
        }
    }
    check_text_indexes(ctx);
    report_master_cycles(ctx);
    report_dependent_cycles(ctx);
    vel_load_object_images(ctx, 1);
    vel_load_object_fonts(ctx, 1);
    if (ctx->frame_mode == VEL_FRAME_MODE_RESIZE)
        ctx->mark_colour = ctx->mark_colour_a;
    else if (ctx->frame_mode == VEL_FRAME_MODE_SCROLL)
        ctx->mark_colour = ctx->mark_colour_b;
    return LoadStatus::loaded;
}

} // namespace

extern "C" {

int32_t vel_load_form(vel_context *ctx, uint32_t extra_objs, uint32_t extra_texts,
                      const char *form_path, const char *text_path)
{
    return load_form(ctx, extra_objs, extra_texts, form_path, text_path, Access::read_only) ==
                   LoadStatus::loaded
               ? 1
               : -1;
}

void vel_start_velumo(vel_context *ctx, uint32_t extra_objs, uint32_t extra_texts,
                      const char *form_path, const char *text_path)
{
    switch (load_form(ctx, extra_objs, extra_texts, form_path, text_path, Access::read_write)) {
    case LoadStatus::loaded: return;
    case LoadStatus::out_of_memory: std::exit(1);
    default: std::exit(0);
    }
}

int32_t vel_load_object_images(vel_context *ctx, uint32_t first)
{
    int32_t result = 0;
    const uint32_t last = velumo::detail::loaded_object_count(ctx);
    for (uint32_t k = first == 0 ? 1 : first; k <= last; ++k) {
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
    const uint32_t last = velumo::detail::loaded_object_count(ctx);
    for (uint32_t k = first == 0 ? 1 : first; k <= last; ++k) {
        vel_object &o = ctx->objects[k];
        if (o.font_choice != VEL_FONT_OWN) continue;
        if (o.own_font) {
            // Its lines must not be taken for those of a font opened at its address.
            velumo::detail::clear_text_cache(ctx);
            TTF_CloseFont(o.own_font);
        }
        o.own_font = open_font(o.font_path, static_cast<int>(o.font_size));
        if (!o.own_font) {
            std::printf("TTF_OpenFont: %s\n", SDL_GetError());
            result = -1;
        } else {
            result = 1;
        }
    }
    return result;
}

void vel_unload_form(vel_context *ctx)
{
    velumo::detail::clear_text_cache(ctx);
    if (ctx->objects) {
        const uint32_t last = velumo::detail::loaded_object_count(ctx);
        for (uint32_t k = 1; k <= last; ++k) {
            vel_object &o = ctx->objects[k];
            if (o.font_choice == VEL_FONT_OWN && o.own_font) {
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
        release(ctx->text_recs);
        release(ctx->text_bufs);
        ctx->text_count = 0;
    }
    release(ctx->objects);
    ctx->object_count = 0;
    // Numbers of the unloaded objects mean nothing any more.
    ctx->active_window = 0;
    ctx->window_to_activate = 0;
    ctx->cursor_object = 0;
    ctx->window_count = 0;
}

void vel_close(vel_context *ctx)
{
    if (ctx->font) TTF_CloseFont(ctx->font);
    ctx->font = nullptr;
    SDL_FreeSurface(ctx->text_surface);
    ctx->text_surface = nullptr;
    SDL_FreeSurface(ctx->screen);
    ctx->screen = nullptr;
    vel_unload_form(ctx);
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
