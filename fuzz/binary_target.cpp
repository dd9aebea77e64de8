// The binary target: arbitrary form and text file bytes through the binary
// reader and its checks, and every form it accepts through decompiling.
#include "velform_harness.hpp"

#include "binary_form.hpp"
#include "toml_reader.hpp"
#include "velform_round_trip.hpp"

#include <algorithm>
#include <span>

namespace {

constexpr std::size_t kHeaderBytes = 5;

uint32_t read_le32(const uint8_t *p)
{
    return static_cast<uint32_t>(p[0]) | static_cast<uint32_t>(p[1]) << 8 |
           static_cast<uint32_t>(p[2]) << 16 | static_cast<uint32_t>(p[3]) << 24;
}

} // namespace

int velform_fuzz_binary(const uint8_t *data, size_t size)
{
    using namespace velform;
    if (size < kHeaderBytes) return 0;
    const std::span<const uint8_t> body(data + kHeaderBytes, size - kHeaderBytes);
    const std::size_t form_length = std::min<std::size_t>(read_le32(data), body.size());
    std::optional<std::span<const uint8_t>> texts;
    if (data[4] & 1u) texts = body.subspan(form_length);
    Diagnostics diagnostics;
    std::optional<Form> form =
        read_binary_form(body.first(form_length), texts, "form.vfm", "form.vtx", diagnostics);
    std::ostringstream messages;
    diagnostics.print(messages);
    // An empty form file has no TOML of its own: the format always has
    // frame buttons.
    if (!form || form->objects.empty()) return 0;

    for (vel_object_file_rec &object : form->objects)
        object = without_unread_bytes(object);
    for (vel_text_rec &text : form->texts)
        text = without_unread_bytes(text);
    fuzz::require_round_trip(*form, "form.vfm");
    return 0;
}
