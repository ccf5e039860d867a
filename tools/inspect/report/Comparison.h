// Files by devices, as a table for a person.

#pragma once

#include <ostream>
#include <span>
#include <vector>

#include "inspect/report/Report.h"
#include "inspect/report/TextLayout.h"

namespace inspect {

// columns: of the terminal; 0 = there is none. A table that is too wide becomes a list.
void printComparison(std::ostream& out, std::span<const PretendedDevice> devices,
                     const std::vector<FileReport>& reports, size_t columns,
                     const TextStyle& style);

}  // namespace inspect
