// The command line.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "inspect/report/Report.h"

namespace inspect {

inline constexpr int kExitFileError = 1;
inline constexpr int kExitUsage = 2;

struct Options {
    std::vector<std::string> files;
    bool json = false;
    bool keys = false;
    bool log = false;
    std::string pictures;  // the folder to write pictures to; empty = none
    Scope scope;
};

// Fills the options, or prints what was asked for or what is wrong and returns the exit status.
std::optional<int> readCommandLine(int count, char** arguments, Options& options);

}  // namespace inspect
