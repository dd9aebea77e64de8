// What the text module offers the modules above it: formatting an object's
// text, preparing a caption and flowing a chain master's stream.
#pragma once

#include "velumo.h"

#include <cstdint>

namespace velumo::detail {

// Breaks the text record of a window or text object into its line buffer;
// the index of the last line written, 0 when there was nothing to format.
uint32_t format_object_text(vel_context *ctx, uint32_t obj);

// Cuts the label of a one-line object at its first line feed and centres a
// button's caption; 1 or 2 for a centred button, 3 for entry fields, else 0.
uint32_t format_caption(vel_context *ctx, uint32_t obj);

// Flows the stream of chain master `master` through its members; the line
// index reached in the last member used.
uint32_t flow_chain(vel_context *ctx, uint32_t master);

} // namespace velumo::detail
