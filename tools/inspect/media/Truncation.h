// Whether a file ends before the sizes written in it say it should.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "inspect/base/InputFile.h"

namespace inspect {

// What is missing, in words; empty when nothing is, or when the format does not tell. Knows the ISO
// base media family, RIFF (AVI, WAV), Matroska, FLV, Ogg and ASF; format is the demuxer's name.
std::optional<std::string> findTruncation(std::string_view format, const InputFile& file);

}  // namespace inspect
