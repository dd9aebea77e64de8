// The sample form shared by the demo and the tests: a form description
// file, a text file and a picture, all written from code.
#pragma once

#include <string>

namespace velumo::sample {

// Object numbers of the sample form.  Windows 8, 18 and 21; the text area 9
// holds a label that holds an entry field (three levels below window 8); the
// chain head 22 flows its stream through members 23 and 24; the menu 15
// opens below its title 25.
enum Object : unsigned {
    kMainWindow = 8,
    kNotesText = 9,
    kInnerLabel = 10,
    kInnerField = 11,
    kOkButton = 12,
    kNameField = 13,
    kMainPicture = 14,
    kMenu = 15,
    kMenuOpen = 16,
    kMenuQuit = 17,
    kSettingsWindow = 18,
    kAgeField = 19,
    kSettingsPicture = 20,
    kThirdWindow = 21,
    kChainHead = 22,
    kChainFirst = 23,
    kChainSecond = 24,
    kMenuTitle = 25,
    kObjectCount = 25,
};

// Writes the form, its texts and the picture it names into `directory`
// (file names below) and returns the path of the form file.
std::string write_sample_form(const std::string &directory);

inline constexpr const char *kFormFile = "velumo_sample_form.vel";
inline constexpr const char *kTextFile = "velumo_sample_texts.vel";
inline constexpr const char *kPictureFile = "velumo_sample_picture.bmp";

// The text the chain head shows; applications hand it over as `stream`.
extern const char *const kChainStream;

} // namespace velumo::sample
