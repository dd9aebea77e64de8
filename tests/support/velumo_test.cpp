// Test support shared by every suite: a headless SDL screen with the DejaVu
// font, form and text file builders, pixel read-back, events, stdout capture.
#include "velumo_test.hpp"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <ostream>
#include <unistd.h>

namespace velumo::test {

TempDir::TempDir()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "velumo-test-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("mkdtemp failed");
    root_ = pattern;
}

TempDir::~TempDir()
{
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
}

vel_object_file_rec &FormBuilder::object(uint32_t number)
{
    if (number == 0) throw std::invalid_argument("objects are numbered from 1");
    if (records_.size() < number) records_.resize(number, vel_object_file_rec{});
    return records_[number - 1];
}

void FormBuilder::write(const std::string &path, std::size_t trailing_bytes) const
{
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char *>(records_.data()),
              static_cast<std::streamsize>(records_.size() * sizeof(vel_object_file_rec)));
    const std::string tail(trailing_bytes, '\xAB');
    out.write(tail.data(), static_cast<std::streamsize>(tail.size()));
}

vel_text_rec &TextBuilder::text(uint32_t number)
{
    if (number == 0) throw std::invalid_argument("texts are numbered from 1");
    if (records_.size() < number) records_.resize(number, vel_text_rec{});
    return records_[number - 1];
}

void TextBuilder::set(uint32_t number, const std::string &text_value)
{
    set_string(text(number).text, text_value);
}

void TextBuilder::write(const std::string &path) const
{
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char *>(records_.data()),
              static_cast<std::streamsize>(records_.size() * sizeof(vel_text_rec)));
}

OutputCapture::OutputCapture(std::FILE *stream) : stream_(stream)
{
    std::fflush(stream_);
    file_ = std::tmpfile();
    saved_fd_ = dup(fileno(stream_));
    dup2(fileno(file_), fileno(stream_));
}

OutputCapture::~OutputCapture()
{
    finish();
}

std::string OutputCapture::finish()
{
    if (saved_fd_ < 0) return text_;
    std::fflush(stream_);
    dup2(saved_fd_, fileno(stream_));
    close(saved_fd_);
    saved_fd_ = -1;
    std::rewind(file_);
    text_.clear();
    char chunk[4096];
    std::size_t got;
    while ((got = std::fread(chunk, 1, sizeof chunk, file_)) > 0)
        text_.append(chunk, got);
    std::fclose(file_);
    file_ = nullptr;
    return text_;
}

void become_unprivileged()
{
    constexpr uid_t nobody = 65534;
    if (geteuid() != 0) return;
    if (setgid(nobody) != 0 || setuid(nobody) != 0) std::_Exit(99);
}

bool sdl_is_compat()
{
    const SDL_version *linked = SDL_Linked_Version();
    return linked->major == 1 && linked->minor == 2 && linked->patch >= 50;
}

vel_rgb pixel(SDL_Surface *surface, int x, int y)
{
    const int bpp = surface->format->BytesPerPixel;
    const auto *row = static_cast<const uint8_t *>(surface->pixels) + y * surface->pitch;
    Uint32 value = 0;
    switch (bpp) {
    case 1: value = row[x]; break;
    case 2: value = reinterpret_cast<const Uint16 *>(row)[x]; break;
    case 3: value = row[3 * x] | row[3 * x + 1] << 8 | row[3 * x + 2] << 16; break;
    default: value = reinterpret_cast<const Uint32 *>(row)[x]; break;
    }
    vel_rgb c{};
    SDL_GetRGB(value, surface->format, &c.r, &c.g, &c.b);
    return c;
}

void push_mouse_button(uint8_t type, uint8_t button, uint16_t x, uint16_t y)
{
    SDL_Event event{};
    event.button.type = type;
    event.button.button = button;
    event.button.state = type == SDL_MOUSEBUTTONDOWN ? SDL_PRESSED : SDL_RELEASED;
    event.button.x = x;
    event.button.y = y;
    SDL_PushEvent(&event);
}

void push_key(uint8_t type, SDLKey sym, SDLMod mod, uint16_t unicode)
{
    SDL_Event event{};
    event.key.type = type;
    event.key.state = type == SDL_KEYDOWN ? SDL_PRESSED : SDL_RELEASED;
    event.key.keysym.sym = sym;
    event.key.keysym.mod = mod;
    event.key.keysym.unicode = unicode;
    SDL_PushEvent(&event);
}

void ScreenTest::SetUp()
{
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    ASSERT_EQ(SDL_Init(SDL_INIT_VIDEO), 0) << SDL_GetError();
    ASSERT_EQ(TTF_Init(), 0) << TTF_GetError();
    ctx_ = std::make_unique<vel_context>();
    vel_context &c = *ctx_;
    c.screen = SDL_SetVideoMode(kScreenWidth, kScreenHeight, 32, SDL_SWSURFACE);
    ASSERT_NE(c.screen, nullptr) << SDL_GetError();
    // SDL would paint its software mouse pointer into the pixels tests read.
    SDL_ShowCursor(SDL_DISABLE);
    c.font = TTF_OpenFont(kFontPath, kFontSize);
    ASSERT_NE(c.font, nullptr) << TTF_GetError();
    c.screen_width = kScreenWidth;
    c.screen_height = kScreenHeight;
    c.screen_rect = SDL_Rect{0, 0, kScreenWidth, kScreenHeight};
    c.background_colour = {255, 255, 255};
    c.mark_colour_a = {255, 0, 0};
    c.mark_colour_b = {0, 0, 255};
    c.scroll_step = 10;
    c.texts_loaded = 1;
}

void ScreenTest::TearDown()
{
    if (!closed_ && ctx_) close();
}

void ScreenTest::use_depth(int bits_per_pixel)
{
    ctx_->screen = SDL_SetVideoMode(kScreenWidth, kScreenHeight, bits_per_pixel, SDL_SWSURFACE);
    ASSERT_NE(ctx_->screen, nullptr) << SDL_GetError();
    ASSERT_EQ(ctx_->screen->format->BitsPerPixel, bits_per_pixel);
}

void ScreenTest::load(const FormBuilder &form, const TextBuilder *texts, uint32_t extra_objs,
                      uint32_t extra_texts)
{
    const std::string form_path = dir_.path("form.vel");
    const std::string text_path = dir_.path("texts.vel");
    form.write(form_path);
    if (texts) texts->write(text_path);
    ASSERT_EQ(
        vel_load_form(ctx_.get(), extra_objs, extra_texts, form_path.c_str(), text_path.c_str()),
        1);
}

void ScreenTest::close()
{
    closed_ = true;
    vel_close(ctx_.get());
}

void ScreenTest::fill_screen(vel_rgb colour)
{
    SDL_FillRect(ctx_->screen, nullptr,
                 SDL_MapRGB(ctx_->screen->format, colour.r, colour.g, colour.b));
}

} // namespace velumo::test

std::ostream &operator<<(std::ostream &out, vel_rgb c)
{
    return out << "rgb(" << int(c.r) << ", " << int(c.g) << ", " << int(c.b) << ")";
}
