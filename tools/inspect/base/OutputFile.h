// What is written for the user.

#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "inspect/base/Bytes.h"

namespace inspect {

struct OutputRules {
    bool overwrites = false;
    std::vector<std::string> inputs;  // files that must never be written to
};

// A file that has its name only once it is whole: until then it stands under another one in the
// same folder, and goes when the object or the process does, SIGINT and SIGTERM included. One at a
// time.
class OutputFile {
public:
    // Throws a FileError, which names the file, so do the others.
    OutputFile(std::filesystem::path path, const OutputRules& rules);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    std::string temporaryPath() const;
    void write(Bytes data) const;
    void keep();  // takes the place of a file that is overwritten, with its permissions

private:
    std::filesystem::path mPath;
    bool mOverwrites;
    int mDescriptor = -1;
};

// Returns 0, or the errno of what failed.
int writeAll(int descriptor, Bytes data);

// Whether reading or writing, which has just failed, is worth another try; waits until it is.
bool canRetry(int descriptor, short event);

[[noreturn]] void failOn(const std::filesystem::path& path, const std::string& why);

}  // namespace inspect
