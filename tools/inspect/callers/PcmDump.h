// A track's samples as the library converts them, in a WAV file.

#pragma once

#include "inspect/base/OutputFile.h"
#include "inspect/report/Report.h"

namespace inspect {

// Writes the first PCM track and takes that down in the report. Shows on a terminal how far it is.
// Throws a FileError, which names the file at fault; what was written by then stays.
void dumpWav(const std::string& path, const OutputRules& rules, FileReport& report);

}  // namespace inspect
