// Codec data byte by byte, for a person.

#pragma once

#include <ostream>

#include "inspect/records/Explanation.h"
#include "inspect/report/TextLayout.h"

namespace inspect {

void printExplanation(std::ostream& out, const Explanation& explanation, const TextStyle& style);

}  // namespace inspect
