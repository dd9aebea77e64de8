// Replays the form tool's fuzz seeds and saved crash inputs through their
// harnesses, so that faults found by fuzzing stay fixed.
#include "velform_harness.hpp"
#include "velform_test.hpp"

#include <algorithm>

namespace velform::test {
namespace {

namespace fs = std::filesystem;

struct Target {
    const char *name;
    int (*run)(const uint8_t *, size_t);
};
constexpr Target kTargets[] = {{"toml", velform_fuzz_toml}, {"binary", velform_fuzz_binary}};

TEST(FuzzReplay, EverySeedAndRegressionRunsWithoutFault)
{
    for (const Target &target : kTargets) {
        std::size_t seeds = 0;
        for (const char *kind : {"corpus", "regressions"}) {
            std::error_code missing;
            for (const auto &entry :
                 fs::directory_iterator(fs::path(VELUMO_FUZZ_DIR) / kind / target.name, missing)) {
                const std::vector<uint8_t> input = read_bytes(entry.path());
                EXPECT_EQ(target.run(input.data(), input.size()), 0) << entry.path();
                seeds += std::string(kind) == "corpus";
            }
        }
        EXPECT_GE(seeds, 4u) << target.name;
    }
}

} // namespace
} // namespace velform::test
