// The file selector: rows made from a template row, the current directory
// read and ordered into the context, and the names written into the rows.
#include "menu/file_selector.hpp"

#include "model/strings.hpp"
#include "model/tables.hpp"

#include <algorithm>
#include <cstring>
#include <dirent.h>
#include <memory>
#include <utility>

namespace velumo::detail {

namespace {

constexpr uint32_t longest_name = VEL_DIR_NAME_BYTES - 1;

unsigned char first_character(const vel_context *ctx, uint32_t position)
{
    const uint32_t name = ctx->dir_order[position];
    if (name >= VEL_DIR_ENTRIES) return 0;
    return static_cast<unsigned char>(ctx->dir_names[name][0]);
}

} // namespace

void order_by_first_character(vel_context *ctx)
{
    const uint32_t last = std::min<uint32_t>(ctx->dir_last, VEL_DIR_ENTRIES - 1);
    uint32_t i = 0;
    while (i < last) {
        const unsigned char c = first_character(ctx, i);
        uint32_t b = i + 1;
        while (b <= last && first_character(ctx, b) >= c)
            ++b;
        if (b <= last)
            std::swap(ctx->dir_order[i], ctx->dir_order[b]);
        else
            ++i;
    }
}

} // namespace velumo::detail

namespace {

using namespace velumo::detail;

// Rows sit 3 pixels apart; the list is 40 pixels taller than its rows.
constexpr uint32_t row_gap = 3;
constexpr uint32_t list_extra_height = 40;
constexpr uint32_t row_width = 180;

struct DirCloser {
    void operator()(DIR *dir) const { closedir(dir); }
};

// Copies at most 64 characters and the terminator.
void store_name(char (&slot)[VEL_DIR_NAME_BYTES], const char *name)
{
    const std::size_t length = strnlen(name, longest_name);
    std::memcpy(slot, name, length);
    slot[length] = '\0';
}

// Writes listing entry `name` into the row's label; a name without a
// terminator in its slot is cut at 64 characters.
void show_name(vel_context *ctx, vel_object &row, uint32_t name)
{
    char bounded[VEL_DIR_NAME_BYTES] = {};
    if (name < VEL_DIR_ENTRIES) {
        std::memcpy(bounded, ctx->dir_names[name], longest_name);
        bounded[longest_name] = '\0';
    }
    copy_string(bounded, row.label);
}

} // namespace

extern "C" {

void vel_prepare_fileselector(vel_context *ctx, uint32_t list, uint32_t n)
{
    list = object_number(ctx, list);
    vel_object &l = object(ctx, list);
    const uint32_t t = object_number(ctx, l.dep_objs[0]);
    if (t == 0) return;
    // At most one row past the loaded objects is made, and only rows whose
    // records the table has.
    for (uint32_t k = 1; k <= n && k < VEL_MAX_DEPENDENTS; ++k) {
        if (k > 1 && t + k - 1 > loaded_object_count(ctx)) break;
        if (object_number(ctx, t + k) == 0) break;
        const vel_object &templ = object(ctx, t);
        vel_object &row = object(ctx, t + k);
        l.dep_objs[k] = t + k;
        row.type = templ.type;
        row.x = templ.x;
        row.y = templ.y + (templ.height + row_gap) * k;
        row.width = templ.width;
        row.height = templ.height;
        row.master = list;
        row.fill_r = templ.fill_r;
        row.fill_g = templ.fill_g;
        row.fill_b = templ.fill_b;
        row.text_r = templ.text_r;
        row.text_g = templ.text_g;
        row.text_b = templ.text_b;
        row.margin_top = templ.margin_top;
        row.margin_left = templ.margin_left;
    }
}

void vel_read_app_dir(vel_context *ctx)
{
    const std::unique_ptr<DIR, DirCloser> dir(opendir("."));
    if (!dir) return;
    uint32_t stored = 0;
    // The entry after the hundredth is still read, then dropped.
    while (const dirent *entry = readdir(dir.get())) {
        if (stored == VEL_DIR_ENTRIES) break;
        store_name(ctx->dir_names[stored++], entry->d_name);
    }
    if (stored == 0) {
        // Nothing delivered (a removed directory): one empty name, which
        // vel_load_dir_entries does not show.
        ctx->dir_names[0][0] = '\0';
        stored = 1;
    }
    ctx->dir_last = stored - 1;
    for (uint32_t i = 0; i < stored; ++i)
        ctx->dir_order[i] = i;
    order_by_first_character(ctx);
}

void vel_load_dir_entries(vel_context *ctx, uint32_t list)
{
    if (ctx->dir_last == 0) return;
    // The listing has 100 entries, whatever dir_last says.
    const uint32_t last = std::min<uint32_t>(ctx->dir_last, VEL_DIR_ENTRIES - 1);
    uint32_t filled = 0;
    for_each_dependent(ctx, list, [ctx, &filled, last](uint32_t r) {
        if (filled > last) return false;
        vel_object &row = object(ctx, r);
        show_name(ctx, row, ctx->dir_order[filled]);
        row.hidden = 0;
        row.width = row_width;
        ++filled;
        return true;
    });

    vel_object &l = object(ctx, list);
    if (const uint32_t first = object_number(ctx, l.dep_objs[0]); first != 0)
        l.height = filled * (object(ctx, first).height + row_gap) + list_extra_height;

    if (filled >= 1 && filled < VEL_MAX_DEPENDENTS) {
        uint32_t index = 0;
        for_each_dependent(ctx, list, [ctx, &index, filled](uint32_t r) {
            if (index++ >= filled) {
                object(ctx, r).hidden = 1;
                object(ctx, r).width = 0;
            }
            return true;
        });
    }
}

} // extern "C"
