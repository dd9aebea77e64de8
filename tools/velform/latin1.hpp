// The library's encoding is Latin-1; the readable format is UTF-8.  The two
// conversions between them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velform {

// A character of the UTF-8 text that Latin-1 cannot hold.
struct Unencodable {
    std::size_t index;  // characters before it
    char32_t character; // its code point
};

// Converts valid UTF-8 to Latin-1; on a character above U+00FF returns
// false and says which.
bool utf8_to_latin1(std::string_view utf8, std::string &latin1, Unencodable &bad);

std::string latin1_to_utf8(std::string_view latin1);

// "U+20AC".
std::string code_point_name(char32_t c);

} // namespace velform
