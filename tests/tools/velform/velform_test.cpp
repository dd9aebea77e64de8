// Test support for the form tool.
#include "velform_test.hpp"

#include <fstream>
#include <iterator>

namespace velform::test {

void write_text_file(const std::filesystem::path &path, const std::string &text)
{
    std::ofstream(path, std::ios::binary) << text;
}

std::vector<uint8_t> read_bytes(const std::filesystem::path &path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

} // namespace velform::test
