// The string helpers other modules use, with typed results: lengths and the
// copy up to a terminator.
#pragma once

#include <cstdint>

namespace velumo::detail {

// Characters before the NUL.
uint32_t string_length(const char *s);

// Copies the first byte, then bytes up to the NUL, then a NUL; the index of
// the terminator written, 1 for an empty source.
uint32_t copy_string(const char *src, char *dst);

} // namespace velumo::detail
