// The parts of the report for a person.

#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "inspect/callers/Calls.h"
#include "inspect/callers/Format.h"
#include "inspect/callers/Tags.h"
#include "inspect/records/Record.h"
#include "inspect/report/TextLayout.h"

namespace inspect {

// Formats and log lines as they are.
void printKeys(std::ostream& out, const Entries& entries, const std::string& indent);
void printLog(std::ostream& out, const std::vector<host::LogLine>& log, const TextStyle& style);

// Codec data byte by byte.
void printRecord(std::ostream& out, const Record& record, const TextStyle& style);

// Calls on the library.
void printCalls(std::ostream& out, const char* heading, const std::vector<Call>& calls,
                const TextStyle& style);

void printTags(std::ostream& out, const Tags& tags, const TextStyle& style);

}  // namespace inspect
