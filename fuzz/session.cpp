// What every fuzz input runs in: a fresh headless SDL screen with the font and
// a zeroed context, and the per-process directory the input's files go into.
#include "session.hpp"

#include "harness.hpp"
#include "sample_form.hpp"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <unistd.h>

namespace velumo::fuzz {

namespace {

namespace fs = std::filesystem;

// Several fuzzing processes may start at once: each writes the picture
// under a name of its own and renames it into place, so none ever reads a
// half-written one.
void install_shared_picture(const fs::path &own_copy)
{
    const fs::path shared = kPicturePath;
    std::error_code ignored;
    if (fs::exists(shared, ignored)) return;
    const fs::path staged = shared.string() + "." + std::to_string(getpid());
    fs::copy_file(own_copy, staged, fs::copy_options::overwrite_existing, ignored);
    fs::rename(staged, shared, ignored);
}

// Run directories are named after their process.  A process that crashed
// left its directory behind: any whose process is gone is removed.
constexpr const char *kRunPrefix = "run-";

bool process_gone(const std::string &name)
{
    if (name.rfind(kRunPrefix, 0) != 0) return false;
    const std::string digits = name.substr(std::strlen(kRunPrefix));
    if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos) return false;
    return kill(static_cast<pid_t>(std::stol(digits)), 0) != 0 && errno == ESRCH;
}

void remove_abandoned_run_dirs(const fs::path &root)
{
    std::error_code ignored;
    for (const auto &entry : fs::directory_iterator(root, ignored))
        if (entry.is_directory(ignored) && process_gone(entry.path().filename().string()))
            fs::remove_all(entry.path(), ignored);
}

class WorkDir {
public:
    WorkDir()
    {
        // Every input writes its files anew: memory-backed storage, where
        // the system has it, keeps that cheap.
        const fs::path picture_dir = fs::path(kPicturePath).parent_path();
        std::error_code no_shm;
        const fs::path root =
            fs::is_directory("/dev/shm", no_shm) ? fs::path("/dev/shm/velumo-fuzz") : picture_dir;
        fs::create_directories(picture_dir);
        fs::create_directories(root);
        remove_abandoned_run_dirs(root);
        path_ = (root / (kRunPrefix + std::to_string(getpid()))).string();
        std::error_code ignored;
        fs::remove_all(path_, ignored);
        fs::create_directory(path_);
        // The sample form draws its picture with SDL, which needs no video.
        sample::write_sample_form(path_);
        install_shared_picture(fs::path(path_) / sample::kPictureFile);
    }
    ~WorkDir()
    {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    WorkDir(const WorkDir &) = delete;
    WorkDir &operator=(const WorkDir &) = delete;
    const std::string &path() const { return path_; }

private:
    std::string path_;
};

} // namespace

const std::string &work_dir()
{
    static const WorkDir dir;
    return dir.path();
}

void write_file(const std::string &path, const uint8_t *data, std::size_t size)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char *>(data), static_cast<std::streamsize>(size));
}

void silence_stdout()
{
    std::fflush(stdout);
    const int null_fd = open("/dev/null", O_WRONLY);
    if (null_fd < 0) return;
    dup2(null_fd, STDOUT_FILENO);
    ::close(null_fd);
}

namespace {

// The display every input draws on: SDL, SDL_ttf, the screen and the font are
// set up once per process, since setting them up costs far more than most
// inputs.  Anything else in the process that quits SDL (a test fixture) is
// noticed, and the display is set up again.
struct Display {
    SDL_Surface *screen = nullptr;
    TTF_Font *font = nullptr;
    uint32_t generation = 0; // counts the set-ups
};

Display &display()
{
    static Display shared;
    if (shared.screen && SDL_WasInit(SDL_INIT_VIDEO) && SDL_GetVideoSurface() == shared.screen &&
        TTF_WasInit())
        return shared;
    // Headless always; no parachute, so crashes reach the sanitizers.
    setenv("SDL_VIDEODRIVER", "dummy", 1);
    if (SDL_Init(SDL_INIT_VIDEO | SDL_INIT_NOPARACHUTE) != 0 || TTF_Init() != 0)
        throw std::runtime_error(std::string("velumo fuzz: SDL: ") + SDL_GetError());
    ++shared.generation;
    shared.screen = SDL_SetVideoMode(640, 480, 32, SDL_SWSURFACE);
    shared.font = TTF_OpenFont(kFontPath, 14);
    if (!shared.screen || !shared.font)
        throw std::runtime_error(std::string("velumo fuzz: no screen or font: ") + SDL_GetError());
    return shared;
}

} // namespace

void drain_events()
{
    SDL_Event ignored;
    while (SDL_PollEvent(&ignored) != 0) {
    }
}

void reset_input_state()
{
    drain_events();
    SDL_WarpMouse(0, 0);
    drain_events();
}

uint32_t display_generation()
{
    return display().generation;
}

Session::Session() : ctx_(std::make_unique<vel_context>())
{
    const Display &shared = display();
    reset_input_state();
    vel_context &c = *ctx_;
    c.screen = shared.screen;
    c.font = shared.font;
    c.screen_width = 640;
    c.screen_height = 480;
    c.screen_rect = SDL_Rect{0, 0, 640, 480};
    c.background_colour = {255, 255, 255};
    c.mark_colour_a = {200, 0, 0};
    c.mark_colour_b = {0, 0, 200};
    c.scroll_step = 10;
    c.texts_loaded = 1;
}

Session::~Session()
{
    close();
}

// The form goes, the display stays for the next input.
void Session::close()
{
    if (!open_) return;
    open_ = false;
    vel_unload_form(ctx_.get());
    SDL_FreeSurface(ctx_->text_surface);
    ctx_->text_surface = nullptr;
}

} // namespace velumo::fuzz
