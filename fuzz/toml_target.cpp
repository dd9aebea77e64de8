// The TOML target: arbitrary text through the form reader and its checks,
// and every form it accepts through the writer and back.
#include "velform_harness.hpp"

#include "toml_reader.hpp"
#include "toml_writer.hpp"

#include <cstdlib>
#include <sstream>
#include <string_view>

namespace {

// Relative paths in fuzz inputs are looked for below this directory.
constexpr const char *kFormFile = "/tmp/velform-fuzz/form.toml";

} // namespace

int velform_fuzz_toml(const uint8_t *data, size_t size)
{
    using namespace velform;
    const std::string_view source(reinterpret_cast<const char *>(data), size);
    Diagnostics diagnostics;
    const std::optional<Form> form = read_toml_form(source, kFormFile, std::nullopt, diagnostics);
    std::ostringstream messages;
    diagnostics.print(messages);
    if (!form) return 0;

    std::ostringstream written;
    write_toml_form(*form, "", written);
    Diagnostics again;
    const std::optional<Form> back = read_toml_form(written.str(), kFormFile, std::nullopt, again);
    if (!back || object_file_bytes(*back) != object_file_bytes(*form) ||
        text_file_bytes(*back) != text_file_bytes(*form))
        std::abort();
    return 0;
}
