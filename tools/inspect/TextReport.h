// The report for a person at a terminal.

#pragma once

#include <ostream>

#include "inspect/Report.h"

namespace inspect {

struct TextStyle {
    bool colour = false;
    bool keys = false;  // every key of every format
    bool log = false;   // the library's log lines
};

void printText(std::ostream& out, const FileReport& report, const TextStyle& style);

}  // namespace inspect
