// Codec data from which no decoder can start.

#pragma once

#include <string>
#include <vector>

#include "inspect/media/MediaFile.h"
#include "inspect/records/Record.h"

namespace inspect {

// Why not, in one sentence; empty when nothing is found to be wrong. The records are those that the
// library stored for the stream.
std::string whyNoDecoderStarts(const Stream& stream, const std::vector<Record>& records,
                               bool hasWholeFrames);

}  // namespace inspect
