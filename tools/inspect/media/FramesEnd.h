// Where a plain stream of frames ends, whatever follows.

#pragma once

#include <string_view>

#include "inspect/base/InputFile.h"

namespace inspect {

// Of MPEG audio, ADTS, DTS and AC-3, with the tags behind the frames; the end given when the stream
// goes on to there, is of another format, or has no frames that tell their sizes. Reads a bounded
// part.
int64_t framesEnd(std::string_view format, const InputFile& file, int64_t end);

}  // namespace inspect
