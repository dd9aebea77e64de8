// The form tool's fuzz harnesses: the TOML reader and the binary reader,
// each followed by a round trip through the TOML writer that must hold.
#pragma once

#include <cstddef>
#include <cstdint>

// TOML target.  The input is a TOML form.  A form that reads without errors
// is written back as TOML and read again; the records must be the same, or
// the harness aborts.  Returns 0.
int velform_fuzz_toml(const uint8_t *data, size_t size);

// Binary target.  Bytes 0..3 give the length of the form file part
// (little-endian, cut to what is left), bit 0 of byte 4 says whether a text
// file exists; the form file follows from byte 5, the text file is the
// rest.  A form that reads without errors is decompiled and compiled again;
// the records must be the same as the input's, with the bytes the library
// never reads cleared, or the harness aborts.  Returns 0.
int velform_fuzz_binary(const uint8_t *data, size_t size);
