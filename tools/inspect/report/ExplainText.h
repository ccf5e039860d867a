// Codec data byte by byte, for a person.

#pragma once

#include <ostream>

#include "inspect/records/Record.h"
#include "inspect/report/TextLayout.h"

namespace inspect {

void printRecord(std::ostream& out, const Record& record, const TextStyle& style);

}  // namespace inspect
