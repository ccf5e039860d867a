// Many files, looked at by several processes; what is said of them comes in their order.

#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "inspect/collection/FileList.h"
#include "inspect/collection/Summary.h"
#include "inspect/report/Report.h"

namespace inspect {

struct CollectionOptions {
    bool isWanted = false;  // any of what follows
    FileSources sources;
    uint64_t skip = 0;  // so many of the files
    size_t workers = 1;
    std::chrono::milliseconds timeout{30'000};  // for a file; 0 = none
    size_t maxMemoryMiB = 1024;                 // of a worker; 0 = as much as there is
    bool lines = false;                         // of JSON
    bool quiet = false;                         // but for what went wrong
    std::string check;                          // see meets()
    std::string database;                       // empty = none
    std::string against;  // lines or a database of an earlier run; empty = none
};

struct Ending {
    bool isComplete = true;  // every file could be read and is whole, and all could be written
    bool isMet = true;       // see meets(); and all that played in the earlier run does
    bool isWhole = true;     // all that was to be looked at was
    Summary summary;
    uint64_t otherFiles = 0;      // which are no media
    uint64_t unchangedFiles = 0;  // since an earlier run
};

// Ends the process by the signal that interrupted it. The reader gets the rows that the summary
// counts, one by one.
Ending runCollection(const CollectionOptions& options, const Scope& scope, const RowReader& reader);

}  // namespace inspect
