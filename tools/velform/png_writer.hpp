// Saving an SDL surface of any depth as an 8-bit RGB PNG file.
#pragma once

#include <SDL.h>

#include <filesystem>
#include <string>

namespace velform {

// False with `error` set when the file cannot be written.
bool write_png(const std::filesystem::path &path, SDL_Surface *surface, std::string &error);

} // namespace velform
