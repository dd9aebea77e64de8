// The fuzz harnesses: each runs one input through the library, start to close.
// Plain functions, shared by the libFuzzer entry points and the replay test.
#pragma once

#include <cstddef>
#include <cstdint>

// Form target.  The input is a 12-byte header, then the form file, the text
// file and an external text stream: bytes 0..3 and 4..7 give the lengths of
// the form and the text part (little-endian, each cut to what is left),
// byte 8 sets context options (bit 0 umlaut_conversion, bits 1..2
// frame_mode), bytes 9..11 are unused; the stream is the rest.  The form is
// loaded, chain heads get the stream (vel_read_external_stream), everything
// is formatted and drawn, hit-tested around every object, each object is
// selected in turn, and the context is closed.  Returns 0.
int velumo_fuzz_form(const uint8_t *data, size_t size);

// Events target.  The sample form is loaded, formatted and drawn, and its
// main window activated, once per process; each input starts from a copy of
// that state.  The input is a script of records (events_script.hpp), of which
// the first kMaxRecords are played: SDL events queued for the selection loop,
// and direct calls to the editor, the window frame actions and the menu.
// Returns 0.
int velumo_fuzz_events(const uint8_t *data, size_t size);

namespace velumo::fuzz {

// Sends standard output to /dev/null for the rest of the process: the
// library prints its diagnostics there, and fuzzing would drown in them.
void silence_stdout();

// The picture that form inputs may name in image_path: the sample form's
// picture, written there by the harness before the first input.
inline constexpr const char *kPicturePath = "/tmp/velumo-fuzz/velumo_sample_picture.bmp";

// The font that form inputs may name in font_path.
inline constexpr const char *kFontPath = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

// Form inputs asking for a larger own font get this size: SDL_ttf renders
// huge sizes into glyph surfaces of gigabytes, which is no fault of velumo's.
inline constexpr uint32_t kMaxFontSize = 64;

// Size of the form target's header.
inline constexpr std::size_t kFormHeaderBytes = 12;

} // namespace velumo::fuzz
