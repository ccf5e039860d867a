// A record taken apart.

#pragma once

#include <string>
#include <vector>

#include "inspect/records/Annotator.h"

namespace inspect {

struct Explanation {
    std::string key;  // of the format; "private data" for what the library only reads numbers from
    size_t sizeBytes = 0;
    std::vector<Row> rows;
};

}  // namespace inspect
