// Test support for the form tool: files in a scratch directory, running a
// command with its messages captured, and the sample form as a Form.
#pragma once

#include "diagnostics.hpp"
#include "form.hpp"
#include "velumo_test.hpp"

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace velform::test {

void write_text_file(const std::filesystem::path &path, const std::string &text);
std::vector<uint8_t> read_bytes(const std::filesystem::path &path);

// What a command printed, with the scratch directory's path taken out of
// it, and its exit status.
struct Outcome {
    int status;
    std::string messages;
};
template <typename Command> Outcome run(const velumo::test::TempDir &dir, Command command)
{
    std::ostringstream messages;
    const int status = command(messages);
    std::string text = messages.str();
    const std::string root = dir.root().string() + "/";
    for (std::size_t at; (at = text.find(root)) != std::string::npos;)
        text.erase(at, root.size());
    return {status, text};
}

} // namespace velform::test
