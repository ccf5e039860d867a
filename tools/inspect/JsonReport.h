// The report as one JSON document.

#pragma once

#include <ostream>
#include <vector>

#include "inspect/Report.h"

namespace inspect {

// {"version", "files": [{"path", "error"} or {"path", "truncated", "container", "tracks"}]}. Every
// key of a format stands in "keys" with its type and its value: numbers as numbers, buffers in hex.
// "explanations" and "keyFrames" of a track are there when they were asked for; the "bytes" of an
// explanation's rows, joined, are the buffer.
void printJson(std::ostream& out, const std::vector<FileReport>& reports);

}  // namespace inspect
