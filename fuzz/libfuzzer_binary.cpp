// libFuzzer entry point of the form tool's binary target (clang builds with
// VELUMO_FUZZ only); the harness itself is velform_fuzz_binary in binary_target.cpp.
#include "velform_harness.hpp"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    return velform_fuzz_binary(data, size);
}
