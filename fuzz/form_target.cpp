// The form target: arbitrary form and text file bytes go through loading,
// formatting, drawing, hit testing, selecting every object, and closing.
#include "harness.hpp"
#include "session.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

using namespace velumo::fuzz;

uint32_t read_le32(const uint8_t *p)
{
    return static_cast<uint32_t>(p[0]) | static_cast<uint32_t>(p[1]) << 8 |
           static_cast<uint32_t>(p[2]) << 16 | static_cast<uint32_t>(p[3]) << 24;
}

// Own fonts of whole records are capped at kMaxFontSize (see harness.hpp);
// every other byte reaches the library as the input has it.
void cap_font_sizes(std::vector<uint8_t> &form)
{
    const std::size_t records = form.size() / sizeof(vel_object_file_rec);
    for (std::size_t k = 0; k < records; ++k) {
        uint8_t *record = form.data() + k * sizeof(vel_object_file_rec);
        uint32_t size = 0;
        std::memcpy(&size, record + offsetof(vel_object_file_rec, font_size), sizeof size);
        if (size <= kMaxFontSize) continue;
        size = kMaxFontSize;
        std::memcpy(record + offsetof(vel_object_file_rec, font_size), &size, sizeof size);
    }
}

void give_streams_to_chain_heads(vel_context &ctx, char *stream)
{
    for (uint32_t k = 1; k <= ctx.object_count; ++k) {
        vel_object &o = ctx.objects[k];
        if (o.type == VEL_TYPE_CHAIN && o.master == 0) o.stream = stream;
    }
}

// Points on and around every object (its corners, the pixels just inside and
// outside them, its centre), where the strict edge rules decide, plus the far
// corners of the coordinate range, which reach the signed comparisons.
void hit_test_objects(vel_context &ctx)
{
    const auto test = [&ctx](uint32_t x, uint32_t y) { vel_test_all_objects(&ctx, x, y); };
    for (uint32_t k = 1; k <= ctx.object_count; ++k) {
        const vel_object &o = ctx.objects[k];
        const uint32_t right = o.x + o.width - 1, bottom = o.y + o.height - 1;
        test(o.x, o.y);
        test(o.x + 1, o.y + 1);
        test(o.x + o.width / 2, o.y + o.height / 2);
        test(right - 1, bottom - 1);
        test(right, bottom);
        test(right + 1, bottom + 1);
    }
    test(0x7FFFFFFF, 0x7FFFFFFF);
    test(0x80000000, 0xFFFFFFFF);
}

} // namespace

int velumo_fuzz_form(const uint8_t *data, size_t size)
{
    if (size < kFormHeaderBytes) return 0;
    const uint8_t *form_bytes = data + kFormHeaderBytes;
    const std::size_t body = size - kFormHeaderBytes;
    const std::size_t form_length = std::min<std::size_t>(read_le32(data), body);
    const std::size_t text_length = std::min<std::size_t>(read_le32(data + 4), body - form_length);
    const uint8_t *text_bytes = form_bytes + form_length;
    const uint8_t *stream_bytes = text_bytes + text_length;
    const uint8_t options = data[8];

    std::vector<uint8_t> form(form_bytes, form_bytes + form_length);
    cap_font_sizes(form);
    const std::string form_path = work_dir() + "/form.vel";
    const std::string text_path = work_dir() + "/texts.vel";
    const std::string stream_path = work_dir() + "/stream.txt";
    write_file(form_path, form.data(), form.size());
    write_file(text_path, text_bytes, text_length);
    write_file(stream_path, stream_bytes, body - form_length - text_length);

    Session session;
    vel_context &ctx = session.ctx();
    ctx.umlaut_conversion = options & 1u;
    ctx.frame_mode = (options >> 1) & 3u;
    if (vel_load_form(&ctx, 2, 2, form_path.c_str(), text_path.c_str()) != 1) return 0;
    char *stream = vel_read_external_stream(stream_path.c_str());
    give_streams_to_chain_heads(ctx, stream);

    vel_draw_all_objects(&ctx, 1, 0);
    hit_test_objects(ctx);
    for (uint32_t k = 1; k <= ctx.object_count; ++k) {
        ctx.window_to_activate = k;
        vel_select_window(&ctx);
    }
    hit_test_objects(ctx);

    session.close();
    std::free(stream);
    return 0;
}
