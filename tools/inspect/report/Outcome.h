// What of a report counts for the exit status.

#pragma once

#include <string>
#include <vector>

#include "inspect/report/Report.h"

namespace inspect {

// One line for each thing that went wrong.
std::vector<std::string> faultsOf(const FileReport& report);

// Whether a file of this name is missed when there is nothing in it.
bool isExpectedToPlay(const std::string& path);

}  // namespace inspect
