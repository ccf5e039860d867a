// The report for a person at a terminal.

#pragma once

#include <ostream>

#include "inspect/report/Report.h"
#include "inspect/report/TextLayout.h"

namespace inspect {

void printText(std::ostream& out, const FileReport& report, const TextStyle& style);

}  // namespace inspect
