// Test support shared by every suite: a headless SDL screen with the DejaVu
// font, form and text file builders, pixel read-back, events, stdout capture.
#pragma once

#include "velumo.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace velumo::test {

inline constexpr const char *kFontPath = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
inline constexpr int kFontSize = 14;
inline constexpr int kScreenWidth = 640;
inline constexpr int kScreenHeight = 480;

// A fresh directory under the system temporary directory, removed at the end.
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir &) = delete;
    TempDir &operator=(const TempDir &) = delete;
    std::string path(const std::string &name) const { return (root_ / name).string(); }
    const std::filesystem::path &root() const { return root_; }

private:
    std::filesystem::path root_;
};

// Copies a C string into a fixed string field, NUL-padded.
template <std::size_t N> void set_string(char (&field)[N], const std::string &value)
{
    std::fill(field, field + N, '\0');
    std::copy_n(value.begin(), std::min(value.size(), N), field);
}

// Builds a form description file record by record, by field name:
//   form.object(8).type = VEL_TYPE_WINDOW;
// object(n) is object n, the file's record n - 1; missing records are zero.
class FormBuilder {
public:
    vel_object_file_rec &object(uint32_t number);
    uint32_t size() const { return static_cast<uint32_t>(records_.size()); }
    // Writes the records, followed by `trailing_bytes` extra bytes of 0xAB.
    void write(const std::string &path, std::size_t trailing_bytes = 0) const;

private:
    std::vector<vel_object_file_rec> records_;
};

// Builds a text file: text(t) is text record t, the file's record t - 1.
class TextBuilder {
public:
    vel_text_rec &text(uint32_t number);
    void set(uint32_t number, const std::string &text);
    void write(const std::string &path) const;

private:
    std::vector<vel_text_rec> records_;
};

// Redirects standard output (or another stream) into a string while alive.
class OutputCapture {
public:
    explicit OutputCapture(std::FILE *stream = stdout);
    ~OutputCapture();
    OutputCapture(const OutputCapture &) = delete;
    OutputCapture &operator=(const OutputCapture &) = delete;
    // Stops capturing (if still running) and returns what was printed.
    std::string finish();

private:
    std::FILE *stream_;
    int saved_fd_ = -1;
    std::FILE *file_ = nullptr;
    std::string text_;
};

// In a child process (a death test): gives up the rights that let root write
// read-only files, by becoming the user nobody; others keep their rights.
void become_unprivileged();

// True when SDL 1.2 is sdl12-compat (the API over SDL2), which reports itself
// as version 1.2.50 or later; the classic library ends at 1.2.15.
bool sdl_is_compat();

// Reads a pixel of any depth back as a colour triple.
vel_rgb pixel(SDL_Surface *surface, int x, int y);
// Queues SDL events for the selection loops.
void push_mouse_button(uint8_t type, uint8_t button, uint16_t x, uint16_t y);
void push_key(uint8_t type, SDLKey sym, SDLMod mod = KMOD_NONE, uint16_t unicode = 0);

// Fixture: SDL with the dummy video driver at 640 x 480 x 32, SDL_ttf, the
// DejaVu font in ctx().font and a zeroed context with the display fields set
// (background white, mark colours red and blue).  TearDown closes the
// context with vel_close unless the test did.
class ScreenTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    vel_context &ctx() { return *ctx_; }
    // Replaces the display by a software surface of another depth (8, 16, 24).
    void use_depth(int bits_per_pixel);
    // Writes form and text into the temporary directory and loads them.
    void load(const FormBuilder &form, const TextBuilder *texts = nullptr, uint32_t extra_objs = 0,
              uint32_t extra_texts = 0);
    // Shuts down through vel_close; TearDown then does nothing.
    void close();
    vel_object &object(uint32_t n) { return ctx_->objects[n]; }
    vel_rgb at(int x, int y) { return pixel(ctx_->screen, x, y); }
    void fill_screen(vel_rgb colour);

    TempDir dir_;

private:
    std::unique_ptr<vel_context> ctx_;
    bool closed_ = false;
};

} // namespace velumo::test

// Colour triples compare and print in assertions (found by argument lookup).
inline bool operator==(vel_rgb a, vel_rgb b)
{
    return a.r == b.r && a.g == b.g && a.b == b.b;
}
std::ostream &operator<<(std::ostream &out, vel_rgb c);
