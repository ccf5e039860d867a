// Calls on the library, for a person.

#pragma once

#include <ostream>
#include <vector>

#include "inspect/callers/Calls.h"
#include "inspect/report/TextLayout.h"

namespace inspect {

void printCalls(std::ostream& out, const char* heading, const std::vector<Call>& calls,
                const TextStyle& style);

}  // namespace inspect
