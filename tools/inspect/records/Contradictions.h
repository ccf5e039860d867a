// Where the parts of a file say different things about one video.

#pragma once

#include <string>
#include <vector>

#include "inspect/media/MediaFile.h"
#include "inspect/records/Record.h"

namespace inspect {

// A record against its parameter set, the name of the track's box against the record, the size in
// the container against that in the record: a sentence for each.
std::vector<std::string> contradictions(const Stream& stream, const std::vector<Record>& records);

}  // namespace inspect
