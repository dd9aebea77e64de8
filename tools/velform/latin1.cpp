// UTF-8 to Latin-1 and back, for every string and text of a form.
#include "latin1.hpp"

#include <cstdio>

namespace velform {

bool utf8_to_latin1(std::string_view utf8, std::string &latin1, Unencodable &bad)
{
    latin1.clear();
    std::size_t index = 0;
    for (std::size_t i = 0; i < utf8.size(); ++index) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        char32_t c = length == 1 ? lead : lead & (0x3F >> (length - 1));
        for (std::size_t k = 1; k < length && i + k < utf8.size(); ++k)
            c = (c << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
        if (c > 0xFF) {
            bad = {index, c};
            return false;
        }
        latin1 += static_cast<char>(c);
        i += length;
    }
    return true;
}

std::string latin1_to_utf8(std::string_view latin1)
{
    std::string out;
    for (char byte : latin1) {
        const auto c = static_cast<unsigned char>(byte);
        if (c < 0x80) {
            out += byte;
        } else {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

std::string code_point_name(char32_t c)
{
    char name[16];
    std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(c));
    return name;
}

} // namespace velform
