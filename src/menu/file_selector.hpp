// Internals of the file selector shared with its tests: the display order
// of the directory listing.
#pragma once

#include "velumo.h"

namespace velumo::detail {

// Orders dir_order[0..dir_last] by the first character of each name only,
// by exchanges: position i takes the first later name that starts with a
// smaller byte and is looked at again, until no later name does.
void order_by_first_character(vel_context *ctx);

} // namespace velumo::detail
