// The TOML target: arbitrary text through the form reader and its checks,
// and every form it accepts through the writer and back.
#include "velform_harness.hpp"

#include "toml_reader.hpp"
#include "velform_round_trip.hpp"

#include <sstream>
#include <string_view>

int velform_fuzz_toml(const uint8_t *data, size_t size)
{
    using namespace velform;
    const std::string_view source(reinterpret_cast<const char *>(data), size);
    Diagnostics diagnostics;
    const std::optional<Form> form =
        read_toml_form(source, velform::fuzz::kFormFile, std::nullopt, diagnostics);
    std::ostringstream messages;
    diagnostics.print(messages);
    if (!form) return 0;

    fuzz::require_round_trip(*form, "");
    return 0;
}
