// The scripted tour: the events a person would cause, handled by the
// application as in a window, with one PNG picture per step.
#pragma once

#include "app.hpp"

#include <filesystem>

namespace demo {

// Runs the tour in `app` and writes the pictures into `directory`, which
// exists.  Returns false, with a message on standard error, when a
// picture cannot be written.
bool run_tour(App &app, const std::filesystem::path &directory);

} // namespace demo
