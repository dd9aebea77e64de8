// What every fuzz input runs in: a fresh headless SDL screen with the font and
// a zeroed context, and the per-process directory the input's files go into.
#pragma once

#include "velumo.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace velumo::fuzz {

// A directory of this process beside kPicturePath, removed at exit (and by
// a later process when this one crashed).  On first use it receives the
// sample form (examples/sample_form.hpp), and the shared picture is put at
// kPicturePath.
const std::string &work_dir();

// Writes size bytes to path, replacing the file.
void write_file(const std::string &path, const uint8_t *data, std::size_t size);

// SDL with the dummy video driver at 640 x 480 x 32, SDL_ttf and the DejaVu
// font, and a zeroed context holding them, as an application sets it up.
// vel_close ends the session (it quits SDL); the destructor calls it when
// the harness has not.
class Session {
public:
    Session();
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    vel_context &ctx() { return *ctx_; }
    void close();

private:
    std::unique_ptr<vel_context> ctx_;
    bool open_ = true;
};

} // namespace velumo::fuzz
