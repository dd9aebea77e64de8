// The PNG writer: each pixel read through the surface's own format, rows
// handed to libpng, which reports failures through its longjmp handler.
#include "png_writer.hpp"

#include <png.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

namespace velform {

namespace {

struct FileCloser {
    void operator()(std::FILE *file) const { std::fclose(file); }
};

Uint32 pixel_at(const SDL_Surface *surface, int x, int y)
{
    const auto *row = static_cast<const Uint8 *>(surface->pixels) + y * surface->pitch;
    const int bytes = surface->format->BytesPerPixel;
    Uint32 pixel = 0;
    if (bytes == 3) {
        const Uint8 *p = row + x * 3;
        pixel = SDL_BYTEORDER == SDL_LIL_ENDIAN ? p[0] | p[1] << 8 | p[2] << 16
                                                : p[2] | p[1] << 8 | p[0] << 16;
    } else {
        std::memcpy(&pixel, row + x * bytes, static_cast<std::size_t>(bytes));
        if (bytes == 1) pixel &= 0xFF;
        if (bytes == 2) pixel &= 0xFFFF;
    }
    return pixel;
}

std::vector<png_byte> rgb_rows(SDL_Surface *surface)
{
    std::vector<png_byte> rgb(static_cast<std::size_t>(surface->w) * surface->h * 3);
    SDL_LockSurface(surface);
    std::size_t i = 0;
    for (int y = 0; y < surface->h; ++y)
        for (int x = 0; x < surface->w; ++x) {
            Uint8 r, g, b;
            SDL_GetRGB(pixel_at(surface, x, y), surface->format, &r, &g, &b);
            rgb[i++] = r;
            rgb[i++] = g;
            rgb[i++] = b;
        }
    SDL_UnlockSurface(surface);
    return rgb;
}

// libpng leaves a failed call by longjmp, so nothing with a destructor may
// live in this frame between setjmp and the end.
bool encode(std::FILE *file, int width, int height, std::vector<png_bytep> &rows)
{
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info || setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        return false;
    }
    png_init_io(png, file);
    png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), 8,
                 PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    png_write_image(png, rows.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return true;
}

} // namespace

bool write_png(const std::filesystem::path &path, SDL_Surface *surface, std::string &error)
{
    std::vector<png_byte> rgb = rgb_rows(surface);
    std::vector<png_bytep> rows(static_cast<std::size_t>(surface->h));
    for (std::size_t y = 0; y < rows.size(); ++y)
        rows[y] = rgb.data() + y * static_cast<std::size_t>(surface->w) * 3;
    const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "wb"));
    if (!file || !encode(file.get(), surface->w, surface->h, rows)) {
        error = "cannot write the PNG file '" + path.string() + "'";
        return false;
    }
    return true;
}

} // namespace velform
