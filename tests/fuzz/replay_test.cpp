// Replays every seed and saved crash input of fuzz/ through its harness, so
// the faults the fuzzers found stay fixed in the normal builds, and checks
// that the harnesses themselves always come to an end.
#include "events_script.hpp"
#include "harness.hpp"
#include "sample_form.hpp"
#include "velumo_test.hpp"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Harness = int (*)(const uint8_t *, size_t);
using Bytes = std::vector<uint8_t>;

struct Target {
    const char *name;
    Harness run;
};
constexpr Target kTargets[] = {{"form", velumo_fuzz_form}, {"events", velumo_fuzz_events}};

struct ReplayCase {
    std::string test_name;
    fs::path path;
    Harness run;
};

// Test listings show the input's path.
void PrintTo(const ReplayCase &c, std::ostream *out)
{
    *out << c.path.string();
}

std::string identifier(const std::string &text)
{
    std::string out = text;
    for (char &c : out)
        if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
    return out;
}

std::vector<fs::path> inputs_in(const fs::path &dir)
{
    std::vector<fs::path> files;
    std::error_code missing;
    for (const auto &entry : fs::directory_iterator(dir, missing))
        if (entry.is_regular_file() && entry.path().filename().string()[0] != '.')
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<ReplayCase> replay_cases()
{
    std::vector<ReplayCase> cases;
    for (const Target &target : kTargets)
        for (const char *kind : {"corpus", "regressions"})
            for (const fs::path &file : inputs_in(fs::path(VELUMO_FUZZ_DIR) / kind / target.name))
                cases.push_back({identifier(std::string(target.name) + "_" + kind + "_" +
                                            file.filename().string()),
                                 file, target.run});
    return cases;
}

Bytes read_file(const fs::path &path)
{
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// The library prints its diagnostics; the test log keeps only the verdicts.
void run_quietly(Harness run, const Bytes &input)
{
    velumo::test::OutputCapture quiet;
    EXPECT_EQ(run(input.data(), input.size()), 0);
}

class FuzzReplay : public ::testing::TestWithParam<ReplayCase> {};

TEST_P(FuzzReplay, RunsWithoutFault)
{
    run_quietly(GetParam().run, read_file(GetParam().path));
}

INSTANTIATE_TEST_SUITE_P(Inputs, FuzzReplay, ::testing::ValuesIn(replay_cases()),
                         [](const auto &info) { return info.param.test_name; });

TEST(FuzzCorpus, EveryTargetHasSeeds)
{
    for (const Target &target : kTargets)
        EXPECT_GE(inputs_in(fs::path(VELUMO_FUZZ_DIR) / "corpus" / target.name).size(), 4u)
            << target.name;
}

// Headers that promise more bytes than follow, and inputs too short for one.
TEST(FuzzHarness, FormInputsOfAnyLengthAreCut)
{
    for (std::size_t size = 0; size <= velumo::fuzz::kFormHeaderBytes + 1; ++size)
        run_quietly(velumo_fuzz_form, Bytes(size, 0xFF));
    Bytes one_record(velumo::fuzz::kFormHeaderBytes + sizeof(vel_object_file_rec), 0);
    one_record[0] = static_cast<uint8_t>(sizeof(vel_object_file_rec));
    one_record[1] = static_cast<uint8_t>(sizeof(vel_object_file_rec) >> 8);
    run_quietly(velumo_fuzz_form, one_record);
}

// The selection loop can only end on frame button 7: once the active window
// is closed the harness must drop queued events instead of waiting forever,
// and scripts cut in the middle of a record end where they are cut.
TEST(FuzzHarness, EventScriptsAlwaysEnd)
{
    using velumo::fuzz::ScriptWriter;
    ScriptWriter closed;
    closed.frame(7, true, 0).press_and_release(SDLK_a).loop(0);
    closed.menu(1, 60, 80).frame(1, true, 0, 100, 100).press_and_release(SDLK_b);
    run_quietly(velumo_fuzz_events, closed.bytes());

    ScriptWriter many;
    for (int i = 0; i < 130; ++i)
        many.press_and_release(static_cast<uint16_t>(SDLK_a + i % 26));
    many.select(velumo::sample::kSettingsWindow).menu(1, 100, 125);
    Bytes bytes = many.bytes();
    for (std::size_t cut : {std::size_t{1}, std::size_t{3}, bytes.size() - 1})
        run_quietly(velumo_fuzz_events, Bytes(bytes.begin(), bytes.begin() + cut));
    run_quietly(velumo_fuzz_events, bytes);
}

} // namespace
