// What of a report counts for the exit status.

#pragma once

#include <string>
#include <vector>

#include "inspect/report/Report.h"

namespace inspect {

// One line for each thing that went wrong.
std::vector<std::string> faultsOf(const FileReport& report);

// Whether all plays on every device that is asked for: "all", "video" or "audio"; empty = nothing
// has to.
bool meets(const std::string& check, const FileReport& report);

}  // namespace inspect
