// The checks that hold for a form however it was written: numbers inside the
// tables, known type codes, no cycles, files that exist, plausible geometry.
#pragma once

#include "diagnostics.hpp"
#include "form.hpp"

#include <filesystem>
#include <string>
#include <string_view>

namespace velform {

// Where a reader found each part of the form, for the messages.
class Locator {
public:
    virtual ~Locator() = default;
    virtual std::string object(uint32_t number, std::string_view field) const = 0;
    virtual std::string text(uint32_t number) const = 0;
    // The file a path field names, as it is found while checking.
    virtual std::filesystem::path asset(uint32_t number, std::string_view field) const = 0;
};

// `disagreement` is the severity of a master that does not list its
// dependent, or a dependent that names another master: an error in binary
// files, a warning in readable forms that set `master` on purpose.
void check_form(const Form &form, const Locator &where, Severity disagreement,
                Diagnostics &diagnostics);

// "objects 1..25" or "the table is empty".
std::string object_range(const Form &form);

} // namespace velform
