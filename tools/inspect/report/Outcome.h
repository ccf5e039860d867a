// What of a report counts for the exit status.

#pragma once

#include <string>
#include <vector>

#include "inspect/report/Report.h"

namespace inspect {

// One line for each thing that went wrong.
std::vector<std::string> faultsOf(const FileReport& report);

}  // namespace inspect
