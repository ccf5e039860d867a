// How the tracks of a file are encrypted.

#pragma once

#include <span>

#include "inspect/media/LibAv.h"
#include "inspect/media/MediaFile.h"

namespace inspect {

// Finds the encrypted ones among the streams. Knows the ISO base media family, Matroska, ASF, and
// MPEG-2 transport and program streams.
void findProtection(const OpenFile& open, const AVFormatContext& context,
                    std::span<Stream> streams);

}  // namespace inspect
