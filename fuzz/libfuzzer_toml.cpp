// libFuzzer entry point of the form tool's toml target (clang builds with
// VELUMO_FUZZ only); the harness itself is velform_fuzz_toml in toml_target.cpp.
#include "velform_harness.hpp"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    return velform_fuzz_toml(data, size);
}
