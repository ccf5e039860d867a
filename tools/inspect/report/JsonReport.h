// The report as one JSON document.

#pragma once

#include <span>
#include <string>
#include <vector>

#include "inspect/report/Report.h"

namespace inspect {

// {"version", "files": [{"path", "error"} or {"path", "truncated", "container", "tracks"}]}, and
// "junk" where something follows the media. Every key of a format stands in "keys" with its type
// and its value: numbers as numbers, buffers in hex, texts as they are; one that is no UTF-8 as if
// it were ISO-8859-1, its "bytes" in hex beside it, and so the "pathBytes" of a path. "tags" is
// there for files in which tags are looked for: {"kind", "place", "names", "picture", "eightBit",
// "notes", "keys", "log"} each, with the names of all frames or comments, and the keys of texts
// whose 8-bit encoding is unknown. "explanations" and "keyFrames" of a track are there when they
// were asked for, so "component" and "legacy"; the "bytes" of a record's rows, joined, are the
// buffer, and a row that is a number has it as "number".
std::string jsonReport(std::span<const PretendedDevice> devices,
                       const std::vector<FileReport>& reports);

}  // namespace inspect
