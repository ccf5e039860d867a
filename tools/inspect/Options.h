// The command line.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "inspect/collection/Collection.h"
#include "inspect/report/Report.h"

namespace inspect {

inline constexpr int kExitFileError = 1;
inline constexpr int kExitUsage = 2;
inline constexpr int kExitDoesNotPlay = 3;

struct Options {
    std::vector<std::string> files;
    bool json = false;
    bool keys = false;
    bool log = false;
    bool quiet = false;
    bool isDeviceNamed = false;  // by --device or --compare
    bool isCompared = false;     // a table of devices by files
    std::string check;           // "video", "audio", "all"; empty = nothing has to play
    std::string html;            // the page to write; empty = none
    std::string pictures;        // the folder to write pictures to; empty = none
    Scope scope;
    CollectionOptions collection;

    Scope gathered() const;  // what the page shows, too
};

// What ends the program before it looks at a file.
struct CommandLineEnd {
    int status;
    std::string text;  // what was asked for; with kExitUsage what is wrong
};

// Fills the options, unless there is nothing to do with them.
std::optional<CommandLineEnd> readCommandLine(int count, char** arguments, Options& options);

}  // namespace inspect
