// libFuzzer entry point of the form target (clang builds with VELUMO_FUZZ only);
// the harness itself is velumo_fuzz_form in form_target.cpp.
#include "harness.hpp"

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    velumo::fuzz::silence_stdout();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    return velumo_fuzz_form(data, size);
}
