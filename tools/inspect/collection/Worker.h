// What a worker process does for a file, and how it says what it found.

#pragma once

#include <string>
#include <vector>

#include "inspect/collection/Row.h"

namespace inspect {

struct WorkerRules {
    Scope scope;
    bool makesLines = false;  // of JSON
    size_t maxMemoryMiB = 0;  // 0 = as much as there is
};

// Of a file.
struct Finding {
    bool isMedia = true;  // see FileReport
    std::vector<std::string> faults;
    std::string line;  // when lines are made
    FileRow row;
};

// In the process itself, before the first file.
void limitMemory(size_t maxMemoryMiB);

// In any process. The text is for decodeFinding(), which throws a FileError for any other.
std::string encodeFinding(const FileReport& report, const WorkerRules& rules);
Finding decodeFinding(const std::string& text);

// Looks at the file.
std::string examine(const std::string& path, const WorkerRules& rules);

// What is to be said of a file that nobody could look at.
std::string encodeFailure(const std::string& path, const std::string& why,
                          const WorkerRules& rules);

}  // namespace inspect
