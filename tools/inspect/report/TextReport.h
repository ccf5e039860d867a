// The report for a person at a terminal.

#pragma once

#include <ostream>
#include <span>

#include "inspect/report/Report.h"
#include "inspect/report/TextLayout.h"

namespace inspect {

// But for what to change.
void printText(std::ostream& out, const FileReport& report,
               std::span<const PretendedDevice> devices, const TextStyle& style);

// What to change for each device where --fix asks for it. Lines are broken at columns, but for
// commands, which are to be copied.
void printFixes(std::ostream& out, const FileReport& report,
                std::span<const PretendedDevice> devices, const TextStyle& style, size_t columns);

}  // namespace inspect
