// The sample form shared by the demo and the tests: a form description
// file and a text file written from records, so no binary is hand-made.
#pragma once

#include <string>

namespace velumo::sample {

// Object numbers of the sample form.
enum Object : unsigned {
    kMainWindow = 8,
    kWelcomeText = 9,
    kOkButton = 10,
    kNameField = 11,
    kSecondWindow = 12,
    kAgeField = 13,
};

// Writes the sample form and its texts; fonts come from `font_path`.
void write_sample_form(const std::string &form_path, const std::string &text_path);

} // namespace velumo::sample
