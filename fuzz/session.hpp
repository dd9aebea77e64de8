// What every fuzz input runs in: a fresh headless SDL screen with the font and
// a zeroed context, and the per-process directory the input's files go into.
#pragma once

#include "velumo.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace velumo::fuzz {

// A directory of this process (in /dev/shm where there is one, else beside
// kPicturePath), removed at exit (and by a later process when this one
// crashed).  On first use it receives the sample form
// (examples/sample_form.hpp), and the shared picture is put at kPicturePath.
const std::string &work_dir();

// Empties SDL's event queue.
void drain_events();

// What every input starts from: no events queued, the pointer at (0, 0).
void reset_input_state();

// Changes whenever the shared display is set up anew (after something in the
// process quit SDL): anything made on the old one is stale.
uint32_t display_generation();

// Writes size bytes to path, replacing the file.
void write_file(const std::string &path, const uint8_t *data, std::size_t size);

// A zeroed context as an application sets it up, on SDL's dummy video driver
// at 640 x 480 x 32 with the DejaVu font.  The display and the font are made
// once per process and shared by every session; close (or the destructor)
// releases the session's form with vel_unload_form and keeps them.
class Session {
public:
    Session();
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    vel_context &ctx() { return *ctx_; }
    const vel_context &ctx() const { return *ctx_; }
    void close();

private:
    std::unique_ptr<vel_context> ctx_;
    bool open_ = true;
};

} // namespace velumo::fuzz
