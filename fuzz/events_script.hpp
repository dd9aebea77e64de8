// The byte format of the events target's input: a script of records, each an
// operation byte and its little-endian operands.  Written by make_corpus.
#pragma once

#include "sample_form.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace velumo::fuzz {

// The operation byte is taken modulo kOperationCount.  Operands:
//   KeyDown, KeyUp       u16 sym, u16 mod            queued SDL key event (sym % 512)
//   ButtonDown, ButtonUp u8 button, u16 x, u16 y     queued SDL mouse button event
//   Motion               u16 x, u16 y                queued SDL mouse motion event
//   Edit                 u8 object, u16 key, u8 printable
//                        cursor_object = object % kObjectRange, final_key = key,
//                        key_printable = printable, vel_get_text
//   Select               u8 object                   window_to_activate = object % kObjectRange,
//                                                    vel_select_window
//   Frame                u8 button, u8 flags, u16 x, u16 y
//                        frame button button % 8; flags bit 0 released (else pressed),
//                        bits 1..2 frame_mode; a release of button 1 moves the window
//                        to a press queued at (x, y)
//   Menu                 u8 mode, u16 x, u16 y       pointer warped to (x, y), the menu run
//                                                    with a left release queued there
//   Loop                 u8 stops                    runs the selection loop now, with the
//                                                    stop pair kStopPairs[stops % 4]
// Queued events wait for the next Loop; any other direct operation, a full
// queue and the end of the script run the loop first, with stop pair 0.
enum class Operation : uint8_t {
    KeyDown,
    KeyUp,
    ButtonDown,
    ButtonUp,
    Motion,
    Edit,
    Select,
    Frame,
    Menu,
    Loop,
};
inline constexpr uint8_t kOperationCount = 10;

// Object numbers from scripts reach a little past the sample form's table
// (24 objects and 4 spare records), to test the library's range checks.
inline constexpr uint32_t kObjectRange = 32;

// What the selection loop is asked to stop at.  Frame button 7 ends it too,
// and the harness always queues a click on that button last.
struct StopPair {
    int32_t a, b;
};
inline constexpr StopPair kStopPairs[4] = {
    {sample::kOkButton, sample::kMenu},
    {sample::kOkButton, -1},
    {sample::kNameField, sample::kAgeField},
    {-1, -1},
};

// Records played per input; the rest of a longer script is ignored.  Most
// records redraw much of the screen, so this keeps each input's work bounded
// (and the fuzzer fast) while sixteen steps still reach every state.
inline constexpr std::size_t kMaxRecords = 16;

// Events queued before the loop runs; SDL 1.2 keeps at most 127 and the
// loop's ending click needs one place.
inline constexpr std::size_t kMaxQueuedEvents = 100;

// Builds scripts for the seed corpus.
class ScriptWriter {
public:
    ScriptWriter &key(bool down, uint16_t sym, uint16_t mod = 0)
    {
        op(down ? Operation::KeyDown : Operation::KeyUp);
        u16(sym);
        return u16(mod);
    }
    ScriptWriter &press_and_release(uint16_t sym, uint16_t mod = 0)
    {
        key(true, sym, mod);
        return key(false, sym, mod);
    }
    ScriptWriter &button(bool down, uint8_t button, uint16_t x, uint16_t y)
    {
        op(down ? Operation::ButtonDown : Operation::ButtonUp);
        bytes_.push_back(button);
        u16(x);
        return u16(y);
    }
    ScriptWriter &motion(uint16_t x, uint16_t y)
    {
        op(Operation::Motion);
        u16(x);
        return u16(y);
    }
    ScriptWriter &edit(uint8_t object, uint16_t key, uint8_t printable)
    {
        op(Operation::Edit);
        bytes_.push_back(object);
        u16(key);
        bytes_.push_back(printable);
        return *this;
    }
    ScriptWriter &select(uint8_t object)
    {
        op(Operation::Select);
        bytes_.push_back(object);
        return *this;
    }
    ScriptWriter &frame(uint8_t button, bool released, uint8_t frame_mode, uint16_t x = 0,
                        uint16_t y = 0)
    {
        op(Operation::Frame);
        bytes_.push_back(button);
        bytes_.push_back(static_cast<uint8_t>((released ? 1 : 0) | frame_mode << 1));
        u16(x);
        return u16(y);
    }
    ScriptWriter &menu(uint8_t mode, uint16_t x, uint16_t y)
    {
        op(Operation::Menu);
        bytes_.push_back(mode);
        u16(x);
        return u16(y);
    }
    ScriptWriter &loop(uint8_t stops)
    {
        op(Operation::Loop);
        bytes_.push_back(stops);
        return *this;
    }
    const std::vector<uint8_t> &bytes() const { return bytes_; }

private:
    void op(Operation o) { bytes_.push_back(static_cast<uint8_t>(o)); }
    ScriptWriter &u16(uint16_t v)
    {
        bytes_.push_back(static_cast<uint8_t>(v));
        bytes_.push_back(static_cast<uint8_t>(v >> 8));
        return *this;
    }
    std::vector<uint8_t> bytes_;
};

// Reads a script; every read fails once the bytes run out.
class ScriptReader {
public:
    ScriptReader(const uint8_t *data, std::size_t size) : data_(data), size_(size) {}
    std::optional<uint8_t> u8()
    {
        if (pos_ >= size_) return std::nullopt;
        return data_[pos_++];
    }
    std::optional<uint16_t> u16()
    {
        if (size_ - pos_ < 2) return std::nullopt;
        const uint16_t v = static_cast<uint16_t>(data_[pos_] | data_[pos_ + 1] << 8);
        pos_ += 2;
        return v;
    }

private:
    const uint8_t *data_;
    std::size_t size_;
    std::size_t pos_ = 0;
};

} // namespace velumo::fuzz
