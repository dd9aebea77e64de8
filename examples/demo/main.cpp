// velumo-demo: the command line, and the choice between a window on the
// display and the scripted tour that saves pictures.
#include "app.hpp"
#include "tour.hpp"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr const char *kUsage =
    "usage: velumo-demo [--tour DIR] [--help]\n"
    "\n"
    "With a display (DISPLAY set) the demo opens an 800 x 600 window: the File and\n"
    "Window menus at the top left open while the left button is held and choose\n"
    "where it is released; frame buttons above the front window move it (+),\n"
    "resize or scroll it (^ v < >, ~ switches between the two) and close it (x).\n"
    "Keys go through a German keyboard table, whatever the system's layout.\n"
    "\n"
    "Without a display, or with --tour DIR, it runs a scripted tour on SDL's dummy\n"
    "video driver and writes one PNG picture per step into DIR (by default a new\n"
    "directory under /tmp), printing each path.  The tour lists the demo's own\n"
    "text directory in its file selector, so its pictures are the same anywhere.\n";

struct Options {
    bool help = false;
    std::optional<fs::path> tour;
};

// Throws std::invalid_argument with the message for a bad command line.
Options parse(int argc, char **argv)
{
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string_view arg = argv[i];
        if (arg == "--help" || arg == "-h") {
            options.help = true;
        } else if (arg == "--tour") {
            if (i + 1 == argc) throw std::invalid_argument("--tour needs a directory");
            options.tour = argv[++i];
        } else {
            throw std::invalid_argument("unknown option '" + std::string(arg) + "'");
        }
    }
    return options;
}

// A new directory under $TMPDIR or /tmp: the demo never writes into the
// working directory.
fs::path fresh_tour_directory()
{
    const char *tmp = std::getenv("TMPDIR");
    std::string pattern = std::string(tmp && *tmp ? tmp : "/tmp") + "/velumo-demo-XXXXXX";
    if (!mkdtemp(pattern.data())) throw std::runtime_error("cannot make a directory " + pattern);
    return pattern;
}

int tour(const std::optional<fs::path> &requested)
{
    const fs::path directory = requested ? fs::absolute(*requested) : fresh_tour_directory();
    fs::create_directories(directory);
    // The file selector lists the working directory: show the demo's texts.
    fs::current_path(DEMO_TEXTS_DIR);
    demo::App app(true);
    const bool done = demo::run_tour(app, directory);
    std::printf("tour %s; pictures in %s\n", done ? "finished" : "failed", directory.c_str());
    return done ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    Options options;
    try {
        options = parse(argc, argv);
    } catch (const std::invalid_argument &e) {
        std::fprintf(stderr, "velumo-demo: %s (see velumo-demo --help)\n", e.what());
        return 2;
    }
    if (options.help) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    try {
        const char *display = std::getenv("DISPLAY");
        if (options.tour || !display || !*display) return tour(options.tour);
        demo::App app(false);
        app.run();
        return 0;
    } catch (const std::exception &e) {
        std::fprintf(stderr, "velumo-demo: %s\n", e.what());
        return 1;
    }
}
