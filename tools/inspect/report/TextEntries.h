// Formats and log lines as they are, for a person.

#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "inspect/callers/Format.h"
#include "inspect/report/TextLayout.h"

namespace inspect {

void printKeys(std::ostream& out, const Entries& entries, const std::string& indent);
void printLog(std::ostream& out, const std::vector<host::LogLine>& log, const TextStyle& style);

}  // namespace inspect
