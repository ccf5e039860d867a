// Files that are written for the user.

#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace inspect {

struct OutputRules {
    bool overwrites = false;
    std::vector<std::string> inputs;  // files that must never be written to
};

// Creates the file, or empties it where that is allowed, and returns its descriptor. Throws a
// FileError, which names the file.
int createFile(const std::filesystem::path& path, const OutputRules& rules);

[[noreturn]] void failOn(const std::filesystem::path& path, const std::string& why);

}  // namespace inspect
