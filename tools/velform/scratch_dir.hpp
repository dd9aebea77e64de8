// A scratch directory under the system's temporary directory, made when
// constructed and removed with everything in it when destroyed.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace velform {

// Empty path() when it could not be made.
class ScratchDir {
public:
    ScratchDir()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "velform-XXXXXX").string();
        if (mkdtemp(pattern.data())) path_ = pattern;
    }
    ~ScratchDir()
    {
        std::error_code ignored;
        if (!path_.empty()) std::filesystem::remove_all(path_, ignored);
    }
    ScratchDir(const ScratchDir &) = delete;
    ScratchDir &operator=(const ScratchDir &) = delete;
    const std::filesystem::path &path() const { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace velform
